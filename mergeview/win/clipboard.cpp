#include "mergeview/win/clipboard.h"

#include <cstring>

#include "base/win/messages.h"

namespace merivane {
namespace {

/// The clipboard, open for as long as this lives. Another program may have it open for a moment, as those
/// that keep its history do whenever it changes.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    constexpr int tries = 10;
    constexpr DWORD pauseMilliseconds = 10;
    for (int i = 0; i < tries && !opened_; ++i) {
      if (i > 0) Sleep(pauseMilliseconds);
      opened_ = OpenClipboard(owner) != 0;
    }
  }
  ~OpenedClipboard() {
    if (opened_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return opened_; }

 private:
  bool opened_ = false;
};

void reportBusy(HWND owner) { showMessage(owner, TextId::clipboardBusy, MB_OK | MB_ICONERROR); }

/// A block that the clipboard can own, with a NUL of either width after the text. Null when memory runs out.
HGLOBAL makeBlock(std::string_view text) {
  const HGLOBAL block =
      GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE | GMEM_ZEROINIT, text.size() + sizeof(wchar_t));
  if (block == nullptr) return nullptr;
  auto* const bytes = static_cast<char*>(GlobalLock(block));
  if (bytes == nullptr) {
    GlobalFree(block);
    return nullptr;
  }
  if (!text.empty()) std::memcpy(bytes, text.data(), text.size());
  GlobalUnlock(block);
  return block;
}

/// Copies a block's text up to its NUL, which a program may have left out. False without memory.
bool copyBlock(HGLOBAL block, ByteArray& text) {
  const auto* const bytes = static_cast<const char*>(block == nullptr ? nullptr : GlobalLock(block));
  if (bytes == nullptr) return false;
  const bool copied = text.assign({bytes, strnlen(bytes, GlobalSize(block))});
  GlobalUnlock(block);
  return copied;
}

bool put(HWND owner, UINT format, std::string_view text) {
  const HGLOBAL block = makeBlock(text);
  if (block == nullptr) {
    reportOutOfMemory();
    return false;
  }
  bool done = false;
  if (const OpenedClipboard clipboard(owner); clipboard) {
    EmptyClipboard();
    done = SetClipboardData(format, block) != nullptr;
  }
  if (!done) {
    GlobalFree(block);
    reportBusy(owner);
  }
  return done;
}

}  // namespace

bool putOnClipboard(HWND owner, std::string_view text) { return put(owner, CF_TEXT, text); }

bool putOnClipboard(HWND owner, std::wstring_view text) {
  return put(owner, CF_UNICODETEXT,
             {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
}

bool takeFromClipboard(HWND owner, ByteArray& text) {
  if (!IsClipboardFormatAvailable(CF_TEXT)) return false;
  HANDLE block = nullptr;
  bool done = false;
  if (const OpenedClipboard clipboard(owner); clipboard) {
    block = GetClipboardData(CF_TEXT);
    done = copyBlock(block, text);
  }
  // The clipboard is closed before anything is shown: other programs wait for it.
  if (!done && block != nullptr) reportOutOfMemory();
  if (!done && block == nullptr) reportBusy(owner);
  return done;
}

}  // namespace merivane
