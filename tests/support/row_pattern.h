#pragma once

#include <cstdint>
#include <string_view>

#include "engine/diff_model.h"

namespace merivane {

constexpr uint32_t kPatternLine = 2;

/// A model from one character a row: '=' same, '<' left only, '>' right only, '!' changed. Every line is
/// kPatternLine bytes long. Numbered and counted.
DiffModel modelOf(std::string_view pattern);

}  // namespace merivane
