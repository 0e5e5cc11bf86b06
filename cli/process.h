#pragma once

#include <string>
#include <vector>

namespace merivane {

/// From here on the process keeps the memory that it frees, up to some megabytes, rather than giving it back
/// to the system and asking for it again. For a process that does one thing and ends.
void keepFreedMemory();

/// From here on Ctrl+C, a closed terminal and the signals that ask the process to end remove its unfinished
/// files before they end it. A signal that was ignored still is.
void removeUnfinishedFilesOnSignals();

/// The words of the command line after the program's name, in UTF-8 on Windows, as they are elsewhere.
/// `count` and `arguments` are main()'s.
std::vector<std::string> commandLineArguments(int count, char** arguments);

}  // namespace merivane
