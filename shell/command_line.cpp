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

}  // namespace

StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files) {
  std::vector<std::string> paths;
  std::vector<FileKind> kinds;
  std::optional<std::string> unknownOption;
  for (const std::string& given : arguments) {
    const std::string argument = given == "/dev/null" ? "nul" : given;  // as version control names no file
    if (argument == "/?" || argument == "-?") {
      return {StartAction::Kind::help, WindowKind::text, {}, text(TextId::commandLineHelp)};
    }
    const FileKind kind = argument.empty() ? FileKind::none : files.kind(argument);
    // It stands for a file that is not there.
    const bool isNothing = kind == FileKind::other && equalNames(argument, "nul", false);
    const bool exists = kind == FileKind::file || kind == FileKind::folder || isNothing;
    if (!exists && startsAsOption(argument)) {
      if (!unknownOption) unknownOption = argument;
      continue;
    }
    paths.push_back(argument);
    kinds.push_back(isNothing ? FileKind::file : exists ? kind : FileKind::none);
  }
  if (unknownOption) return refusal(formatMessage(TextId::unknownOption, {*unknownOption}));
  if (paths.size() > 2) return refusal(text(TextId::tooManyPaths));
  StartAction action;
  for (size_t i = 0; i < paths.size(); ++i)
    action.paths[i] = paths[i].empty() ? "" : files.absolute(paths[i]);
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
