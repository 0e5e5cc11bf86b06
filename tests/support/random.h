#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace merivane {

/// The same numbers on every platform and in every run, so that a failure comes back.
class Random {
 public:
  explicit Random(uint32_t seed) : engine_(seed) {}

  uint32_t below(uint32_t bound) { return static_cast<uint32_t>(engine_() % bound); }

  /// Up to `maxLength` bytes of an alphabet.
  std::string text(std::string_view alphabet, uint32_t maxLength) {
    std::string result(below(maxLength + 1), '\0');
    for (char& c : result) c = alphabet[below(static_cast<uint32_t>(alphabet.size()))];
    return result;
  }

 private:
  std::mt19937 engine_;
};

}  // namespace merivane
