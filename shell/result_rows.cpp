#include "shell/result_rows.h"

namespace merivane {
namespace {

enum Mark : uint8_t { compared = 1, copiedToOld = 2, copiedToNew = 3 };  // above: deleted

}  // namespace

std::string spokenRow(const ResultRow& row) {
  std::string text = row.name;
  if (!row.description.empty()) text += ' ' + row.description;
  if (!row.operation.empty()) text += ", " + row.operation;
  return text;
}

MarkColours markColours(const RowColours& rows, Colour text, uint8_t operation) {
  switch (operation) {
    case compared:
      return {rows.changed, text};
    case copiedToOld:
      return {rows.left, text};
    case copiedToNew:
      return {rows.right, text};
    default:
      return {rows.empty, text};
  }
}

std::span<const MarkPoint> markOutline(uint8_t operation) {
  static constexpr MarkPoint tick[] = {{0, 5}, {2, 3}, {4, 5}, {8, 0}, {10, 2}, {4, 9}};
  static constexpr MarkPoint leftArrow[] = {{0, 5}, {5, 0}, {5, 3}, {10, 3}, {10, 7}, {5, 7}, {5, 10}};
  static constexpr MarkPoint rightArrow[] = {{10, 5}, {5, 0}, {5, 3}, {0, 3}, {0, 7}, {5, 7}, {5, 10}};
  static constexpr MarkPoint cross[] = {{0, 2},  {2, 0},  {5, 3}, {8, 0},  {10, 2}, {7, 5},
                                        {10, 8}, {8, 10}, {5, 7}, {2, 10}, {0, 8},  {3, 5}};
  switch (operation) {
    case 0:
      return {};
    case compared:
      return tick;
    case copiedToOld:
      return leftArrow;
    case copiedToNew:
      return rightArrow;
    default:
      return cross;
  }
}

}  // namespace merivane
