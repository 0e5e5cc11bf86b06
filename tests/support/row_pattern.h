#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/diff_model.h"

namespace merivane {

constexpr uint32_t kPatternLine = 2;

/// A model from one character a row: '=' same, '<' left only, '>' right only, '!' changed. Every line is
/// kPatternLine bytes long. Numbered and counted.
DiffModel modelOf(std::string_view pattern);

/// The pattern of any model's rows.
std::string patternOf(const DiffModel& model);

}  // namespace merivane
