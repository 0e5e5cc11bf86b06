#include "base/win/messages.h"

#include "base/file_system.h"
#include "base/win/window.h"

namespace merivane {
namespace {

constexpr int maxText = 1024;  // with its NUL

}  // namespace

std::string loadText(UINT number) {
  char buffer[maxText];
  const int length = LoadStringA(programInstance(), number, buffer, maxText);
  return std::string(buffer, static_cast<size_t>(length));
}

std::string loadText(TextId id) { return loadText(static_cast<UINT>(id)); }

std::string loadMessage(TextId id, std::initializer_list<MessageArgument> arguments) {
  return formatMessage(loadText(id), arguments);
}

int showMessage(HWND owner, const std::string& text, UINT style) {
  return MessageBoxA(owner, text.c_str(), loadText(TextId::productName).c_str(), style);
}

int showMessage(HWND owner, TextId id, UINT style) { return showMessage(owner, loadText(id), style); }

void showSystemError(HWND owner, TextId id, SystemError error) {
  showMessage(owner, loadMessage(id, {systemErrorText(error)}), MB_OK | MB_ICONERROR);
}

void reportOutOfMemory() {
  char text[maxText] = "";
  char caption[maxText] = "";
  LoadStringA(programInstance(), static_cast<UINT>(TextId::outOfMemory), text, maxText);
  LoadStringA(programInstance(), static_cast<UINT>(TextId::productName), caption, maxText);
  MessageBoxA(nullptr, text, caption, MB_OK | MB_ICONSTOP);
}

}  // namespace merivane
