#pragma once

#include <windows.h>

#include <string>

namespace merivane {

// The program's settings as they lie in the registry.
inline constexpr char kSettingsKey[] = "SOFTWARE\\Brackenfold\\Merivane\\Settings";

/// Forgets all of them, as before the first run.
inline void clearSavedSettings() { RegDeleteTreeA(HKEY_CURRENT_USER, kSettingsKey); }

/// A value's text, a number's with "# " in front; "(none)" for one that is absent.
inline std::string saved(const char* name) {
  char value[1024];
  DWORD size = sizeof value;
  DWORD type = REG_NONE;
  RegGetValueA(HKEY_CURRENT_USER, kSettingsKey, name, RRF_RT_ANY, &type, value, &size);
  if (type == REG_DWORD) return "# " + std::to_string(*reinterpret_cast<const DWORD*>(value));
  return type == REG_SZ ? value : "(none)";
}

inline void save(const char* name, const std::string& text) {
  RegSetKeyValueA(HKEY_CURRENT_USER, kSettingsKey, name, REG_SZ, text.c_str(),
                  static_cast<DWORD>(text.size() + 1));
}

inline void save(const char* name, DWORD number) {
  RegSetKeyValueA(HKEY_CURRENT_USER, kSettingsKey, name, REG_DWORD, &number, sizeof number);
}

}  // namespace merivane
