#include "output/patch_name.h"

#include <cstdint>

#include "base/utf8.h"

namespace merivane {
namespace {

/// Whether a byte or UTF-8 sequence of a name cannot stand there as it is. What a byte from 0x80 to 0x9F is
/// to a terminal is not known.
bool isSpecial(std::string_view character) {
  const char c = character[0];
  return static_cast<uint8_t>(c) < 0x20 || c == 0x7F || c == '"' || c == '\\' ||
         (character.size() == 1 && static_cast<uint8_t>(c) >= 0x80 && static_cast<uint8_t>(c) < 0xA0) ||
         isUtf8Control(character);
}

void appendEscape(std::string& name, char c) {
  name += '\\';
  constexpr std::string_view named = "\a\b\t\n\v\f\r\"\\";
  const size_t known = named.find(c);
  if (known != std::string_view::npos) {
    name += "abtnvfr\"\\"[known];
  } else {
    for (const int shift : {6, 3, 0}) name += static_cast<char>('0' + ((c >> shift) & 7));
  }
}

}  // namespace

std::string patchName(std::string_view path, bool amongOthers) {
  std::string name;
  bool quoted = amongOthers ? path.find(' ') != std::string_view::npos : path.ends_with(' ');
  for (size_t at = 0; at < path.size();) {
    const std::string_view character = path.substr(at, utf8Length(path.substr(at)));
    at += character.size();
    if (!isSpecial(character)) {
      name += character;
      continue;
    }
    quoted = true;
    for (const char c : character) appendEscape(name, c);
  }
  return quoted ? '"' + name + '"' : name;
}

}  // namespace merivane
