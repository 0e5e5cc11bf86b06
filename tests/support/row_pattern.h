#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/diff_model.h"

namespace merivane {

constexpr std::string_view kRowStatuses = "=<>!";

/// A numbered and counted model from one character a row: '=' same, '<' left only, '>' right only, '!'
/// changed. Every line is two bytes long.
inline DiffModel modelOf(std::string_view pattern) {
  DiffModel model;
  uint32_t position[2] = {0, 0};
  for (const char c : pattern) {
    const auto status = static_cast<RowStatus>(kRowStatuses.find(c));
    model.addRow(status, position[0], position[1]);
    for (const int side : {0, 1}) position[side] += fillerSide(status) == side ? 0 : 2;
  }
  model.numberLines();
  model.countDifferences();
  return model;
}

/// The pattern of any model's rows.
inline std::string patternOf(const DiffModel& model) {
  std::string pattern(model.rowCount(), ' ');
  for (uint32_t row = 0; row < model.rowCount(); ++row)
    pattern[row] = kRowStatuses[static_cast<size_t>(model.status(row))];
  return pattern;
}

}  // namespace merivane
