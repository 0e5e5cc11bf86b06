#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/byte_sink.h"
#include "base/file_system.h"

namespace merivane {

/// What the terminal behind standard output is and can do.
struct TerminalFacts {
  bool isTerminal = false;
  bool showsColours = false;
  bool utf8 = false;   // whether bytes written there are taken as UTF-8
  uint32_t width = 0;  // in columns; 0 when there is no telling
};

/// All that merivane-diff has of the world around it.
struct DiffEnvironment {
  FileSystem& files;
  InputFile& standardInput;
  OutputFile& standardOutput;
  ByteSink& standardError;
  std::function<TerminalFacts()> terminal;  // asked for by what is laid out for one
  const char* columns = nullptr;            // the variables COLUMNS and NO_COLOR; null when not set
  const char* noColour = nullptr;
  std::function<std::string()> time;  // date and time as an HTML page shows them
  SystemError brokenPipe = 0;         // how writing fails when nobody reads any more: no news for the user
};

constexpr int kExitNoDifference = 0;
constexpr int kExitDifferences = 1;
constexpr int kExitTrouble = 2;

/// Runs merivane-diff with the arguments behind the program's name and answers its exit status. Never throws;
/// what went wrong stands on standard error.
int runDiff(std::span<const std::string_view> arguments, const DiffEnvironment& environment);

}  // namespace merivane
