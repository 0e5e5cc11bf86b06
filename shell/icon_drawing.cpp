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

using Shapes = std::vector<Shape>;

const char* const page = "3,1 10,1 13,4 13,15 3,15";
const char* const pageInside = "4,2 9,2 9,5 12,5 12,14 4,14";
const char* const folderBack = "1,3 6,3 7.5,4.5 14,4.5 14,13 1,13";
const char* const folderFront = "1,6.5 15,6.5 15,13.5 1,13.5";
const char* const disk = "1.5,1.5 12.5,1.5 14.5,3.5 14.5,14.5 1.5,14.5";
const char* const bentArrow =
    "1,6 6,1.5 6,4.5 10,4.5 12.5,5.5 14,8 14,10 12.5,12.5 10,13.5 5,13.5 5,11.5 9.5,11.5 11,11 12,9.5 12,8.5 "
    "11,7 9.5,6.5 6,6.5 6,10.5";
const char* const leftArrow = "1,8 7,2.5 7,6 12,6 12,10 7,10 7,13.5";

Shapes shapesOf(IconId icon) {
  switch (icon) {
    case IconId::newTextWindow:
      return {{kInk, page},
              {kPaper, pageInside},
              {kText, "5,7 11,7 11,8 5,8 / 5,9 11,9 11,10 5,10 / 5,11 9,11 9,12 5,12"}};
    case IconId::newFolderWindow:
      return {{kFolder, folderBack}, {kFolderFront, folderFront}};
    case IconId::save:
      return {{kBlue, disk},
              {kPaper, "4,9 12,9 12,14.5 4,14.5"},
              {kPaper, "5,1.5 11,1.5 11,5.5 5,5.5"},
              {kBlue, "8.5,2.2 10,2.2 10,4.8 8.5,4.8"}};
    case IconId::saveAll:
      return {{kBlue, "4,1 13,1 15,3 15,11 4,11"},
              {kPaper, "3.2,3.2 13.8,3.2 13.8,13.8 3.2,13.8"},
              {kBlue, "1,4 10.5,4 12.5,6 12.5,15 1,15"},
              {kPaper, "3,10 10.5,10 10.5,15 3,15"},
              {kPaper, "4,4 9,4 9,7 4,7"}};
    case IconId::undo:
    case IconId::redo:
      return {{kBlue, bentArrow}};
    case IconId::cut:
      return {{kInk, "4.2,1 5.8,1 10.6,10.4 9,11.2"},
              {kInk, "11.8,1 10.2,1 5.4,10.4 7,11.2"},
              {kBlue, "o 4.6,12.2 2.8 / o 4.6,12.2 1.4"},
              {kBlue, "o 11.4,12.2 2.8 / o 11.4,12.2 1.4"}};
    case IconId::copy:
      return {{kInk, "1,1 7,1 9.5,3.5 9.5,11 1,11"},
              {kPaper, "2,2 6.5,2 8.5,4 8.5,10 2,10"},
              {kInk, "6,5 12,5 14.5,7.5 14.5,15 6,15"},
              {kPaper, "7,6 11.5,6 13.5,8 13.5,14 7,14"},
              {kText, "8,9 12.5,9 12.5,10 8,10 / 8,11 12.5,11 12.5,12 8,12"}};
    case IconId::paste:
      return {{kFolder, "1.5,2.5 11.5,2.5 11.5,14.5 1.5,14.5"},
              {kInk, "4,1 9,1 9,4 4,4"},
              {kInk, "6.5,6 14.5,6 14.5,15.5 6.5,15.5"},
              {kPaper, "7.5,7 13.5,7 13.5,14.5 7.5,14.5"},
              {kText, "8.5,8.5 12.5,8.5 12.5,9.5 8.5,9.5 / 8.5,10.5 12.5,10.5 12.5,11.5 8.5,11.5"}};
    case IconId::find:
      return {
          {kInk, "9.2,10.8 10.8,9.2 15,13.4 13.4,15"}, {kBlue, "o 6.5,6.5 5.5"}, {kPaper, "o 6.5,6.5 3.9"}};
    case IconId::prevDiff:
    case IconId::nextDiff:
      return {{kBand, "1,11 15,11 15,15 1,15"}, {kBlue, "8,1 13,6 10,6 10,10 6,10 6,6 3,6"}};
    case IconId::copyLeft:
    case IconId::copyRight:
      return {{kBand, "13,1.5 15.5,1.5 15.5,14.5 13,14.5"}, {kGreen, leftArrow}};
    case IconId::deleteDiff:
      return {{kBand, "1,5.5 15,5.5 15,10.5 1,10.5"},
              {kRed, "3.5,2 8,6.5 12.5,2 14,3.5 9.5,8 14,12.5 12.5,14 8,9.5 3.5,14 2,12.5 6.5,8 2,3.5"}};
    case IconId::refresh:
      return {
          {kGreen, "8,1.5 11,2.5 13,0.8 13.8,6.6 8,6 9.6,4.3 8,3.8 5.8,4.6 4.3,6.6 2.2,6 4.5,2.8"},
          {kGreen, "8,14.5 5,13.5 3,15.2 2.2,9.4 8,10 6.4,11.7 8,12.2 10.2,11.4 11.7,9.4 13.8,10 11.5,13.2"}};
    case IconId::switchSides:
      return {{kBlue, "1,5 5,1.2 5,3.8 14,3.8 14,6.2 5,6.2 5,8.8"},
              {kGreen, "15,11 11,7.2 11,9.8 2,9.8 2,12.2 11,12.2 11,14.8"}};
    case IconId::options:
      return {{kInk, "1,3 15,3 15,4.2 1,4.2"},          {kInk, "1,7.4 15,7.4 15,8.6 1,8.6"},
              {kInk, "1,11.8 15,11.8 15,13 1,13"},      {kBlue, "9.5,1.2 12,1.2 12,6 9.5,6"},
              {kBlue, "3.5,5.6 6,5.6 6,10.4 3.5,10.4"}, {kBlue, "8,10 10.5,10 10.5,14.8 8,14.8"}};
    case IconId::print:
      return {{kInk, "4,1 12,1 12,6 4,6"},
              {kPaper, "5,2 11,2 11,6 5,6"},
              {kText, "1,5.5 15,5.5 15,12 1,12"},
              {kInk, "1,9 15,9 15,12.5 1,12.5"},
              {kInk, "3.5,10.5 12.5,10.5 12.5,15.5 3.5,15.5"},
              {kPaper, "4.5,11.5 11.5,11.5 11.5,14.5 4.5,14.5"}};
    case IconId::browse:
      return {{kFolder, folderBack}, {kFolderFront, "3.5,7 15.8,7 13.5,13.5 1,13.5"}};
    case IconId::upOneFolder:
      return {{kFolder, folderBack},
              {kFolderFront, folderFront},
              {kGreen, "8,3.5 12.5,8.5 9.5,8.5 9.5,12.5 6.5,12.5 6.5,8.5 3.5,8.5"}};
  }
  return {};
}

/// Some icons are another one, mirrored.
bool mirrorsX(IconId icon) { return icon == IconId::redo || icon == IconId::copyRight; }
bool mirrorsY(IconId icon) { return icon == IconId::nextDiff; }

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
  for (const Shape& shape : shapesOf(icon)) {
    const std::vector<Outline> outlines = parse(shape.outline);
    const uint32_t colour = greyed ? quiet(shape.colour) : shape.colour;
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        uint32_t coverage = 0;
        for (int sample = 0; sample < samples * samples; ++sample) {
          const Point p = {(x * samples + sample % samples + 0.5) * scale,
                           (y * samples + sample / samples + 0.5) * scale};
          coverage += contains(outlines, {mirrorsX(icon) ? 16 - p.x : p.x, mirrorsY(icon) ? 16 - p.y : p.y});
        }
        uint32_t& pixel = pixels[static_cast<size_t>(y) * static_cast<size_t>(size) + static_cast<size_t>(x)];
        pixel = blend(pixel, colour, coverage);
      }
    }
  }
  return pixels;
}

}  // namespace merivane
