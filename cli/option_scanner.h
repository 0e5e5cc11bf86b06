#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace merivane {

enum class OptionArgument { none, required, optional };

/// One option a program knows: a name, a letter as its short form, or both; empty and 0 for none.
struct OptionName {
  std::string_view name;
  char letter = 0;
  OptionArgument argument = OptionArgument::none;
};

/// Reads a command line in the manner of getopt_long: options and operands in any order; "--name value",
/// "--name=value" and every prefix of a name that no other name shares; letters alone or joined, "-U 5" and
/// "-U5"; nothing but operands after "--". An optional argument has to be joined on. A lone "-" is an
/// operand.
class OptionScanner {
 public:
  /// What was found next. The texts are the command line's own.
  struct Item {
    int option = -1;         // index of the option's name; -1 for an operand
    std::string_view value;  // the operand, or the option's argument
    bool hasValue = false;
  };

  /// `names` and `arguments` have to outlive the scanner.
  OptionScanner(std::span<const OptionName> names, std::span<const std::string_view> arguments)
      : names_(names), arguments_(arguments) {}

  /// False at the end of the command line and at what cannot be understood; error() tells them apart.
  bool next(Item& item);

  /// What cannot be understood, as a message for the user; empty while all is well.
  const std::string& error() const { return error_; }

 private:
  bool longOption(std::string_view text, Item& item);
  bool shortOption(Item& item);
  int findName(std::string_view name);
  bool fail(std::string message);

  std::span<const OptionName> names_;
  std::span<const std::string_view> arguments_;
  size_t at_ = 0;
  std::string_view letters_;  // what is left of joined letters
  bool operandsOnly_ = false;
  std::string error_;
};

}  // namespace merivane
