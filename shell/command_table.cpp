#include "shell/command_table.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace merivane {
namespace {

// The words of the rows.

constexpr unsigned text = 1U << static_cast<unsigned>(WindowKind::text);
constexpr unsigned folder = 1U << static_cast<unsigned>(WindowKind::folder);
constexpr unsigned both = text | folder;

constexpr std::nullopt_t noButton = std::nullopt;
constexpr CommandButton besideBox(IconId icon) { return {icon}; }
constexpr CommandButton onBar(int place, IconId icon) { return {icon, place}; }

constexpr bool always = true;

constexpr CommandState noMark = {};
constexpr CommandState tick(bool on) { return {true, on, false}; }
constexpr CommandState bullet(bool on) { return {true, on, true}; }

constexpr CommandRow rows[] = {
#define COMMAND(name, number, windows, button, isEnabled, mark, help)              \
  {Command::name, windows, button,                                                 \
   []([[maybe_unused]] const WindowFacts& w, [[maybe_unused]] const Settings& s) { \
     CommandState state = mark;                                                    \
     state.enabled = isEnabled;                                                    \
     return state;                                                                 \
   },                                                                              \
   help},
#include "resources/commands.inc"
};

static_assert(std::ranges::is_sorted(rows, {}, &CommandRow::id), "findCommand() searches by halves");

/// A key as the resource compiler reads it.
struct KeyRow {
  Command command;
  std::string_view key;
  std::string_view modifiers;
};

constexpr KeyRow keys[] = {
#define KEY(name, windows, key, ...) {Command::name, #key, #__VA_ARGS__},
#include "resources/commands.inc"
};

std::string keyName(std::string_view key) {
  constexpr std::pair<std::string_view, const char*> names[] = {
      {"VK_BACK", "Backspace"}, {"VK_DELETE", "Del"}, {"VK_LEFT", "Left"},
      {"VK_RIGHT", "Right"},    {"VK_OEM_4", "["},    {"VK_OEM_6", "]"}};
  for (const auto& [code, name] : names) {
    if (key == code) return name;
  }
  key.remove_prefix(key.starts_with('"') ? 1 : 3);  // "S", VK_F3
  if (key.ends_with('"')) key.remove_suffix(1);
  return std::string(key);
}

}  // namespace

std::span<const CommandRow> commandRows() { return rows; }

const CommandRow* findCommand(Command id) {
  const auto found = std::ranges::lower_bound(rows, id, {}, &CommandRow::id);
  return found != std::end(rows) && found->id == id ? found : nullptr;
}

std::vector<const CommandRow*> toolBarRows(WindowKind kind) {
  std::vector<const CommandRow*> result;
  for (const CommandRow& row : rows) {
    if (row.livesIn(kind) && row.button && row.button->place != 0) result.push_back(&row);
  }
  std::ranges::sort(result, {}, [](const CommandRow* row) { return row->button->place; });
  return result;
}

std::string commandKey(Command id) {
  const auto first = std::ranges::find(keys, id, &KeyRow::command);
  if (first == std::end(keys)) return "";
  std::string result;
  for (const auto& [modifier, name] :
       {std::pair("CONTROL", "Ctrl+"), std::pair("ALT", "Alt+"), std::pair("SHIFT", "Shift+")}) {
    if (first->modifiers.find(modifier) != std::string_view::npos) result += name;
  }
  return result + keyName(first->key);
}

const char* commandHelp(Command id) {
  const CommandRow* row = findCommand(id);
  return row != nullptr ? row->help : "";
}

std::string commandTip(Command id) {
  const std::string key = commandKey(id);
  const std::string help = commandHelp(id);
  return key.empty() ? help : help + " (" + key + ")";
}

}  // namespace merivane
