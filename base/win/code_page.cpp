#include "base/code_page.h"

#include <windows.h>

namespace merivane {

const CodePage& systemCodePage() {
  static const struct Table {
    Table() {
      setWindows1252(characters);
      for (int i = 0x80; i < 0x100; ++i) {
        const char byte = static_cast<char>(i);
        wchar_t character = 0;
        if (MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1) == 1) {
          characters[i] = character;
        }
      }
    }
    CodePage characters;
  } table;
  return table.characters;
}

}  // namespace merivane
