#include "base/message_format.h"

#include <cstdio>

namespace merivane {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The parts of a printf conversion: "-08ld" has the flags and width "-08" and the letter 'd'.
struct Conversion {
  std::string flagsAndWidth;
  char letter = 's';
};

Conversion parseConversion(std::string_view text) {
  Conversion result;
  size_t at = 0;
  // Longer widths are of no use to a message.
  while (at < text.size() &&
         (std::string_view("-+ #0.").find(text[at]) != std::string_view::npos || isDigit(text[at])) &&
         at < 8) {
    result.flagsAndWidth += text[at++];
  }
  if (text.substr(at).substr(0, 3) == "I64") at += 3;
  while (at < text.size() && (text[at] == 'h' || text[at] == 'l')) ++at;
  if (at < text.size()) result.letter = text[at];
  return result;
}

std::string printed(const std::string& format, auto value) {
  const int length = std::snprintf(nullptr, 0, format.c_str(), value);
  if (length <= 0) return {};
  std::string result(static_cast<size_t>(length), '\0');
  std::snprintf(result.data(), result.size() + 1, format.c_str(), value);
  return result;
}

std::string formatted(const MessageArgument& argument, const Conversion& conversion) {
  const std::string start = "%" + conversion.flagsAndWidth;
  if (const auto* number = std::get_if<int64_t>(&argument)) {
    switch (conversion.letter) {
      case 'u':
      case 'x':
      case 'X':
        // As wide as the caller's 32-bit numbers, so that -1 is ffffffff and not twice as long.
        return printed(start + conversion.letter, static_cast<unsigned>(*number));
      case 'c':
        return printed(start + "c", static_cast<int>(*number));
      default:
        return printed(start + "lld", static_cast<long long>(*number));
    }
  }
  const std::string value(std::get<std::string_view>(argument));
  return conversion.flagsAndWidth.empty() ? value : printed(start + "s", value.c_str());
}

}  // namespace

std::string formatMessage(std::string_view pattern, std::initializer_list<MessageArgument> arguments) {
  std::string result;
  for (size_t at = 0; at < pattern.size(); ++at) {
    if (pattern[at] != '%' || at + 1 == pattern.size()) {
      result += pattern[at];
      continue;
    }
    const char next = pattern[++at];
    if (next == '0') break;
    if (next == 'n') {
      result += '\n';
    } else if (!isDigit(next)) {
      result += next;
    } else {
      size_t number = static_cast<size_t>(next - '0');
      if (at + 1 < pattern.size() && isDigit(pattern[at + 1])) {
        number = number * 10 + static_cast<size_t>(pattern[++at] - '0');
      }
      Conversion conversion;
      if (at + 1 < pattern.size() && pattern[at + 1] == '!') {
        const size_t end = pattern.find('!', at + 2);
        if (end != std::string_view::npos) {
          conversion = parseConversion(pattern.substr(at + 2, end - at - 2));
          at = end;
        }
      }
      if (number <= arguments.size()) result += formatted(arguments.begin()[number - 1], conversion);
    }
  }
  return result;
}

std::string formatMessage(TextId pattern, std::initializer_list<MessageArgument> arguments) {
  return formatMessage(text(pattern), arguments);
}

}  // namespace merivane
