#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/byte_sink.h"
#include "base/file_system.h"
#include "display/row_look.h"
#include "display/sections.h"
#include "engine/compare_options.h"
#include "engine/comparison.h"
#include "output/text_cell.h"

namespace merivane {

/// One file of a comparison that is written.
struct WrittenSide {
  std::string_view path;
  std::string_view text;  // the model's positions are in it
  LineEndKind lineEndKind = LineEndKind::crLf;
  TextEncoding encoding = TextEncoding::ascii;
};

/// A comparison of two files as a writer gets it. It owns nothing: what it refers to outlives the writing.
struct WrittenComparison {
  const DiffModel& model;
  WrittenSide sides[2];
  CompareOptions compare;  // the model was made with these
};

/// A comparison of files with their names, for the writers.
WrittenComparison writtenComparison(const FileComparison& comparison, const std::string (&paths)[2],
                                    const CompareOptions& compare);

/// How a comparison is written. A writer passes over what has no meaning in its format.
struct WriterOptions {
  RowLook look;
  ExportScope scope = ExportScope::everything;
  uint32_t contextLines = 3;  // of a patch
  std::string time;           // date and time as an HTML page shows them
  // Of text for a terminal:
  uint32_t width = 130;  // columns of a whole line
  bool coloured = false;
  TerminalBytes terminal;
};

/// Writes a comparison. Holds no more than a row of it in memory. Throws nothing but std::bad_alloc.
using Writer = void(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink);

/// Aligned rows in two columns for a terminal: a heading with the paths, the
/// rows of the scope with a mark between their sides ("<" left only, ">" right only, "|" changed), and the
/// summary.
Writer writeText;

/// The summary alone.
Writer writeSummary;

/// One JSON object, with a line for every row.
Writer writeJson;

/// One page of two columns with CR LF line ends. With a side in UTF-8 it is UTF-8 and says so, the other
/// side's single bytes being characters of the system's code page; else it is those bytes.
Writer writeHtml;

/// The patch that makes the left file the right one, or nothing when no row differs. Hunks are merged as
/// other tools do: when no more than twice the context lies between two differences. What a comparison that
/// ignores something calls equal is context. Otherwise rows of status same whose bytes differ, lines of one
/// key, are written as differences, so that the patch gives exactly the right file.
Writer writeUnified;

/// One format of the output.
struct OutputFormat {
  std::string_view name;
  Writer* write;
  bool ofFileBytes = false;  // whether it takes a comparison of the files' own bytes (file_bytes.h)
};

/// Every format; the first is the default of the command line.
std::span<const OutputFormat> outputFormats();

/// The format of a name; null for none.
const OutputFormat* findFormat(std::string_view name);

/// Makes what `write` writes the whole contents of a file just created, and commits it. Returns 0 or the
/// error, notEnoughStorage() when memory ran out.
SystemError writeToFile(OutputFile& file, const std::function<void(ByteSink&)>& write);

/// The same for what a writer writes.
SystemError writeToFile(OutputFile& file, Writer& write, const WrittenComparison& comparison,
                        const WriterOptions& options);

/// The same for the file at a path.
SystemError exportComparison(FileSystem& files, const std::string& path, Writer& write,
                             const WrittenComparison& comparison, const WriterOptions& options);

}  // namespace merivane
