#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace merivane {

/// Where the caret stands: "Virt 1, Ln 1, Col 1". `row` and `column` are zero-based; `lineNumber` is the
/// model's, and a filler's kNoLine shows as 0.
std::string caretText(uint32_t row, uint32_t lineNumber, uint32_t column);

/// The right edges of the status bar's four parts in a window of this width in pixels, the size grip's
/// taken off while the window is not maximized, on a screen of so many pixels an inch. The second part holds
/// the caret's text.
std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution);

}  // namespace merivane
