#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/abort_flag.h"
#include "base/byte_array.h"

namespace merivane {

/// How a file stores the characters of its text. In memory a text is single bytes, or UTF-8 without a mark.
enum class TextEncoding : uint8_t {
  ascii,       // nothing else so far
  singleByte,  // the system's code page
  utf8,
  utf8Marked,  // begins with a byte order mark
  utf16Le,     // both of these always begin with one
  utf16Be,
};

/// Whether a text of this encoding is UTF-8 in memory and has more than ASCII, or may have.
constexpr bool isUnicode(TextEncoding encoding) { return encoding >= TextEncoding::utf8; }
constexpr bool isUtf16(TextEncoding encoding) { return encoding >= TextEncoding::utf16Le; }

/// "ASCII", "single-byte", "UTF-8", "UTF-8 BOM", "UTF-16 LE" or "UTF-16 BE".
const char* encodingName(TextEncoding encoding);

/// The name of a kind of line ends and the encoding's where that is neither ASCII nor single bytes: "UNIX",
/// "UNIX UTF-8".
std::string withEncoding(std::string lineEnds, TextEncoding encoding);

/// The encoding of a text that gets a character beyond ASCII: its own, but an ASCII text takes that of the
/// other side, or else becomes UTF-8. It gets no mark and no other units, which would change more.
constexpr TextEncoding encodingBeyondAscii(TextEncoding own, TextEncoding other) {
  if (own != TextEncoding::ascii) return own;
  return other == TextEncoding::singleByte ? other : TextEncoding::utf8;
}

/// Whether all bytes of a text are ASCII.
bool isAscii(std::string_view text);

/// The bytes at the start of a file that tell its encoding and are no part of the text.
std::string_view byteOrderMark(TextEncoding encoding);

/// The encoding whose mark a file begins with; ascii for none.
TextEncoding encodingByMark(std::string_view bytes);

/// The encoding of a text without a mark: ascii, utf8 if all of it is well-formed, else singleByte. If the
/// flag is raised meanwhile, it is none of these for sure.
TextEncoding detectEncoding(std::string_view text, const AbortFlag* abort = nullptr);

enum class Decoded { whole, malformed, outOfMemory };

/// Turns UTF-16 in the given byte order, after its mark, into UTF-8. Malformed is what encodeUtf16() would
/// not give back: half a surrogate pair or half a unit. `text` is changed only by success, and undefined if
/// the flag is raised meanwhile.
Decoded decodeUtf16(std::string_view units, TextEncoding encoding, ByteArray& text,
                    const AbortFlag* abort = nullptr);

/// Turns a UTF-8 text into UTF-16 in the given byte order, without a mark. A byte that belongs to no
/// character becomes the one that it is in the system's code page. False, and nothing changed, when memory
/// runs out.
bool encodeUtf16(std::string_view text, TextEncoding encoding, ByteArray& units);

}  // namespace merivane
