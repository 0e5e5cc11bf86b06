#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "shell/commands.h"
#include "shell/window_kind.h"

namespace merivane {

/// Tells windows apart; the window's handle serves.
using WindowId = uintptr_t;

/// An open window of a kind, in the order of its list: a new one is put at the end, so that the numbers of
/// the others in the Window menu stay. Fresh until its first comparison has been shown.
struct ListedWindow {
  WindowId id = 0;
  bool fresh = true;
};

/// What decides which window a comparison goes to.
struct WindowChoice {
  std::optional<WindowId> target;  // the window that was asked
  bool force = false;              // prefers a new window to one that is in use
  bool reuse = false;              // the kind's "do not open more than one" setting
};

/// Returns the window of a kind in which two names are compared; none asks for a new one. The kinds differ on
/// purpose: with `force` folders always get a new window, files still the target or a fresh one.
std::optional<WindowId> chooseWindow(WindowKind kind, std::span<const ListedWindow> windows,
                                     const WindowChoice& choice);

/// What the Window menu says of an open window.
struct MenuWindow {
  std::string title;
  bool current = false;
};

struct WindowMenuItem {
  enum class Kind { command, placeholder, separator };

  Kind kind = Kind::separator;  // a placeholder is greyed and has no command
  Command command = {};
  std::string text;  // ready for a menu: a plain '&' is doubled
  bool checked = false;

  bool operator==(const WindowMenuItem&) const = default;
};

/// What follows the first four items of the Window menu, which stay.
std::vector<WindowMenuItem> windowMenuItems(std::span<const MenuWindow> folderWindows,
                                            std::span<const MenuWindow> textWindows);

/// Which listed window a command names; `index` may lie beyond the list's end.
struct ListedPlace {
  WindowKind kind = WindowKind::text;
  size_t index = 0;

  bool operator==(const ListedPlace&) const = default;
};

/// Returns none for any other command.
std::optional<ListedPlace> listedPlace(Command command);

/// The kind of window that compares two dropped items, which are two of one kind; none for any other drop.
/// `items` are their kinds, shortcuts resolved.
std::optional<WindowKind> comparedByDrop(std::span<const FileKind> items);

/// The half of a window `width` pixels wide that x lies in.
constexpr int dropSide(int32_t x, int32_t width) { return x < width / 2 ? 0 : 1; }

}  // namespace merivane
