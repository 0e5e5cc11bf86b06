#pragma once

#include <windows.h>

namespace merivane {

/// The screen's fonts in a combo box that leaves drawing to its owner, has strings and items of one height:
/// every face is written in its own typeface. An item's data are its font's type flags, as EnumFonts gives
/// them.

/// Fills the box and widens its list to the widest face name.
void fillFontList(HWND comboBox);

/// Handles WM_DRAWITEM for an item of the box.
void drawFontItem(const DRAWITEMSTRUCT& item);

}  // namespace merivane
