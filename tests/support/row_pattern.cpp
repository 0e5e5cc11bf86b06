#include "tests/support/row_pattern.h"

namespace merivane {

DiffModel modelOf(std::string_view pattern) {
  DiffModel model;
  uint32_t position[2] = {0, 0};
  for (const char c : pattern) {
    const auto status = static_cast<RowStatus>(std::string_view("=<>!").find(c));
    model.addRow(status, position[0], position[1]);
    for (const int side : {0, 1}) position[side] += fillerSide(status) == side ? 0 : kPatternLine;
  }
  model.numberLines();
  model.countDifferences();
  return model;
}

}  // namespace merivane
