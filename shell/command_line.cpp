#include "shell/command_line.h"

#include <optional>

#include "base/message_format.h"
#include "base/texts.h"

namespace merivane {
namespace {

bool isBlankOrTab(char c) { return c == ' ' || c == '\t'; }

/// Reads one argument from `at` on, up to the blank that ends it.
std::string readArgument(std::string_view line, size_t& at) {
  std::string argument;
  bool quoted = false;
  while (at < line.size() && (quoted || !isBlankOrTab(line[at]))) {
    size_t backslashes = 0;
    while (at < line.size() && line[at] == '\\') ++backslashes, ++at;
    const bool atQuote = at < line.size() && line[at] == '"';
    argument.append(atQuote ? backslashes / 2 : backslashes, '\\');
    if (!atQuote) {
      if (backslashes == 0) argument += line[at++];
      continue;
    }
    const bool doubled = quoted && at + 1 < line.size() && line[at + 1] == '"';
    if (backslashes % 2 != 0) {
      argument += '"';
    } else if (doubled) {
      argument += '"';
      ++at;
    } else {
      quoted = !quoted;
    }
    ++at;
  }
  return argument;
}

StartAction message(const std::string& text) { return {StartAction::Kind::message, {}, text}; }

/// What is wrong, and how it is done right.
StartAction refusal(const std::string& wrong) {
  return message(wrong + "\n\n" + text(TextId::commandLineHelp));
}

bool startsAsOption(const std::string& argument) {
  return !argument.empty() && (argument[0] == '/' || argument[0] == '-');
}

}  // namespace

std::vector<std::string> splitArguments(std::string_view commandLine) {
  std::vector<std::string> arguments;
  for (size_t at = 0;;) {
    while (at < commandLine.size() && isBlankOrTab(commandLine[at])) ++at;
    if (at == commandLine.size()) return arguments;
    arguments.push_back(readArgument(commandLine, at));
  }
}

StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files,
                          const std::function<std::string(const std::string&)>& makeAbsolute) {
  std::vector<std::string> paths;
  std::vector<FileKind> kinds;
  std::optional<std::string> unknownOption;
  for (const std::string& argument : arguments) {
    if (argument == "/?" || argument == "-?") return message(text(TextId::commandLineHelp));
    const FileKind kind = argument.empty() ? FileKind::none : files.kind(argument);
    const bool exists = kind == FileKind::file || kind == FileKind::folder;
    if (!exists && startsAsOption(argument)) {
      if (!unknownOption) unknownOption = argument;
      continue;
    }
    paths.push_back(argument);
    kinds.push_back(exists ? kind : FileKind::none);
  }
  if (unknownOption) return refusal(formatMessage(TextId::unknownOption, {*unknownOption}));
  if (paths.size() > 2) return refusal(text(TextId::tooManyPaths));
  for (size_t i = 0; i < paths.size(); ++i) {
    if (kinds[i] == FileKind::none) return message(formatMessage(TextId::pathNotFound, {paths[i]}));
  }
  if (paths.empty()) return {};
  if (paths.size() == 2 && kinds[0] != kinds[1]) {
    return refusal(formatMessage(TextId::fileAndFolder, {paths[0], paths[1]}));
  }
  if (kinds[0] == FileKind::folder) return refusal(text(TextId::foldersNotYet));

  StartAction action;
  action.kind = paths.size() == 1 ? StartAction::Kind::oneFile : StartAction::Kind::twoFiles;
  for (size_t i = 0; i < paths.size(); ++i) action.paths[i] = makeAbsolute(paths[i]);
  return action;
}

}  // namespace merivane
