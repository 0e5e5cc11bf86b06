#include "base/single_bytes.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/code_page.h"
#include "base/utf16.h"
#include "base/utf8.h"

namespace merivane {

std::optional<char> codePageByte(char32_t codePoint) {
  if (codePoint < 0x80) return static_cast<char>(codePoint);
  const CodePage& page = systemCodePage();
  const auto* const found = std::find(page + 0x80, page + 0x100, codePoint);
  if (found == page + 0x100) return std::nullopt;
  return static_cast<char>(found - page);
}

uint32_t toCodePage(ByteArray& text) {
  uint32_t missing = 0;
  char* to = text.data();
  std::string_view left = text.view();
  while (!left.empty()) {
    const uint32_t length = utf8Length(left);
    if (length == 1) {
      *to++ = left[0];
    } else {
      const auto byte = codePageByte(utf8CodePoint(left.substr(0, length)));
      missing += !byte;
      *to++ = byte.value_or('?');
    }
    left.remove_prefix(length);
  }
  text.truncate(static_cast<uint32_t>(to - text.data()));
  return missing;
}

bool fromCodePage(ByteArray& text) {
  std::array<std::string, 0x100> characters;
  uint64_t size = 0;
  const CodePage& page = systemCodePage();
  for (size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = utf8OfCodePoint(page[byte]);
  for (const char c : text.view()) size += characters[static_cast<uint8_t>(c)].size();
  ByteArray converted;
  if (!converted.allocate(size)) return false;
  char* to = converted.data();
  for (const char c : text.view()) to = std::ranges::copy(characters[static_cast<uint8_t>(c)], to).out;
  std::swap(text, converted);
  return true;
}

}  // namespace merivane
