#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "shell/settings_store.h"

namespace merivane {

/// A key in memory.
class MemoryValues final : public ValueStore {
 public:
  std::optional<std::string> read(const std::string& name) const override {
    const auto found = values.find(name);
    return found == values.end() ? std::nullopt : std::optional(found->second.second);
  }
  bool write(const std::string& name, ValueType type, std::string_view bytes) override {
    if (!readOnly) values[name] = {type, std::string(bytes)};
    return !readOnly;
  }
  bool writable() const override { return !readOnly; }

  std::map<std::string, std::pair<ValueType, std::string>> values;
  bool readOnly = false;
};

}  // namespace merivane
