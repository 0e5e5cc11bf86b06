#pragma once

#include <cstdint>

namespace merivane {

/// Which number stands before a row: its own, its line's in the file, or none. The setting's values.
enum class LineNumbers : int32_t { rows = 0, lines = 1, none = 2 };

}  // namespace merivane
