#include "shell/window_placement.h"

#include <algorithm>
#include <cstdio>

namespace merivane {
namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// Reads hexadecimal numbers parted by commas as scanf reads "%lx,%lx" where long has 32 bits, so that
/// every text that was ever accepted still is. True when all `count` were there.
bool scanNumbers(std::string_view text, int32_t* numbers, int count) {
  size_t at = 0;
  const auto peek = [&](size_t ahead = 0) { return at + ahead < text.size() ? text[at + ahead] : '\0'; };
  for (int i = 0; i < count; ++i) {
    if (i > 0 && peek() != ',') return false;
    if (i > 0) ++at;
    while (peek() == ' ' || (peek() >= '\t' && peek() <= '\r')) ++at;
    const bool negative = peek() == '-';
    if (peek() == '-' || peek() == '+') ++at;
    if (peek() == '0' && (peek(1) == 'x' || peek(1) == 'X') && hexDigit(peek(2)) >= 0) at += 2;
    if (hexDigit(peek()) < 0) return false;
    uint32_t value = 0;
    while (hexDigit(peek()) >= 0) value = value * 16 + static_cast<uint32_t>(hexDigit(text[at++]));
    numbers[i] = static_cast<int32_t>(negative ? 0 - value : value);
  }
  return true;
}

/// Coordinates wrap around as the system's own do, and never overflow.
int32_t sum(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

int32_t difference(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

/// How many pixels two rectangles have in common.
int64_t commonArea(const ScreenRect& a, const ScreenRect& b) {
  const int64_t width = int64_t{std::min(a.right, b.right)} - std::max(a.left, b.left);
  const int64_t height = int64_t{std::min(a.bottom, b.bottom)} - std::max(a.top, b.top);
  return width > 0 && height > 0 ? width * height : 0;
}

/// The monitor with the greatest part of a rectangle; the primary one for a rectangle on none.
const Monitor& monitorOf(const ScreenRect& rect, const Monitors& monitors) {
  return *std::max_element(monitors.begin(), monitors.end(), [&](const Monitor& a, const Monitor& b) {
    return commonArea(rect, a.area) < commonArea(rect, b.area);
  });
}

unsigned bits(int32_t coordinate) { return static_cast<unsigned>(coordinate); }

}  // namespace

std::string formatPlacement(const WindowPlacement& placement) {
  char buffer[64];
  const ScreenRect& r = placement.rect;
  std::snprintf(buffer, sizeof buffer, "%x,%x,%x,%x,%x", placement.maximized ? 1u : 0u, bits(r.left),
                bits(r.top), bits(r.right), bits(r.bottom));
  return buffer;
}

WindowPlacement parsePlacement(std::string_view text, const Monitors& monitors) {
  int32_t n[5];
  if (!scanNumbers(text, n, 5)) return {};
  const ScreenRect r = {n[1], n[2], n[3], n[4]};
  const bool reachable = std::any_of(monitors.begin(), monitors.end(), [&](const Monitor& monitor) {
    const ScreenRect& area = monitor.workArea;
    return r.left <= area.right && r.top <= area.bottom && r.right >= area.left && r.bottom >= area.top;
  });
  if (r.left >= r.right || r.top >= r.bottom || !reachable) return {};
  return {r, true, n[0] == 1};
}

void LoadPlacement(const SettingsStore& store, const std::string& name, const Monitors& monitors,
                   WindowPlacement& placement) {
  placement = parsePlacement(store.GetString(name).value_or(""), monitors);
}

void SavePlacement(SettingsStore& store, const std::string& name, const WindowPlacement& placement) {
  store.SetString(name, formatPlacement(placement));
}

void capturePlacement(const WindowStance& window, WindowPlacement& placement) {
  if (!window.maximized && !window.minimized) {
    placement.rect = window.rect;
    placement.valid = true;
  }
  placement.maximized = window.maximized;
}

NewWindowRect newWindowRect(const WindowPlacement& placement, bool anotherIsOpen, const Monitors& monitors) {
  if (!placement.valid) return {};
  const ScreenRect& r = placement.rect;
  NewWindowRect result = {r.left, r.top, difference(r.right, r.left), difference(r.bottom, r.top)};
  if (!anotherIsOpen) return result;
  constexpr int32_t step = 50;
  const Monitor& monitor = monitorOf(r, monitors);
  if (sum(r.right, step) > monitor.workArea.right || sum(r.bottom, step) > monitor.workArea.bottom) {
    result.x = monitor.area.left;
    result.y = monitor.area.top;
  } else {
    result.x = sum(r.left, step);
    result.y = sum(r.top, step);
  }
  return result;
}

std::optional<ScreenPoint> parseDialogPosition(std::string_view text, const Monitors& monitors) {
  int32_t n[2];
  if (!scanNumbers(text, n, 2)) return std::nullopt;
  const bool reachable = std::any_of(monitors.begin(), monitors.end(), [&](const Monitor& monitor) {
    return n[0] <= monitor.workArea.right && n[1] <= monitor.workArea.bottom;
  });
  if (!reachable) return std::nullopt;
  return ScreenPoint{n[0], n[1]};
}

std::string formatDialogPosition(ScreenPoint position) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%x,%x", bits(position.x), bits(position.y));
  return buffer;
}

}  // namespace merivane
