#pragma once

#include <windows.h>

#include "mergeview/view_state.h"

namespace merivane {

/// Puts the text of [begin, end) on the clipboard, with CR LF line ends. Reports running out of memory;
/// answers whether it was done.
bool copyText(HWND owner, TextBuffer& text, uint32_t begin, uint32_t end);

/// The same for what is selected; nothing without a selection.
bool copySelection(HWND owner, ViewState& view);

}  // namespace merivane
