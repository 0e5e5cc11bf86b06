#include "tests/win/support/saved_settings.h"

namespace merivane {
namespace {

constexpr char key[] = "SOFTWARE\\Brackenfold\\Merivane\\Settings";

void save(const std::string& name, DWORD type, const void* data, size_t size) {
  RegSetKeyValueA(HKEY_CURRENT_USER, key, name.c_str(), type, data, static_cast<DWORD>(size));
}

}  // namespace

void clearSavedSettings() { RegDeleteTreeA(HKEY_CURRENT_USER, key); }

std::optional<std::string> savedText(const std::string& name) {
  char text[1024];
  DWORD size = sizeof text;
  if (RegGetValueA(HKEY_CURRENT_USER, key, name.c_str(), RRF_RT_REG_SZ, nullptr, text, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  return text;
}

std::optional<DWORD> savedNumber(const std::string& name) {
  DWORD number = 0;
  DWORD size = sizeof number;
  if (RegGetValueA(HKEY_CURRENT_USER, key, name.c_str(), RRF_RT_REG_DWORD, nullptr, &number, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  return number;
}

void saveText(const std::string& name, const std::string& text) {
  save(name, REG_SZ, text.c_str(), text.size() + 1);
}

void saveNumber(const std::string& name, DWORD number) { save(name, REG_DWORD, &number, sizeof number); }

}  // namespace merivane
