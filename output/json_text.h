#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// Appends a path as a JSON string. One that is no UTF-8 is taken for characters of one byte each, of the
/// same number.
void appendJsonString(std::string& json, std::string_view text);

}  // namespace merivane
