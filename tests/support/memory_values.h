#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/names.h"
#include "shell/settings_store.h"

namespace merivane {

/// A key in memory, open to tests.
class MemoryValues final : public ValueStore {
 public:
  struct Value {
    ValueType type;
    std::string bytes;
    bool operator==(const Value&) const = default;
  };

  std::optional<std::string> read(const std::string& name) const override {
    const auto found = values.find(folded(name));
    if (found == values.end()) return std::nullopt;
    return found->second.bytes;
  }

  bool write(const std::string& name, ValueType type, std::string_view bytes) override {
    if (readOnly) return false;
    values[folded(name)] = {type, std::string(bytes)};
    return true;
  }

  bool writable() const override { return !readOnly; }

  std::map<std::string, Value> values;  // by the folded name
  bool readOnly = false;

 private:
  static std::string folded(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), lowerCase);
    return name;
  }
};

}  // namespace merivane
