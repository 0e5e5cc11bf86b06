#pragma once

#include <array>
#include <cstdint>

namespace merivane {

/// What the layout has to know of the fonts, in pixels of the device that is drawn on.
struct FontMetrics {
  int32_t lineHeight = 16;
  int32_t charWidth = 8;  // of a display column; of every character of a fixed pitch font
  bool fixedPitch = true;
  std::array<uint16_t, 256> widths{};  // by character; read only without fixed pitch
  int32_t digitWidth = 8;              // the widest digit of the line numbers' font
  int32_t resolutionX = 96;            // pixels an inch
  int32_t resolutionY = 96;

  bool operator==(const FontMetrics&) const = default;

  int32_t widthOf(char c) const { return fixedPitch ? charWidth : widths[static_cast<uint8_t>(c)]; }

  /// A length given for 96 pixels an inch, rounded.
  int32_t scaled(int32_t pixels) const { return (pixels * resolutionX + 48) / 96; }
};

}  // namespace merivane
