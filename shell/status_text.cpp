#include "shell/status_text.h"

#include "base/message_format.h"
#include "base/texts.h"
#include "engine/diff_model.h"

namespace merivane {

std::string caretText(uint32_t row, uint32_t lineNumber, uint32_t column) {
  const int64_t line = lineNumber == kNoLine ? 0 : int64_t{lineNumber} + 1;
  return formatMessage(TextId::caretPosition, {int64_t{row} + 1, line, int64_t{column} + 1});
}

std::array<int32_t, 4> statusPartEdges(int32_t width) {
  return {width - 375, width - 215, width - 140, width};
}

}  // namespace merivane
