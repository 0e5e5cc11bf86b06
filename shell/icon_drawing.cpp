#include "shell/icon_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string_view>

namespace merivane {
namespace {

constexpr uint32_t kInk = 0x404858;
constexpr uint32_t kPaper = 0xFFFFFF;
constexpr uint32_t kText = 0x9AA6B8;
constexpr uint32_t kFolder = 0xE8B44A;
constexpr uint32_t kFolderFront = 0xF7D27A;
constexpr uint32_t kBlue = 0x2F6FB7;
constexpr uint32_t kBand = 0xA6CAF0;
constexpr uint32_t kGreen = 0x3C9A46;
constexpr uint32_t kRed = 0xC8403A;

/// A filled area. The outline is a list of corners "x,y" on a grid of 16 by 16, clockwise or not; "/" begins
/// another outline, and what lies within two of them is a hole; "o x,y r" is a circle.
struct Shape {
  uint32_t colour;
  const char* outline;
};

const char* const page = "3,1 10,1 13,4 13,15 3,15";
const char* const pageInside = "4,2 9,2 9,5 12,5 12,14 4,14";
const char* const folderBack = "1,3 6,3 7.5,4.5 14,4.5 14,13 1,13";
const char* const folderFront = "1,6.5 15,6.5 15,13.5 1,13.5";
const char* const disk = "1.5,1.5 12.5,1.5 14.5,3.5 14.5,14.5 1.5,14.5";
const char* const bentArrow =
    "1,6 6,1.5 6,4.5 10,4.5 12.5,5.5 14,8 14,10 12.5,12.5 10,13.5 5,13.5 5,11.5 9.5,11.5 11,11 12,9.5 12,8.5 "
    "11,7 9.5,6.5 6,6.5 6,10.5";
const char* const leftArrow = "1,8 7,2.5 7,6 12,6 12,10 7,10 7,13.5";

/// Some icons are another one, mirrored.
enum Mirror { asDrawn, mirroredX, mirroredY };

struct Picture {
  Mirror mirror;
  std::vector<Shape> shapes;
};

Picture pictureOf(IconId icon) {
  switch (icon) {
#define ICON(name, mirror, ...) \
  case IconId::name:            \
    return {mirror, {__VA_ARGS__}};
#include "resources/icons.inc"
  }
  return {};
}

struct Point {
  double x;
  double y;
};
using Outline = std::vector<Point>;

std::vector<Outline> parse(const char* text) {
  std::vector<Outline> outlines(1);
  const auto number = [&text] {
    char* end = nullptr;
    const double value = std::strtod(text, &end);
    text = end;
    return value;
  };
  const auto point = [&] {
    const double x = number();
    ++text;  // the comma
    return Point{x, number()};
  };
  while (*text != '\0') {
    if (*text == ' ') {
      ++text;
    } else if (*text == '/') {
      outlines.emplace_back();
      ++text;
    } else if (*text == 'o') {
      ++text;
      const Point centre = point();
      const double radius = number();
      for (int i = 0; i < 48; ++i) {
        const double angle = i * std::numbers::pi / 24;
        outlines.back().push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
      }
    } else {
      outlines.back().push_back(point());
    }
  }
  return outlines;
}

bool contains(const std::vector<Outline>& outlines, Point p) {
  bool inside = false;
  for (const Outline& outline : outlines) {
    for (size_t i = 0, before = outline.size() - 1; i < outline.size(); before = i++) {
      const Point a = outline[i];
      const Point b = outline[before];
      if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
    }
  }
  return inside;
}

/// The grey of a colour, with the dark half left out.
uint32_t quiet(uint32_t colour) {
  const uint32_t brightness = ((colour >> 16 & 255) * 3 + (colour >> 8 & 255) * 6 + (colour & 255)) / 10;
  return (144 + brightness * 111 / 255) * 0x010101;
}

/// Puts a colour that covers `coverage` sixteenths of a pixel over what is there.
uint32_t blend(uint32_t below, uint32_t colour, uint32_t coverage) {
  uint32_t result = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    const uint32_t over = shift == 24 ? 255 : colour >> shift & 255;
    const uint32_t under = below >> shift & 255;
    result |= ((over * coverage + under * (16 - coverage) + 8) / 16) << shift;
  }
  return result;
}

}  // namespace

std::vector<uint32_t> drawIcon(IconId icon, int size, bool greyed) {
  constexpr int samples = 4;  // a pixel is looked at in this many places each way
  std::vector<uint32_t> pixels(static_cast<size_t>(size) * static_cast<size_t>(size));
  const double scale = 16.0 / (size * samples);
  const auto [mirror, shapes] = pictureOf(icon);
  for (const Shape& shape : shapes) {
    const std::vector<Outline> outlines = parse(shape.outline);
    const uint32_t colour = greyed ? quiet(shape.colour) : shape.colour;
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        uint32_t coverage = 0;
        for (int sample = 0; sample < samples * samples; ++sample) {
          const Point p = {(x * samples + sample % samples + 0.5) * scale,
                           (y * samples + sample / samples + 0.5) * scale};
          coverage += contains(outlines,
                               {mirror == mirroredX ? 16 - p.x : p.x, mirror == mirroredY ? 16 - p.y : p.y});
        }
        uint32_t& pixel = pixels[static_cast<size_t>(y) * static_cast<size_t>(size) + static_cast<size_t>(x)];
        pixel = blend(pixel, colour, coverage);
      }
    }
  }
  return pixels;
}

}  // namespace merivane
