#include "shell/settings_store.h"

#include <algorithm>

namespace merivane {
int32_t SettingsStore::GetNumber(const std::string& name, int32_t fallback) const {
  const std::optional<std::string> bytes = values_.read(name);
  if (!bytes || bytes->size() > 4) return fallback;
  uint32_t value = 0;
  for (size_t i = 0; i < bytes->size(); ++i) value |= uint32_t{static_cast<uint8_t>((*bytes)[i])} << (8 * i);
  return static_cast<int32_t>(value);
}

bool SettingsStore::SetNumber(const std::string& name, int32_t value) {
  const auto bits = static_cast<uint32_t>(value);
  const char bytes[4] = {static_cast<char>(bits), static_cast<char>(bits >> 8), static_cast<char>(bits >> 16),
                         static_cast<char>(bits >> 24)};
  return values_.write(name, ValueType::number, {bytes, sizeof bytes});
}

std::optional<std::string> SettingsStore::GetString(const std::string& name) const {
  std::optional<std::string> text = values_.read(name);
  if (text) text->resize(std::min(text->find('\0'), text->size()));
  return text;
}

bool SettingsStore::SetString(const std::string& name, const std::string& text) {
  return values_.write(name, ValueType::text, {text.c_str(), text.size() + 1});
}

bool SettingsStore::GetBool(const std::string& name, bool fallback) const {
  const std::optional<std::string> text = GetString(name);
  return text ? *text == "true" : fallback;
}

bool SettingsStore::SetBool(const std::string& name, bool value) {
  return SetString(name, value ? "true" : "false");
}

std::string InstallDir(const SettingsStore& machine, const SettingsStore& user) {
  std::optional<std::string> folder = machine.GetString("InstallDir");
  if (!folder || folder->empty()) folder = user.GetString("InstallDir");
  return folder.value_or("");
}

}  // namespace merivane
