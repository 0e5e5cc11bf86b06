#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

constexpr std::string_view kStatuses = "=<>!";

}  // namespace

DiffModel modelOf(std::string_view pattern) {
  DiffModel model;
  uint32_t position[2] = {0, 0};
  for (const char c : pattern) {
    const auto status = static_cast<RowStatus>(kStatuses.find(c));
    model.addRow(status, position[0], position[1]);
    for (const int side : {0, 1}) position[side] += fillerSide(status) == side ? 0 : kPatternLine;
  }
  model.numberLines();
  model.countDifferences();
  return model;
}

std::string patternOf(const DiffModel& model) {
  std::string pattern;
  for (uint32_t row = 0; row < model.rowCount(); ++row)
    pattern += kStatuses[static_cast<size_t>(model.status(row))];
  return pattern;
}

}  // namespace merivane
