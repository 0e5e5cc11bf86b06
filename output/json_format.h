#pragma once

#include <string>

#include "base/byte_sink.h"
#include "engine/comparison.h"

namespace merivane {

/// Writes a comparison as one JSON object, a line for every row. Nothing but ASCII: a byte of a path from
/// 0x80 on is the escape of the code point of the same number. Holds no more than a row in memory. Throws
/// nothing but std::bad_alloc.
void writeJson(const FileComparison& comparison, const std::string (&paths)[2], ByteSink& sink);

}  // namespace merivane
