#pragma once

#include <string>

namespace merivane {

/// Whether there can be a printer for tests here: Wine hands what is printed to a command outside.
bool canInstallTestPrinter();

/// Installs a PostScript printer with A4 paper as the default one. What is printed on it from now on goes to
/// the command's input. False when that fails.
bool installTestPrinter(const std::string& command);

/// A file's name as the system outside Wine has it, quoted for a command.
std::string outsideName(const std::string& name);

}  // namespace merivane
