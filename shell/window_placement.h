#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/settings_store.h"

namespace merivane {

/// A rectangle in pixels of the screen, without its right and bottom edges.
struct ScreenRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  bool operator==(const ScreenRect&) const = default;
};

/// A monitor of the desktop, whose origin is the primary one's corner.
struct Monitor {
  ScreenRect area;
  ScreenRect workArea;  // without task bars
};

/// The user's monitors, the primary one first; never none.
using Monitors = std::vector<Monitor>;

struct ScreenPoint {
  int32_t x = 0;
  int32_t y = 0;

  bool operator==(const ScreenPoint&) const = default;
};

/// Leaves a coordinate to the system, as window creation takes it.
inline constexpr int32_t kUseDefault = INT32_MIN;

/// Where the windows of a kind open: the restored rectangle, and whether they were maximized.
struct WindowPlacement {
  ScreenRect rect = {kUseDefault, kUseDefault, kUseDefault, kUseDefault};
  bool valid = false;  // rect holds a saved position
  bool maximized = false;

  bool operator==(const WindowPlacement&) const = default;
};

/// "1,32,32,1f4,258": the maximized flag and the rectangle, hexadecimal, negative ones as 32-bit numbers.
std::string formatPlacement(const WindowPlacement& placement);

/// Returns a placement without a position unless the text has all five fields and its rectangle is not empty
/// and touches a monitor's work area.
WindowPlacement parsePlacement(std::string_view text, const Monitors& monitors);

/// Parses the stored text; the placement has no position when there is none.
void LoadPlacement(const SettingsStore& store, const std::string& name, const Monitors& monitors,
                   WindowPlacement& placement);
void SavePlacement(SettingsStore& store, const std::string& name, const WindowPlacement& placement);

/// How a live window stands.
struct WindowStance {
  ScreenRect rect;  // on the screen now
  bool maximized = false;
  bool minimized = false;
};

/// Takes over a window's placement. A maximized or minimized window leaves the rectangle as it was captured
/// last.
void capturePlacement(const WindowStance& window, WindowPlacement& placement);

/// The rectangle that a window is created with; the system chooses it where all is kUseDefault.
struct NewWindowRect {
  int32_t x = kUseDefault;
  int32_t y = kUseDefault;
  int32_t width = kUseDefault;
  int32_t height = kUseDefault;

  bool operator==(const NewWindowRect&) const = default;
};

/// The first window of a kind opens where the last one stood; a further one 50 pixels right of and below
/// that, or at the corner of the monitor where it would leave the work area at the right or the bottom. The
/// monitor is the one with the greatest part of where the last one stood.
NewWindowRect newWindowRect(const WindowPlacement& placement, bool anotherIsOpen, const Monitors& monitors);

/// Returns where a dialog stood, from "left,top" in hexadecimal; none, which means centred, unless both
/// fields are there and the point is not beyond the right or bottom edge of every monitor's work area.
std::optional<ScreenPoint> parseDialogPosition(std::string_view text, const Monitors& monitors);
std::string formatDialogPosition(ScreenPoint position);

}  // namespace merivane
