#include "shell/win/file_dialogs.h"

#include <commdlg.h>
#include <shlobj.h>

#include <algorithm>
#include <iterator>

#include "base/win/com_pointer.h"
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

/// The shell's object for a folder.
bool findFolder(const std::string& path, void** item) {
  PIDLIST_ABSOLUTE place = nullptr;
  if (path.empty() || FAILED(SHParseDisplayName(wide(path).c_str(), nullptr, &place, 0, nullptr)))
    return false;
  const HRESULT result = SHCreateShellItem(nullptr, nullptr, place, reinterpret_cast<IShellItem**>(item));
  CoTaskMemFree(place);
  return SUCCEEDED(result);
}

}  // namespace

std::optional<std::string> chooseFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetOpenFileNameW, OFN_FILEMUSTEXIST}, owner, title, name);
}

std::optional<std::string> chooseFolder(HWND owner, const std::string& title, const std::string& name) {
  const CurrentFolder kept;
  ComPointer<IFileOpenDialog> dialog;
  HRESULT result = CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                    dialog.address());
  if (SUCCEEDED(result)) {
    dialog->SetOptions(FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR | FOS_PATHMUSTEXIST);
    dialog->SetTitle(wide(title).c_str());
    ComPointer<IShellItem> start;
    if (findFolder(browseStart(systemFiles(), name).folder, start.address())) dialog->SetFolder(start.get());
    result = dialog->Show(owner);
  }
  ComPointer<IShellItem> chosen;
  wchar_t* path = nullptr;
  if (SUCCEEDED(result)) result = dialog->GetResult(reinterpret_cast<IShellItem**>(chosen.address()));
  if (SUCCEEDED(result)) result = chosen->GetDisplayName(SIGDN_FILESYSPATH, &path);
  if (SUCCEEDED(result)) {
    std::string text = utf8(path);
    CoTaskMemFree(path);
    return text;
  }
  if (result != HRESULT_FROM_WIN32(ERROR_CANCELLED)) {
    showMessage(owner, loadMessage(TextId::dialogFailed, {int64_t{result}}), MB_OK | MB_ICONERROR);
  }
  return std::nullopt;
}

std::optional<std::string> chooseSaveFile(HWND owner, const std::string& title, const std::string& name) {
  return ask({GetSaveFileNameW, OFN_OVERWRITEPROMPT}, owner, title, name);
}

std::optional<std::string> chooseExportFile(HWND owner, const std::string& name) {
  return ask({GetSaveFileNameW, 0, TextId::htmlFilesFilter, L"html"}, owner,
             loadText(TextId::chooseExportFile), name);
}

}  // namespace merivane
