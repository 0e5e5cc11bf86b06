#pragma once

#include <string_view>

namespace merivane {

/// Folds names: only A to Z change, whatever the language of the system.
constexpr char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Returns whether two names are the same, byte for byte or without regard to case.
bool equalNames(std::string_view a, std::string_view b, bool caseSensitive);

}  // namespace merivane
