#pragma once

#include <cstdint>

namespace merivane {

/// Names the texts of resources/texts.inc; the value is the string number in the resources.
enum class TextId : uint16_t {
#pragma push_macro("TEXT")  // windows.h has one of its own
#undef TEXT
#define TEXT(name, number, text) name = number,
#include "resources/texts.inc"
#undef TEXT
#pragma pop_macro("TEXT")
};

/// Returns the text with its placeholders; an empty string for a number that has none. Never null.
const char* text(TextId id);

}  // namespace merivane
