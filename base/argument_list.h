#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace merivane {

/// Splits a Windows command line, which does not hold the program's name, by the system's quoting rules:
/// blanks and tabs separate arguments outside double quotes; 2n backslashes and a quote are n backslashes and
/// a quoting mark, 2n + 1 are n backslashes and a plain quote; two quotes inside quotes are a plain one.
std::vector<std::string> splitArguments(std::string_view commandLine);

/// What is left of a whole command line without the program's name, in which a backslash is only itself.
std::string_view withoutProgramName(std::string_view commandLine);

}  // namespace merivane
