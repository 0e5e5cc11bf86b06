#pragma once

#include <cstdint>
#include <optional>

#include "base/byte_array.h"

namespace merivane {

/// The byte that a character is in the system's code page; none when it has no such character. Among several
/// the first.
std::optional<char> codePageByte(char32_t codePoint);

/// Turns UTF-8 into single bytes of the system's code page, in place; what the code page has not becomes "?".
/// Returns how many those were; a byte that belongs to no character stays as it is.
uint32_t toCodePage(ByteArray& text);

/// Turns single bytes of the system's code page into UTF-8. False, and nothing changed, when memory runs out.
bool fromCodePage(ByteArray& text);

}  // namespace merivane
