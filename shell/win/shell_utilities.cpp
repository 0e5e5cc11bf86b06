#include "shell/win/shell_utilities.h"

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <random>

#include "base/file_system.h"
#include "base/temp_files.h"

namespace merivane {
namespace {

/// Holds a COM interface and lets it go.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ~ComPointer() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  Interface* operator->() const { return pointer_; }
  void** address() { return reinterpret_cast<void**>(&pointer_); }

 private:
  Interface* pointer_ = nullptr;
};

bool hasContents(const std::string& name) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  return GetFileAttributesExA(name.c_str(), GetFileExInfoStandard, &data) != 0 &&
         (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
         (data.nFileSizeLow != 0 || data.nFileSizeHigh != 0);
}

/// Lets the shell act on a path, without any error boxes of its own. Returns 0 or the error.
SystemError execute(HWND owner, const char* verb, const std::string& path, ULONG flags) {
  SHELLEXECUTEINFOA info = {};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI | flags;
  info.hwnd = owner;
  info.lpVerb = verb;
  info.lpFile = path.c_str();
  info.nShow = SW_SHOWNORMAL;
  return ShellExecuteExA(&info) ? 0 : GetLastError();
}

bool reported(SystemError error, HWND owner, TextId message, ErrorReport report) {
  if (error != 0) report(owner, message, error);
  return error == 0;
}

}  // namespace

std::string ResolveShortcut(const std::string& name) {
  if (name.empty() || !hasContents(name)) return name;
  wchar_t wide[MAX_PATH];
  if (MultiByteToWideChar(CP_ACP, 0, name.c_str(), -1, wide, MAX_PATH) == 0) return name;
  ComPointer<IShellLinkA> link;
  ComPointer<IPersistFile> file;
  if (CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, link.address()) !=
          S_OK ||
      link->QueryInterface(IID_IPersistFile, file.address()) != S_OK || file->Load(wide, STGM_READ) != S_OK) {
    return name;
  }
  char target[MAX_PATH] = "";
  if (link->GetPath(target, MAX_PATH, nullptr, 0) != S_OK || target[0] == '\0') return name;
  return target;
}

std::vector<std::string> takeDrop(HDROP drop) {
  std::vector<std::string> names;
  const UINT count = DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::string name(DragQueryFileA(drop, i, nullptr, 0), '\0');
    DragQueryFileA(drop, i, name.data(), static_cast<UINT>(name.size()) + 1);
    names.push_back(ResolveShortcut(name));
  }
  DragFinish(drop);
  return names;
}

bool OpenWithShell(HWND owner, const std::string& path, ErrorReport report) {
  const HINSTANCE result = ShellExecuteA(owner, nullptr, path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  const SystemError error = reinterpret_cast<INT_PTR>(result) > 32 ? 0 : GetLastError();
  return reported(error, owner, TextId::couldNotOpenInExplorer, report);
}

bool ExploreFolder(HWND owner, const std::string& folder, ErrorReport report) {
  return reported(execute(owner, "explore", folder, 0), owner, TextId::couldNotOpenInExplorer, report);
}

bool ShowProperties(HWND owner, const std::string& path, ErrorReport report) {
  // The verb is one of the context menu, which the shell looks into only when told so.
  return reported(execute(owner, "properties", path, SEE_MASK_INVOKEIDLIST), owner,
                  TextId::couldNotOpenProperties, report);
}

std::string MakeTempFileName(const std::string& prefix) {
  char folder[MAX_PATH + 1];
  const DWORD length = GetTempPathA(sizeof folder, folder);
  if (length == 0 || length >= sizeof folder) return {};
  std::random_device random;
  return MakeTempFileName(systemFiles(), folder, prefix, [&] { return static_cast<uint32_t>(random()); });
}

std::string absolutePath(const std::string& path) {
  char whole[MAX_PATH];
  const DWORD length = GetFullPathNameA(path.c_str(), sizeof whole, whole, nullptr);
  return length == 0 || length >= sizeof whole ? path : std::string(whole, length);
}

}  // namespace merivane
