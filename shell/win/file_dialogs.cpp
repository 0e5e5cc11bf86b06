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

struct FileQuestion {
  BOOL(WINAPI* dialog)(OPENFILENAMEA*);
  DWORD flags;
  TextId filter = TextId::allFilesFilter;
  const char* extension = nullptr;  // of a name typed without one
};

std::optional<std::string> ask(const FileQuestion& question, HWND owner, const std::string& title,
                               const std::string& name) {
  char buffer[4096] = "";
  // The dialog refuses to open with a name that is none.
  if (IsValidFilePath(name)) lstrcpynA(buffer, name.c_str(), sizeof buffer);
  const std::string filter = filterOf(question.filter);
  OPENFILENAMEA info = {};
  info.lStructSize = sizeof info;
  info.hwndOwner = owner;
  info.lpstrFilter = filter.c_str();
  info.lpstrFile = buffer;
  info.nMaxFile = sizeof buffer;
  info.lpstrTitle = title.c_str();
  info.lpstrDefExt = question.extension;
  info.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | question.flags;
  if (!question.dialog(&info)) return std::nullopt;
  return buffer;
}

}  // namespace

std::optional<std::string> chooseFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetOpenFileNameA, OFN_FILEMUSTEXIST}, owner, title, name);
}

std::optional<std::string> chooseSaveFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetSaveFileNameA, OFN_OVERWRITEPROMPT}, owner, title, name);
}

std::optional<std::string> chooseExportFile(HWND owner, const std::string& name) {
  return ask({GetSaveFileNameA, 0, TextId::htmlFilesFilter, "html"}, owner,
             loadText(TextId::chooseExportFile), name);
}

}  // namespace merivane
