#include "base/code_page.h"

namespace merivane {

const CodePage& systemCodePage() {
  static const struct Table {
    Table() { setWindows1252(characters); }
    CodePage characters;
  } table;
  return table.characters;
}

}  // namespace merivane
