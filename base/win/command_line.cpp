#include "base/win/command_line.h"

#include <windows.h>

#include "base/argument_list.h"
#include "base/win/wide.h"

namespace merivane {

std::vector<std::string> commandLineArguments() {
  const std::string line = utf8(GetCommandLineW());
  std::vector<std::string> arguments = splitArguments(withoutProgramName(line));
  for (std::string& argument : arguments) {
    if (argument == "/dev/null") argument = "nul";
  }
  return arguments;
}

}  // namespace merivane
