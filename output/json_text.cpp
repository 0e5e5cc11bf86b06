#include "output/json_text.h"

#include <cstdint>

#include "base/utf8.h"

namespace merivane {
namespace {

void appendEscape(std::string& json, uint8_t number) {
  constexpr char hex[] = "0123456789abcdef";
  json += "\\u00";
  json += hex[number >> 4];
  json += hex[number & 15];
}

}  // namespace

void appendJsonString(std::string& json, std::string_view text) {
  const bool utf8 = isUtf8(text);
  json += '"';
  while (!text.empty()) {
    const uint32_t length = utf8 ? utf8Length(text) : 1;
    const uint8_t byte = static_cast<uint8_t>(text[0]);
    if (byte == '"' || byte == '\\') {
      json += '\\';
      json += text[0];
    } else if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && length == 1)) {
      appendEscape(json, byte);
    } else if (isUtf8Control(text.substr(0, length))) {
      appendEscape(json, static_cast<uint8_t>(text[1]));
    } else {
      json += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  json += '"';
}

}  // namespace merivane
