#include "shell/win/registry_store.h"

#include <cstring>

#include "base/win/wide.h"

namespace merivane {
namespace {

class OpenKey {
 public:
  OpenKey(HKEY root, const std::string& path, REGSAM access) {
    if (RegOpenKeyExW(root, wide(path).c_str(), 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~OpenKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

std::optional<std::string> RegistryKey::read(const std::string& name) const {
  const OpenKey key(root_, path_, KEY_QUERY_VALUE);
  const std::wstring wideName = wide(name);
  DWORD type = 0;
  DWORD size = 0;
  if (key.get() == nullptr ||
      RegQueryValueExW(key.get(), wideName.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::string bytes(size, '\0');
  // Fails when the value has grown in between.
  if (RegQueryValueExW(key.get(), wideName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()),
                       &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  bytes.resize(size);
  if (type != REG_SZ && type != REG_EXPAND_SZ && type != REG_MULTI_SZ) return bytes;
  std::wstring text(size / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  return utf8(text);
}

bool RegistryKey::write(const std::string& name, ValueType type, std::string_view bytes) {
  HKEY key = nullptr;
  if (RegCreateKeyExW(root_, wide(path_).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                      &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const std::wstring text = type == ValueType::text ? wide(bytes) : std::wstring();
  const void* const data = type == ValueType::text ? static_cast<const void*>(text.data()) : bytes.data();
  const size_t size = type == ValueType::text ? text.size() * sizeof(wchar_t) : bytes.size();
  const LSTATUS status =
      RegSetValueExW(key, wide(name).c_str(), 0, type == ValueType::number ? REG_DWORD : REG_SZ,
                     static_cast<const BYTE*>(data), static_cast<DWORD>(size));
  RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

bool RegistryKey::writable() const { return OpenKey(root_, path_, KEY_SET_VALUE).get() != nullptr; }

}  // namespace merivane
