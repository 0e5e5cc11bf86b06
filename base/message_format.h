#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "base/texts.h"

namespace merivane {

using MessageArgument = std::variant<std::string_view, int64_t>;

/// Fills a pattern in the system's message syntax. "%1" to "%99" stand for the arguments, one-based, as text.
/// A printf conversion between exclamation marks, as in "%2!ld!", formats a number: flags, width and
/// precision with d, i, u, x, X, c or s, and any of the length letters h, l, I64. "%%" is a percent sign,
/// "%n" a line end, "%0" ends the message; any other character after a percent sign stands for itself. A
/// placeholder without its argument is left out. Throws nothing but std::bad_alloc.
std::string formatMessage(std::string_view pattern, std::initializer_list<MessageArgument> arguments);
std::string formatMessage(TextId pattern, std::initializer_list<MessageArgument> arguments);

}  // namespace merivane
