#pragma once

#include <string>
#include <vector>

namespace merivane {

/// The arguments that the program was started with, in UTF-8. "/dev/null", which tools from other systems
/// pass for a file that is not there, is "nul".
std::vector<std::string> commandLineArguments();

}  // namespace merivane
