#include "shell/win/file_dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <iterator>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "shell/name_box.h"

namespace merivane {
namespace {

/// "Name|pattern||" as the dialogs take it: NUL between the parts and two at the end.
std::wstring filterOf(TextId id) {
  std::wstring filter = wide(loadText(id));
  std::replace(filter.begin(), filter.end(), L'|', L'\0');
  return filter;
}

/// Puts the current folder back, which the dialogs change whatever they are told.
class CurrentFolder {
 public:
  CurrentFolder() {
    if (GetCurrentDirectoryW(static_cast<DWORD>(std::size(path_)), path_) >= std::size(path_)) *path_ = L'\0';
  }
  ~CurrentFolder() {
    if (*path_ != L'\0') SetCurrentDirectoryW(path_);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  wchar_t path_[MAX_PATH] = L"";
};

struct FileQuestion {
  BOOL(WINAPI* dialog)(OPENFILENAMEW*);
  DWORD flags;
  TextId filter = TextId::allFilesFilter;
  const wchar_t* extension = nullptr;  // of a name typed without one
};

std::optional<std::string> ask(const FileQuestion& question, HWND owner, const std::string& titleText,
                               const std::string& name) {
  const BrowseStart start = browseStart(systemFiles(), name);
  const std::wstring filter = filterOf(question.filter);
  const std::wstring title = wide(titleText);
  const std::wstring folder = wide(start.folder);
  wchar_t buffer[4096] = L"";
  const std::wstring file = wide(start.file);
  if (file.size() < std::size(buffer)) file.copy(buffer, file.size());
  OPENFILENAMEW info = {};
  info.lStructSize = sizeof info;
  info.hwndOwner = owner;
  info.lpstrFilter = filter.c_str();
  info.lpstrFile = buffer;
  info.nMaxFile = static_cast<DWORD>(std::size(buffer));
  info.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  info.lpstrTitle = title.c_str();
  info.lpstrDefExt = question.extension;
  info.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | question.flags;
  const CurrentFolder kept;
  if (question.dialog(&info)) return utf8(buffer);
  // 0 when the user has cancelled it.
  if (const DWORD error = CommDlgExtendedError()) {
    showMessage(owner, loadMessage(TextId::dialogFailed, {int64_t{error}}), MB_OK | MB_ICONERROR);
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> chooseFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetOpenFileNameW, OFN_FILEMUSTEXIST}, owner, title, name);
}

std::optional<std::string> chooseSaveFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetSaveFileNameW, OFN_OVERWRITEPROMPT}, owner, title, name);
}

std::optional<std::string> chooseExportFile(HWND owner, const std::string& name) {
  return ask({GetSaveFileNameW, 0, TextId::htmlFilesFilter, L"html"}, owner,
             loadText(TextId::chooseExportFile), name);
}

}  // namespace merivane
