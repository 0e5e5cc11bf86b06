#include "shell/win/registry_store.h"

namespace merivane {
namespace {

class OpenKey {
 public:
  OpenKey(HKEY root, const std::string& path, REGSAM access) {
    if (RegOpenKeyExA(root, path.c_str(), 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
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
  DWORD size = 0;
  if (key.get() == nullptr ||
      RegQueryValueExA(key.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::string bytes(size, '\0');
  // Fails when the value has grown in between.
  if (RegQueryValueExA(key.get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()),
                       &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  bytes.resize(size);
  return bytes;
}

bool RegistryKey::write(const std::string& name, ValueType type, std::string_view bytes) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(root_, path_.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr, &key,
                      nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const LSTATUS status =
      RegSetValueExA(key, name.c_str(), 0, type == ValueType::number ? REG_DWORD : REG_SZ,
                     reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
  RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

bool RegistryKey::writable() const { return OpenKey(root_, path_, KEY_SET_VALUE).get() != nullptr; }

}  // namespace merivane
