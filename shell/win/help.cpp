#include "shell/win/help.h"

#include <iterator>

#include "base/file_system.h"
#include "base/paths.h"
#include "base/win/handle.h"
#include "base/win/wide.h"
#include "shell/help_places.h"
#include "shell/win/registry_store.h"
#include "shell/win/shell_utilities.h"

namespace merivane {
namespace {

constexpr UINT displayTopic = 0;
constexpr UINT closeAll = 0x12;

std::string programFolder() {
  wchar_t file[1024];
  const DWORD length = GetModuleFileNameW(nullptr, file, static_cast<DWORD>(std::size(file)));
  const std::wstring_view path(file, length < std::size(file) ? length : 0);
  const size_t end = path.rfind(L'\\');
  return end == path.npos ? std::string() : utf8(path.substr(0, end));
}

std::string manualFolder() {
  RegistryKey machine(HKEY_LOCAL_MACHINE, kProgramKey);
  RegistryKey user(HKEY_CURRENT_USER, kProgramKey);
  const std::string installed = InstallDir(SettingsStore(machine), SettingsStore(user));
  return installed.empty() ? programFolder() : installed;
}

/// The library that is registered for help, if it is one of the system's; else the one it comes with. A
/// user's own registration could name any file.
std::wstring helpLibrary() {
  wchar_t system[MAX_PATH] = L"";
  GetSystemDirectoryW(system, MAX_PATH);
  const std::wstring folder = std::wstring(system) + L'\\';
  wchar_t registered[MAX_PATH] = L"";
  DWORD size = sizeof registered;
  RegGetValueW(HKEY_CLASSES_ROOT, L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32", nullptr,
               RRF_RT_REG_SZ, nullptr, registered, &size);
  const std::wstring file = registered;
  const bool isSystems = file.find_last_of(L'\\') == folder.size() - 1 &&
                         CompareStringOrdinal(file.c_str(), static_cast<int>(folder.size()), folder.c_str(),
                                              static_cast<int>(folder.size()), TRUE) == CSTR_EQUAL;
  return isSystems ? file : folder + L"hhctrl.ocx";
}

/// The viewer opens files of other machines and those marked as coming from the web, but shows no page of
/// them.
bool viewerRefuses(const std::string& file) {
  const std::wstring path = wide(file);
  if (path.starts_with(L"\\\\")) return true;
  const wchar_t drive[] = {path[0], L':', L'\\', L'\0'};
  if (GetDriveTypeW(drive) == DRIVE_REMOTE) return true;
  return GetFileAttributesW((path + L":Zone.Identifier").c_str()) != INVALID_FILE_ATTRIBUTES;
}

void sayNothing(HWND, TextId, SystemError) {}

}  // namespace

void Help::show(const std::string& page) {
  const HelpPlaces places = helpPlaces(manualFolder(), page);
  if (showInViewer(places.compiled, places.topic)) return;
  if (systemFiles().kind(places.plain) == FileKind::file) OpenAddress(nullptr, places.plain, sayNothing);
}

bool Help::showInViewer(const std::string& file, const std::string& topic) {
  if (systemFiles().kind(file) != FileKind::file || viewerRefuses(file)) return false;
  if (!loaded_) {
    loaded_ = true;
    if (const HMODULE library = LoadLibraryW(helpLibrary().c_str())) {
      htmlHelp_ = reinterpret_cast<HtmlHelp>(reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpW")));
    }
  }
  return htmlHelp_ != nullptr && htmlHelp_(nullptr, wide(topic).c_str(), displayTopic, 0) != nullptr;
}

void Help::close() {
  if (htmlHelp_ != nullptr) htmlHelp_(nullptr, nullptr, closeAll, 0);
}

}  // namespace merivane
