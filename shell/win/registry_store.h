#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "shell/settings_store.h"

namespace merivane {

/// A key of the registry by its root, which must be a predefined one, and its path. Each call opens the key,
/// does one thing and closes it again.
class RegistryKey final : public ValueStore {
 public:
  RegistryKey(HKEY root, std::string path) : root_(root), path_(std::move(path)) {}

  std::optional<std::string> read(const std::string& name) const override;
  bool write(const std::string& name, ValueType type, std::string_view bytes) override;
  bool writable() const override;

 private:
  HKEY root_;
  std::string path_;
};

}  // namespace merivane
