#include "mergeview/diff_arrows.h"

#include <algorithm>

namespace merivane {
namespace {

/// Rows that a difference is followed beyond the view to find its ends. What lies farther off changes nothing
/// that can be seen: an edge that long is as good as upright.
constexpr uint32_t kFarRows = 1000;

}  // namespace

std::vector<DiffArrow> diffArrows(const DiffModel& model, const RowColours& colours,
                                  const GapWindow& window) {
  std::vector<DiffArrow> arrows;
  if (!colours.drawArrows) return arrows;
  const auto visible = static_cast<uint32_t>((window.height + window.lineHeight - 1) / window.lineHeight);
  const uint32_t end = std::min(model.rowCount(), window.topRow + visible);
  const auto yOf = [&](uint32_t row) {
    return static_cast<int32_t>(window.top + (int64_t{row} - window.topRow) * window.lineHeight);
  };
  const int32_t middle = (window.left + window.right) / 2;

  for (uint32_t row = window.topRow; row < end;) {
    const RowStatus status = model.status(row);
    uint32_t first = row;
    uint32_t last = row + 1;
    while (last < std::min(model.rowCount(), end + kFarRows) && model.status(last) == status) ++last;
    row = last;
    if (status == RowStatus::same) continue;
    while (first > 0 && first + kFarRows > window.topRow && model.status(first - 1) == status) --first;

    const int32_t top = yOf(first);
    const int32_t bottom = yOf(last);
    const int32_t centre = (top + bottom) / 2;
    DiffArrow arrow;
    arrow.colour = rowColour(colours, status, status == RowStatus::rightOnly ? 1 : 0);
    switch (fillerSide(status)) {
      case 1:
        arrow.corners = {{window.left, top},
                         {middle, top},
                         {window.right, centre},
                         {middle, bottom},
                         {window.left, bottom}};
        break;
      case 0:
        arrow.corners = {{window.right, top},
                         {middle, top},
                         {window.left, centre},
                         {middle, bottom},
                         {window.right, bottom}};
        break;
      default:
        arrow.corners = {
            {window.left, top}, {window.right, top}, {window.right, bottom}, {window.left, bottom}};
    }
    arrows.push_back(std::move(arrow));
  }
  return arrows;
}

}  // namespace merivane
