#include "shell/win/shell_utilities.h"

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include "base/file_system.h"
#include "base/win/com_pointer.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

/// The system's error after a failure that it may not have said anything about.
SystemError failure() {
  const DWORD error = GetLastError();
  return error != 0 ? error : ERROR_GEN_FAILURE;
}

/// Lets the shell act on a path, without any error boxes of its own. Returns 0 or the error.
SystemError execute(HWND owner, const wchar_t* verb, const std::string& path, ULONG flags) {
  const std::wstring name = wide(path);
  SHELLEXECUTEINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI | flags;
  info.hwnd = owner;
  info.lpVerb = verb;
  info.lpFile = name.c_str();
  info.nShow = SW_SHOWNORMAL;
  SetLastError(0);
  return ShellExecuteExW(&info) ? 0 : failure();
}

bool reported(SystemError error, HWND owner, TextId message, ErrorReport report) {
  if (error != 0) report(owner, message, error);
  return error == 0;
}

}  // namespace

std::string ResolveShortcut(const std::string& name) {
  if (name.empty() || systemFiles().stamp(name).size == 0) return name;
  ComPointer<IShellLinkW> link;
  ComPointer<IPersistFile> file;
  if (CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, link.address()) !=
          S_OK ||
      link->QueryInterface(IID_IPersistFile, file.address()) != S_OK ||
      file->Load(wide(name).c_str(), STGM_READ) != S_OK) {
    return name;
  }
  wchar_t target[MAX_PATH] = L"";
  if (link->GetPath(target, MAX_PATH, nullptr, 0) != S_OK || target[0] == L'\0') return name;
  return utf8(target);
}

std::vector<std::string> takeDrop(HDROP drop) {
  std::vector<std::string> names;
  const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring name(DragQueryFileW(drop, i, nullptr, 0), L'\0');
    DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size()) + 1);
    names.push_back(ResolveShortcut(utf8(name)));
  }
  DragFinish(drop);
  return names;
}

bool OpenWithShell(HWND owner, const std::string& path, ErrorReport report) {
  SetLastError(0);
  const HINSTANCE result = ShellExecuteW(owner, nullptr, wide(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  const SystemError error = reinterpret_cast<INT_PTR>(result) > 32 ? 0 : failure();
  return reported(error, owner, TextId::couldNotOpenInExplorer, report);
}

bool OpenAddress(HWND owner, const std::string& address, ErrorReport report) {
  return reported(execute(owner, L"open", address, 0), owner, TextId::couldNotOpenAddress, report);
}

bool ExploreFolder(HWND owner, const std::string& folder, ErrorReport report) {
  return reported(execute(owner, L"explore", folder, 0), owner, TextId::couldNotOpenInExplorer, report);
}

bool ShowProperties(HWND owner, const std::string& path, ErrorReport report) {
  // The verb is one of the context menu, which the shell looks into only when told so.
  return reported(execute(owner, L"properties", path, SEE_MASK_INVOKEIDLIST), owner,
                  TextId::couldNotOpenProperties, report);
}

}  // namespace merivane
