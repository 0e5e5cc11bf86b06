#include "shell/status_text.h"

#include "base/message_format.h"
#include "base/texts.h"
#include "engine/diff_model.h"

namespace merivane {

std::string caretText(uint32_t row, uint32_t lineNumber, uint32_t column) {
  const int64_t line = lineNumber == kNoLine ? 0 : int64_t{lineNumber} + 1;
  return formatMessage(TextId::caretPosition, {int64_t{row} + 1, line, int64_t{column} + 1});
}

std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution) {
  const auto fromRight = [&](int32_t pixels) { return width - pixels * resolution / 96; };
  return {fromRight(375), fromRight(215), fromRight(140), width};
}

}  // namespace merivane
