#include "shell/command_line.h"

#include <algorithm>
#include <optional>

#include "base/message_format.h"
#include "base/names.h"
#include "base/texts.h"

namespace merivane {
namespace {

/// What is wrong, and how it is done right.
StartAction refusal(const std::string& wrong) {
  return {StartAction::Kind::refusal, WindowKind::text, {}, wrong + "\n\n" + text(TextId::commandLineHelp)};
}

bool startsAsOption(const std::string& argument) {
  return !argument.empty() && (argument[0] == '/' || argument[0] == '-');
}

/// The side that "/title2" is about, if the option "title" is meant.
std::optional<int> sideOfOption(const std::string& argument, const std::string& option) {
  const std::string name = argument.substr(argument.starts_with("--") ? 2 : 1);
  for (const int side : {0, 1}) {
    if (equalNames(name, option + std::to_string(side + 1), false)) return side;
  }
  return std::nullopt;
}

}  // namespace

StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files) {
  std::vector<std::string> paths;
  std::vector<FileKind> kinds;
  std::optional<std::string> unknownOption;
  StartAction action;
  for (auto next = arguments.begin(); next != arguments.end();) {
    const std::string& given = *next++;
    const std::string argument = given == "/dev/null" ? "nul" : given;  // as version control names no file
    if (argument == "/?" || argument == "-?") {
      return {StartAction::Kind::help, WindowKind::text, {}, text(TextId::commandLineHelp)};
    }
    const FileKind kind = argument.empty() ? FileKind::none : files.kind(argument);
    // It stands for a file that is not there.
    const bool isNothing = kind == FileKind::other && equalNames(argument, "nul", false);
    const bool exists = kind == FileKind::file || kind == FileKind::folder || isNothing;
    if (!exists && startsAsOption(argument)) {
      if (const auto titled = sideOfOption(argument, "title")) {
        if (next == arguments.end()) return refusal(formatMessage(TextId::optionNeedsName, {argument}));
        action.sides[*titled].title = *next++;
      } else if (const auto kept = sideOfOption(argument, "readonly")) {
        action.sides[*kept].readOnly = true;
      } else if (!unknownOption) {
        unknownOption = argument;
      }
      continue;
    }
    paths.push_back(argument);
    kinds.push_back(isNothing ? FileKind::file : exists ? kind : FileKind::none);
  }
  if (unknownOption) return refusal(formatMessage(TextId::unknownOption, {*unknownOption}));
  if (paths.size() > 2) return refusal(text(TextId::tooManyPaths));
  for (size_t i = 0; i < paths.size(); ++i)
    action.sides[i].path = paths[i].empty() ? "" : files.absolute(paths[i]);
  const bool folders = std::find(kinds.begin(), kinds.end(), FileKind::folder) != kinds.end();
  if (folders) action.window = WindowKind::folder;
  for (size_t i = 0; i < paths.size(); ++i) {
    if (kinds[i] != FileKind::none) continue;
    action.kind = StartAction::Kind::notFound;
    action.message = formatMessage(TextId::pathNotFound, {paths[i]});
    return action;
  }
  if (paths.empty()) return action;
  if (paths.size() == 2 && kinds[0] != kinds[1]) {
    return refusal(formatMessage(TextId::fileAndFolder, {paths[0], paths[1]}));
  }
  action.kind = paths.size() == 1 ? StartAction::Kind::onePath : StartAction::Kind::twoPaths;
  return action;
}

}  // namespace merivane
