#include "mergeview/win/clipboard.h"

#include <cstring>
#include <cwchar>
#include <exception>
#include <string>

#include "base/win/messages.h"
#include "base/win/wide.h"

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

/// A block that the clipboard can own, with a NUL after the text. Null when memory runs out.
HGLOBAL makeBlock(std::wstring_view text) {
  const size_t size = text.size() * sizeof(wchar_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE | GMEM_ZEROINIT, size + sizeof(wchar_t));
  if (block == nullptr) return nullptr;
  auto* const bytes = static_cast<char*>(GlobalLock(block));
  if (bytes == nullptr) {
    GlobalFree(block);
    return nullptr;
  }
  if (!text.empty()) std::memcpy(bytes, text.data(), size);
  GlobalUnlock(block);
  return block;
}

/// Half a surrogate pair would be no UTF-8.
void replaceHalves(std::wstring& units) {
  for (size_t i = 0; i < units.size(); ++i) {
    const bool pair = IS_HIGH_SURROGATE(units[i]) && i + 1 < units.size() && IS_LOW_SURROGATE(units[i + 1]);
    if (pair) {
      ++i;
    } else if (IS_HIGH_SURROGATE(units[i]) || IS_LOW_SURROGATE(units[i])) {
      units[i] = 0xFFFD;
    }
  }
}

/// Copies a block's text up to its NUL, which a program may have left out. False without memory.
bool copyBlock(HGLOBAL block, ByteArray& text) {
  const auto* const units = static_cast<const wchar_t*>(block == nullptr ? nullptr : GlobalLock(block));
  if (units == nullptr) return false;
  bool copied = false;
  try {
    std::wstring copy(units, wcsnlen(units, GlobalSize(block) / sizeof(wchar_t)));
    replaceHalves(copy);
    copied = text.assign(utf8(copy));
  } catch (const std::exception&) {  // no memory, or longer than a string can be
  }
  GlobalUnlock(block);
  return copied;
}

}  // namespace

bool putOnClipboard(HWND owner, std::wstring_view text) {
  const HGLOBAL block = makeBlock(text);
  if (block == nullptr) {
    reportOutOfMemory();
    return false;
  }
  bool done = false;
  if (const OpenedClipboard clipboard(owner); clipboard) {
    EmptyClipboard();
    done = SetClipboardData(CF_UNICODETEXT, block) != nullptr;
  }
  if (!done) {
    GlobalFree(block);
    reportBusy(owner);
  }
  return done;
}

bool takeFromClipboard(HWND owner, ByteArray& text) {
  if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return false;
  HANDLE block = nullptr;
  bool done = false;
  if (const OpenedClipboard clipboard(owner); clipboard) {
    block = GetClipboardData(CF_UNICODETEXT);
    done = copyBlock(block, text);
  }
  // The clipboard is closed before anything is shown: other programs wait for it.
  if (!done && block != nullptr) reportOutOfMemory();
  if (!done && block == nullptr) reportBusy(owner);
  return done;
}

}  // namespace merivane
