#pragma once

#include <cstdint>
#include <vector>

namespace merivane {

/// The pictures on the program's buttons.
enum class IconId {
#define ICON(name, ...) name,
#include "resources/icons.inc"
};
inline constexpr int kIconCount = 0
#define ICON(...) +1
#include "resources/icons.inc"
    ;

/// Draws an icon `size` pixels wide and high: rows from the top, each pixel 0xAARRGGBB with its colours
/// already multiplied by the alpha. A greyed icon is the same in one quiet colour.
std::vector<uint32_t> drawIcon(IconId icon, int size, bool greyed = false);

}  // namespace merivane
