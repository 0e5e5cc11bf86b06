#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/byte_sink.h"
#include "base/file_system.h"
#include "output/text_cell.h"

namespace merivane {

/// What the terminal at standard output is and can do.
struct TerminalFacts {
  bool isTerminal = false;
  bool showsColours = false;
  TerminalBytes bytes = {};
  uint32_t width = 0;      // in columns; 0 when there is no telling
  bool errorsToo = false;  // standard error is a terminal, which need not be the same
};

/// All that merivane-diff knows of the world around it.
struct DiffEnvironment {
  FileSystem& files;
  InputFile& standardInput;
  OutputFile& standardOutput;
  ByteSink& standardError;
  std::function<TerminalFacts()> terminal;  // asked before anything is written for one
  const char* columns = nullptr;            // the variables COLUMNS and NO_COLOR; null when not set
  const char* noColour = nullptr;
  std::function<std::string()> time;  // date and time as an HTML page shows them
  SystemError brokenPipe = 0;         // the error of writing what nobody reads any more; it is not reported
};

constexpr int kExitNoDifference = 0;
constexpr int kExitDifferences = 1;
constexpr int kExitTrouble = 2;

/// Runs merivane-diff with the arguments after the program's name and returns its exit status. Never throws;
/// standard error says what went wrong.
int runDiff(std::span<const std::string_view> arguments, const DiffEnvironment& environment);

}  // namespace merivane
