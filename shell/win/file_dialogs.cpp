#include "shell/win/file_dialogs.h"

#include <commdlg.h>

#include <algorithm>

#include "base/paths.h"
#include "base/win/messages.h"

namespace merivane {
namespace {

/// "Name|pattern||" as the dialogs take it: NUL between the parts and two at the end.
std::string filterOf(TextId id) {
  std::string filter = loadText(id);
  std::replace(filter.begin(), filter.end(), '|', '\0');
  return filter;
}

std::optional<std::string> choose(BOOL(WINAPI* dialog)(OPENFILENAMEA*), HWND owner, const std::string& title,
                                  const std::string& name, DWORD flags) {
  char buffer[4096] = "";
  // The dialog refuses to open with a name that is none.
  if (IsValidFilePath(name)) lstrcpynA(buffer, name.c_str(), sizeof buffer);
  const std::string filter = filterOf(TextId::allFilesFilter);
  OPENFILENAMEA info = {};
  info.lStructSize = sizeof info;
  info.hwndOwner = owner;
  info.lpstrFilter = filter.c_str();
  info.lpstrFile = buffer;
  info.nMaxFile = sizeof buffer;
  info.lpstrTitle = title.c_str();
  info.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | flags;
  if (!dialog(&info)) return std::nullopt;
  return buffer;
}

}  // namespace

std::optional<std::string> chooseFile(HWND owner, const std::string& title, const std::string& name) {
  return choose(GetOpenFileNameA, owner, title, name, OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
}

std::optional<std::string> chooseSaveFile(HWND owner, const std::string& title, const std::string& name) {
  return choose(GetSaveFileNameA, owner, title, name, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST);
}

}  // namespace merivane
