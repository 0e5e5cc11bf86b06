#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "engine/compare_options.h"

namespace merivane {

/// A text's lines. Line i holds the bytes [starts[i], starts[i + 1]), its LF included; two lines are equal
/// under the options exactly when their keys are. No line follows a final LF, and an empty text has none.
struct LineTable {
  std::vector<uint32_t> keys;
  std::vector<uint32_t> starts;  // one more than there are lines: the last is the end of the text

  uint32_t lineCount() const { return static_cast<uint32_t>(keys.size()); }
};

/// The key of one line, `line` up to and including its LF if it has one: a polynomial over the bytes as
/// signed values, base 127, modulo 2^32. A last line without LF never has the key of the same line with
/// one. Different lines with one key are accepted as equal.
uint32_t lineKey(std::string_view line, const CompareOptions& options);

/// Tables a text of at most ByteArray::maxSize bytes: 8 bytes of memory a line. Throws std::bad_alloc. When
/// the flag is raised meanwhile the table means nothing; a null flag never aborts.
LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort = nullptr);

}  // namespace merivane
