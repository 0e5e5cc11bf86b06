#include "base/win/messages.h"

#include "base/file_system.h"
#include "base/win/wide.h"
#include "base/win/window.h"

namespace merivane {
namespace {

constexpr int maxText = 1024;  // with its NUL

}  // namespace

std::string loadText(UINT number) {
  wchar_t buffer[maxText];
  const int length = LoadStringW(programInstance(), number, buffer, maxText);
  return utf8({buffer, static_cast<size_t>(length)});
}

std::string loadText(TextId id) { return loadText(static_cast<UINT>(id)); }

std::string loadMessage(TextId id, std::initializer_list<MessageArgument> arguments) {
  return formatMessage(loadText(id), arguments);
}

int showMessage(HWND owner, const std::string& text, UINT style) {
  return MessageBoxW(owner, wide(text).c_str(), wide(loadText(TextId::productName)).c_str(), style);
}

int showMessage(HWND owner, TextId id, UINT style) { return showMessage(owner, loadText(id), style); }

void showSystemError(HWND owner, TextId id, SystemError error) {
  showMessage(owner, loadMessage(id, {systemErrorText(error)}), MB_OK | MB_ICONERROR);
}

void reportOutOfMemory() {
  wchar_t text[maxText] = L"";
  wchar_t caption[maxText] = L"";
  LoadStringW(programInstance(), static_cast<UINT>(TextId::outOfMemory), text, maxText);
  LoadStringW(programInstance(), static_cast<UINT>(TextId::productName), caption, maxText);
  MessageBoxW(nullptr, text, caption, MB_OK | MB_ICONSTOP);
}

}  // namespace merivane
