#include "tests/win/support/clipboard.h"

#include "tests/win/support/polling.h"

namespace merivane {
namespace {

/// The clipboard, which other programs may be holding just now.
class HeldClipboard {
 public:
  HeldClipboard() {
    waitUntil([] { return ::OpenClipboard(nullptr) != 0; });
  }
  ~HeldClipboard() { CloseClipboard(); }
  HeldClipboard(const HeldClipboard&) = delete;
  HeldClipboard& operator=(const HeldClipboard&) = delete;
};

}  // namespace

std::string ClipboardWatch::text() const {
  waitUntil([&] { return GetClipboardSequenceNumber() != before_; });
  const HeldClipboard held;
  const HANDLE data = GetClipboardData(CF_TEXT);
  if (data == nullptr) return {};
  const std::string text = static_cast<const char*>(GlobalLock(data));
  GlobalUnlock(data);
  return text;
}

}  // namespace merivane
