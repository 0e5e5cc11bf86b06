#include "shell/win/file_icons.h"

#include <shellapi.h>

#include <algorithm>

#include "base/names.h"
#include "base/paths.h"
#include "base/win/dpi.h"
#include "base/win/wide.h"
#include "folders/icon_key.h"
#include "shell/win/button_icons.h"
#include "shell/win/registry_store.h"

namespace merivane {
namespace {

constexpr const char* shellIconsKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Icons";

HIMAGELIST makeList(int size) { return ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 20, 10); }

std::wstring expanded(const std::string& text) {
  const std::wstring source = wide(text);
  std::wstring result(MAX_PATH, L'\0');
  const DWORD length = ExpandEnvironmentStringsW(source.c_str(), result.data(), MAX_PATH);
  if (length == 0 || length > MAX_PATH) return source;
  result.resize(length - 1);
  return result;
}

}  // namespace

FileIcons::FileIcons(int dpi)
    : smallSize_(systemMetric(SM_CXSMICON, dpi)),
      large_(makeList(systemMetric(SM_CXICON, dpi))),
      small_(makeList(smallSize_)) {
  SHFILEINFOW info = {};
  if (SHGetFileInfoW(L"mothergoose", FILE_ATTRIBUTE_NORMAL, &info, sizeof info,
                     SHGFI_SYSICONINDEX | SHGFI_USEFILEATTRIBUTES) != 0) {
    genericFile_ = info.iIcon;
  }
}

/// Both lists grow together, so that one number is right in both.
int FileIcons::add(HICON large, HICON small) {
  const Icon owned[] = {Icon(large), Icon(small)};
  if (large == nullptr || small == nullptr) return -1;
  const int index = ImageList_ReplaceIcon(large_.get(), -1, large);
  if (index >= 0 && ImageList_ReplaceIcon(small_.get(), -1, small) != index) {
    ImageList_Remove(large_.get(), index);
    return -1;
  }
  return index;
}

int FileIcons::extract(const std::wstring& file, int number) {
  HICON large = nullptr;
  HICON small = nullptr;
  ExtractIconExW(file.c_str(), number, &large, &small, 1);
  return add(large, small);
}

int FileIcons::extract(const std::string& location) {
  const auto parsed = parseIconLocation(location);
  return parsed ? extract(expanded(parsed->file), parsed->number) : -1;
}

int FileIcons::IconForFile(const std::string& path) {
  const auto key = iconKey(path);
  if (!key) return -1;
  const auto known = std::ranges::find_if(
      cache_, [&](const Cached& each) { return each.stock == -1 && equalNames(each.key, *key, false); });
  if (known != cache_.end()) return known->index;
  const int index = lookUp(path, path.substr(path.rfind('.')));
  cache_.push_back({*key, -1, index});
  return index;
}

int FileIcons::lookUp(const std::string& path, const std::string& extension) {
  const std::wstring name = wide(path);
  SHFILEINFOW large = {};
  SHFILEINFOW small = {};
  const UINT flags = SHGFI_ICON | SHGFI_SYSICONINDEX;
  const bool both = SHGetFileInfoW(name.c_str(), 0, &large, sizeof large, flags | SHGFI_LARGEICON) != 0 &&
                    SHGetFileInfoW(name.c_str(), 0, &small, sizeof small, flags | SHGFI_SMALLICON) != 0;
  if (both && small.iIcon != genericFile_) return add(large.hIcon, small.hIcon);
  for (const HICON icon : {large.hIcon, small.hIcon}) {
    if (icon != nullptr) DestroyIcon(icon);
  }
  RegistryKey type(HKEY_CLASSES_ROOT, extension);
  const std::string typeName = SettingsStore(type).GetString("").value_or("");
  if (typeName.empty()) return -1;
  RegistryKey icon(HKEY_CLASSES_ROOT, typeName + "\\DefaultIcon");
  return extract(SettingsStore(icon).GetString("").value_or(""));
}

int FileIcons::StockIcon(int number) {
  const auto known = std::ranges::find(cache_, number, &Cached::stock);
  if (known != cache_.end()) return known->index;
  RegistryKey replaced(HKEY_LOCAL_MACHINE, shellIconsKey);
  int index = -1;
  if (const auto location = SettingsStore(replaced).GetString(std::to_string(number))) {
    index = extract(*location);
  }
  if (index < 0) index = extract(L"SHELL32.DLL", number);
  cache_.push_back({"", number, index});
  return index;
}

}  // namespace merivane
