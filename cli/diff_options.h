#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "display/line_numbers.h"
#include "display/sections.h"
#include "engine/compare_options.h"

namespace merivane {

enum class DiffFormat { text, summary, json, html, unified };
enum class ColourUse { automatic, always, never };

/// What a command line of merivane-diff asks for.
struct DiffOptions {
  DiffFormat format = DiffFormat::text;
  CompareOptions compare;
  ExportScope scope = ExportScope::everything;
  LineNumbers lineNumbers = LineNumbers::lines;
  ColourUse colour = ColourUse::automatic;
  bool showWhiteSpace = false;
  uint32_t tabStop = 4;       // 1 to 16
  uint32_t width = 0;         // columns of the text format; 0 leaves it to the terminal
  uint32_t contextLines = 3;  // of the unified format
  bool help = false;          // or version: nothing else counts then
  bool version = false;
  std::string output;    // empty for standard output
  std::string paths[2];  // "-" is standard input
};

constexpr uint32_t kMinimumWidth = 20;
constexpr uint32_t kMaximumWidth = 10000;

/// Reads a whole decimal number in [minimum, maximum]; false, and nothing changed, for anything else.
bool parseNumber(std::string_view text, uint32_t minimum, uint32_t maximum, uint32_t& number);

/// Reads the arguments behind the program's name. Answers what is wrong with them in one line without a line
/// end, empty when nothing is. Throws nothing but std::bad_alloc.
std::string parseOptions(std::span<const std::string_view> arguments, DiffOptions& options);

}  // namespace merivane
