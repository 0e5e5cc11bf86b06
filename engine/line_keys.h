#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "engine/compare_options.h"

namespace merivane {

/// A text's lines. Line i holds the bytes [starts[i], starts[i + 1]), its LF included. No line comes after a
/// final LF, and an empty text has none.
///
/// Two lines count as equal if and only if their keys are. A key is a polynomial over the bytes of the line,
/// as far as they count under the options, and its LF: as signed values, to the base 127, modulo 2^32. So
/// different lines may have the same key; a last line without LF differs from the same line with one.
struct LineTable {
  std::vector<uint32_t> keys;
  std::vector<uint32_t> starts;  // one more than there are lines: the last is the end of the text
};

/// Makes the table of a text of at most ByteArray::maxSize bytes. Memory: 8 bytes per line. Throws
/// std::bad_alloc. If the flag is raised meanwhile, the table is undefined; a null flag never aborts.
LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort = nullptr);

}  // namespace merivane
