#include "mergeview/win/clipboard.h"

#include <cstring>

#include "base/win/messages.h"
#include "engine/text_document.h"

namespace merivane {
namespace {

/// A block that the clipboard can own, with a NUL behind the text. Null without memory.
HGLOBAL makeBlock(std::string_view text) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, text.size() + 1);
  if (block == nullptr) return nullptr;
  auto* const bytes = static_cast<char*>(GlobalLock(block));
  if (bytes == nullptr) {
    GlobalFree(block);
    return nullptr;
  }
  std::memcpy(bytes, text.data(), text.size());
  bytes[text.size()] = '\0';
  GlobalUnlock(block);
  return block;
}

}  // namespace

bool copyText(HWND owner, TextBuffer& text, uint32_t begin, uint32_t end) {
  ByteArray converted;
  const bool ready = convertToFile(text.view(begin, end), LineEndKind::crLf, true, converted);
  const HGLOBAL block = ready ? makeBlock(converted.view()) : nullptr;
  if (block == nullptr) {
    reportOutOfMemory();
    return false;
  }
  if (!OpenClipboard(owner)) {
    GlobalFree(block);
    MessageBeep(MB_OK);  // another program holds it
    return false;
  }
  EmptyClipboard();
  const bool done = SetClipboardData(CF_TEXT, block) != nullptr;
  CloseClipboard();
  if (!done) GlobalFree(block);
  return done;
}

bool copySelection(HWND owner, ViewState& view) {
  TextBuffer& text = view.documents().text[view.activeSide()];
  return view.hasSelection() && copyText(owner, text, view.selectionBegin(), view.selectionEnd());
}

}  // namespace merivane
