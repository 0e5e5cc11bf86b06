#include "base/argument_list.h"

#include <algorithm>
#include <cstddef>

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

}  // namespace

std::vector<std::string> splitArguments(std::string_view commandLine) {
  std::vector<std::string> arguments;
  for (size_t at = 0;;) {
    while (at < commandLine.size() && isBlankOrTab(commandLine[at])) ++at;
    if (at == commandLine.size()) return arguments;
    arguments.push_back(readArgument(commandLine, at));
  }
}

std::string_view withoutProgramName(std::string_view commandLine) {
  const bool quoted = commandLine.substr(0, 1) == "\"";
  const size_t end = quoted ? commandLine.find('"', 1) : commandLine.find_first_of(" \t");
  commandLine.remove_prefix(end == std::string_view::npos ? commandLine.size() : end + (quoted ? 1 : 0));
  return commandLine;
}

}  // namespace merivane
