#pragma once

#include <string>
#include <string_view>

#include "base/byte_sink.h"
#include "output/text_cell.h"

namespace merivane {

constexpr std::string_view kMessagePrefix = "merivane-diff: ";

/// Tells the user something. A name in the message may hold control characters, which the terminal is not to
/// obey.
inline void report(ByteSink& standardError, std::string_view message, const TerminalBytes& terminal) {
  CellStyle style;
  style.terminal = terminal;
  std::string shown(kMessagePrefix);
  for (size_t end = 0; end != message.npos; message.remove_prefix(end == message.npos ? 0 : end + 1)) {
    end = message.find('\n');
    appendCell(shown, message.substr(0, end), {}, style, UINT32_MAX);
    shown += '\n';
  }
  standardError.write(shown);
}

}  // namespace merivane
