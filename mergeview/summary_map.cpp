#include "mergeview/summary_map.h"

#include <algorithm>

namespace merivane {
namespace {

constexpr int32_t kMarkerHeight = 5;

/// The pixel line where a row starts, rounded, a half up.
int32_t mapped(uint32_t row, int32_t height, uint32_t rows) {
  return static_cast<int32_t>((2 * uint64_t{row} * static_cast<uint32_t>(height) + rows) /
                              (2 * uint64_t{rows}));
}

/// Red and green are halved before they are added, blue after.
Colour average(Colour a, Colour b) {
  const auto halves = [&](int shift) { return (a >> shift & 0xFF) / 2 + (b >> shift & 0xFF) / 2; };
  return halves(0) | halves(8) << 8 | ((a >> 16 & 0xFF) + (b >> 16 & 0xFF)) / 2 << 16;
}

/// A quarter of every channel.
Colour dark(Colour colour) {
  Colour result = 0;
  for (const int shift : {0, 8, 16}) result |= (colour >> shift & 0xFF) * 25 / 100 << shift;
  return result;
}

Colour bandColour(const RowColours& colours, RowStatus status) {
  return rowColour(colours, status, status == RowStatus::rightOnly ? 1 : 0);
}

}  // namespace

void SummaryMap::update(const DiffModel& model, const Geometry& geometry) {
  if (!stale_ && geometry == geometry_ && model.rowCount() == rows_) return;
  stale_ = true;
  geometry_ = geometry;
  rows_ = model.rowCount();
  const bool fits = rows_ <= geometry.visibleRows;
  mapTop_ = fits ? 0 : geometry.arrowHeight;
  const int64_t height =
      fits ? int64_t{geometry.lineHeight} * rows_ : geometry.barHeight - 2 * geometry.arrowHeight;
  pixels_.assign(static_cast<size_t>(std::max<int64_t>(height, 0)), RowStatus::same);
  if (!pixels_.empty()) {
    for (uint32_t row = 0; row < rows_; ++row) {
      const RowStatus status = model.status(row);
      if (status == RowStatus::same) continue;
      const PixelRange lines = pixelsOf(row);
      std::fill(pixels_.begin() + lines.begin, pixels_.begin() + lines.end, status);
    }
  }
  stale_ = false;
}

PixelRange SummaryMap::pixelsOf(uint32_t row) const {
  const int32_t height = mapHeight();
  if (height == 0) return {};
  const int32_t begin = std::min(mapped(row, height, rows_), height - 1);
  const int32_t end = row + 1 < rows_ ? mapped(row + 1, height, rows_) : height;
  return {begin, std::clamp(end, begin + 1, height)};
}

PixelRange SummaryMap::caretMarker(uint32_t caretRow) const {
  PixelRange marker = pixelsOf(caretRow);
  for (int32_t height = marker.end - marker.begin; height < kMarkerHeight; ++height) {
    if (height % 2 != 0) {
      --marker.begin;
    } else {
      ++marker.end;
    }
  }
  if (marker.begin < 0) {
    marker.end -= marker.begin;
    marker.begin = 0;
  }
  if (marker.end > mapHeight()) {
    marker.begin -= marker.end - mapHeight();
    marker.end = mapHeight();
  }
  return marker;
}

uint32_t SummaryMap::rowAt(int32_t y) const {
  if (rows_ == 0 || y <= mapTop_) return 0;
  if (y >= mapTop_ + mapHeight()) return rows_ - 1;
  return static_cast<uint32_t>(uint64_t{rows_} * static_cast<uint32_t>(y - mapTop_) / pixels_.size());
}

std::vector<SummaryLine> summaryLines(std::span<const RowStatus> pixels, const RowColours& colours,
                                      Colour face) {
  Colour fills[4], edges[4];
  for (const RowStatus status :
       {RowStatus::same, RowStatus::leftOnly, RowStatus::rightOnly, RowStatus::changed}) {
    const auto i = static_cast<size_t>(status);
    fills[i] = bandColour(colours, status);
    edges[i] = average(fills[i], dark(face));
  }
  std::vector<SummaryLine> lines;
  lines.reserve(pixels.size());
  for (size_t y = 0; y < pixels.size(); ++y) {
    const auto at = static_cast<size_t>(pixels[y]);
    const size_t above = y > 0 ? static_cast<size_t>(pixels[y - 1]) : 0;
    const size_t below = y + 1 < pixels.size() ? static_cast<size_t>(pixels[y + 1]) : 0;
    const bool atEnd = y == 0 || y + 1 == pixels.size();
    if (at != 0) {
      lines.push_back({edges[at], atEnd ? edges[at] : fills[at]});
    } else if (above != 0) {
      lines.push_back({edges[above], edges[above]});
    } else if (below != 0) {
      lines.push_back({edges[below], edges[below]});
    } else {
      lines.push_back({face, face});
    }
  }
  return lines;
}

Colour markerColour(std::span<const SummaryLine> framed) {
  int64_t brightness = 0;
  for (const SummaryLine& line : framed) {
    const auto channel = [&](int shift) { return int64_t{line.fill >> shift & 0xFF}; };
    brightness += (2 * channel(0) + 5 * channel(8) + channel(16)) / 8;
  }
  return brightness < 96 * static_cast<int64_t>(framed.size()) ? 0xFFFFFF : 0;
}

}  // namespace merivane
