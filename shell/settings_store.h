#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace merivane {

/// How a stored value is marked. Reading never looks at it.
enum class ValueType { number, text };

/// The named values of one key: bytes in, bytes out. Names are told apart without regard to case.
class ValueStore {
 public:
  virtual ~ValueStore() = default;

  /// All bytes of a value, whatever its type; none when the key or the value cannot be read.
  virtual std::optional<std::string> read(const std::string& name) const = 0;

  /// Writes one value, after creating the key if there is none. Returns whether that was done.
  virtual bool write(const std::string& name, ValueType type, std::string_view bytes) = 0;

  /// Whether the key can be opened for writing; changes nothing.
  virtual bool writable() const = 0;
};

/// The rules by which numbers, texts and booleans are kept in a key. Failures are silent: a read that fails
/// gives the default, a write returns false. Nothing is cached.
class SettingsStore {
 public:
  /// `values` must outlive the store.
  explicit SettingsStore(ValueStore& values) : values_(values) {}

  /// The default when the value is absent or larger than 4 bytes; missing high bytes count as zero.
  int32_t GetNumber(const std::string& name, int32_t fallback) const;
  bool SetNumber(const std::string& name, int32_t value);

  /// The bytes before the terminating NUL, or all of them; none when the value is absent.
  std::optional<std::string> GetString(const std::string& name) const;
  bool SetString(const std::string& name, const std::string& text);

  /// Kept as "true" and "false". Any other text that is present is false, not the default.
  bool GetBool(const std::string& name, bool fallback) const;
  bool SetBool(const std::string& name, bool value);

  bool KeyWritable() const { return values_.writable(); }

 private:
  ValueStore& values_;
};

/// Where every setting lies, below the current user's root.
inline constexpr const char* kSettingsKey = "SOFTWARE\\Brackenfold\\Merivane\\Settings";

/// The program's own key, written by the installer.
inline constexpr const char* kProgramKey = "SOFTWARE\\Brackenfold\\Merivane";

/// The folder of the installed program: what the program's key of the machine says, and only where that is
/// absent or empty what the user's says. Empty when neither tells.
std::string InstallDir(const SettingsStore& machine, const SettingsStore& user);

}  // namespace merivane
