#pragma once

namespace merivane {

/// The characters that the 256 bytes are in texts of single bytes: those of the system's code page on
/// Windows, of Windows-1252 elsewhere and for bytes that are none in the code page alone. All are in 16 bits.
using CodePage = char16_t[256];
const CodePage& systemCodePage();

/// Windows-1252, where the five bytes that it has no characters for are control characters.
void setWindows1252(CodePage& characters);

}  // namespace merivane
