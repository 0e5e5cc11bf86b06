#include "cli/option_scanner.h"

#include <utility>

namespace merivane {
namespace {

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

}  // namespace

bool OptionScanner::fail(std::string message) {
  error_ = std::move(message);
  return false;
}

bool OptionScanner::next(Item& item) {
  item = {};
  if (!letters_.empty()) return shortOption(item);
  if (at_ == arguments_.size()) return false;
  const std::string_view text = arguments_[at_++];
  if (operandsOnly_ || text.size() < 2 || text[0] != '-') {
    item.value = text;
    item.hasValue = true;
    return true;
  }
  if (text == "--") {
    operandsOnly_ = true;
    return next(item);
  }
  if (text[1] == '-') return longOption(text.substr(2), item);
  letters_ = text.substr(1);
  return shortOption(item);
}

int OptionScanner::findName(std::string_view name) {
  int found = -1;
  std::string candidates;
  for (size_t i = 0; i < names_.size(); ++i) {
    if (names_[i].name.empty() || !names_[i].name.starts_with(name)) continue;
    if (names_[i].name == name) return static_cast<int>(i);
    candidates += " " + quoted("--" + std::string(names_[i].name));
    found = found == -1 ? static_cast<int>(i) : -2;
  }
  const std::string spelled = quoted("--" + std::string(name));
  if (found == -1) fail("unrecognized option " + spelled);
  if (found == -2) fail("option " + spelled + " is ambiguous; possibilities:" + candidates);
  return found;
}

bool OptionScanner::longOption(std::string_view text, Item& item) {
  const size_t equals = text.find('=');
  item.option = findName(text.substr(0, equals));
  if (item.option < 0) return false;
  const OptionName& option = names_[static_cast<size_t>(item.option)];
  const std::string spelled = quoted("--" + std::string(option.name));
  if (equals != std::string_view::npos) {
    if (option.argument == OptionArgument::none)
      return fail("option " + spelled + " doesn't allow an argument");
    item.value = text.substr(equals + 1);
    item.hasValue = true;
  } else if (option.argument == OptionArgument::required) {
    if (at_ == arguments_.size()) return fail("option " + spelled + " requires an argument");
    item.value = arguments_[at_++];
    item.hasValue = true;
  }
  return true;
}

bool OptionScanner::shortOption(Item& item) {
  const char letter = letters_[0];
  letters_.remove_prefix(1);
  for (size_t i = 0; i < names_.size() && item.option < 0; ++i) {
    if (names_[i].letter == letter) item.option = static_cast<int>(i);
  }
  const std::string spelled = quoted({&letter, 1});
  if (item.option < 0) return fail("invalid option -- " + spelled);
  const OptionArgument argument = names_[static_cast<size_t>(item.option)].argument;
  if (argument == OptionArgument::none) return true;
  if (!letters_.empty()) {
    item.value = std::exchange(letters_, {});
    item.hasValue = true;
  } else if (argument == OptionArgument::required) {
    if (at_ == arguments_.size()) return fail("option requires an argument -- " + spelled);
    item.value = arguments_[at_++];
    item.hasValue = true;
  }
  return true;
}

}  // namespace merivane
