#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/compare_options.h"
#include "folders/folder_options.h"
#include "output/writers.h"

namespace merivane {

enum class ColourUse { automatic, always, never };

/// What a command line of merivane-diff asks for.
struct DiffOptions {
  DiffOptions() {
    writing.look.lineNumbers = LineNumbers::lines;
    writing.width = 0;
  }

  const OutputFormat* format = &outputFormats().front();
  CompareOptions compare;
  FolderOptions folders;          // all but the text options, which are those above
  std::optional<uint32_t> shows;  // of folders: a bit a FolderCategory; not set for the usual ones
  WriterOptions writing;          // a width of 0 leaves it to the terminal
  ColourUse colour = ColourUse::automatic;
  bool help = false;  // or version: nothing else counts then
  bool version = false;
  std::string output;    // empty for standard output
  std::string paths[2];  // both files or both folders; "-" is standard input
};

/// What --help and --version print, line ends included.
extern const char* const kUsageText;
extern const char* const kVersionText;

/// Follows the message about a command line that cannot be understood.
extern const char* const kUsageHint;

constexpr uint32_t kMinWidth = 20;
constexpr uint32_t kMaxWidth = 10000;

/// Reads a whole decimal number in [min, max]; false, and nothing changed, for anything else.
bool parseNumber(std::string_view text, uint32_t min, uint32_t max, uint32_t& number);

/// Reads the arguments after the program's name. Returns what is wrong with them in one line without a line
/// end, empty when nothing is. Throws nothing but std::bad_alloc.
std::string parseOptions(std::span<const std::string_view> arguments, DiffOptions& options);

}  // namespace merivane
