#pragma once

#include <cstdint>
#include <vector>

namespace merivane {

/// The pictures on the program's buttons.
enum class IconId {
  newTextWindow,
  newFolderWindow,
  save,
  saveAll,
  undo,
  redo,
  cut,
  copy,
  paste,
  find,
  prevDiff,
  nextDiff,
  copyLeft,
  copyRight,
  deleteDiff,
  refresh,
  switchSides,
  options,
  print,
  browse,
  upOneFolder,
};
inline constexpr int kIconCount = static_cast<int>(IconId::upOneFolder) + 1;

/// Draws an icon `size` pixels wide and high: rows from the top, each pixel 0xAARRGGBB with its colours
/// already multiplied by the alpha. A greyed icon is the same in one quiet colour.
std::vector<uint32_t> drawIcon(IconId icon, int size, bool greyed = false);

}  // namespace merivane
