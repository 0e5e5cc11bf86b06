#include "base/texts.h"

namespace merivane {

const char* text(TextId id) {
  switch (id) {
#define TEXT(name, number, text) \
  case TextId::name:             \
    return text;
#include "resources/texts.inc"
#undef TEXT
  }
  return "";
}

}  // namespace merivane
