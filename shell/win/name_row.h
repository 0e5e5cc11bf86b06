#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "shell/frame_layout.h"
#include "shell/win/control_look.h"
#include "shell/win/name_box.h"
#include "shell/win/tool_tips.h"
#include "shell/window_kind.h"

namespace merivane {

/// The row of two names at the top of a window of either kind: for each side a box, a Browse button and an
/// Up One Folder button. The buttons send their commands to the window.
class NameRow {
 public:
  /// `settings`, whose histories the boxes show, must outlive the row.
  NameRow(const NameRowTraits& traits, Settings& settings) : traits_(traits), settings_(settings) {}

  /// Creates the controls in a window.
  void create(HWND window, ToolTips& tips);

  /// Takes the fonts, icons and resolution of its window; `look` must last until it takes another.
  void setLook(const ControlLook& look);

  int height() const;
  void place(const NameRowLayout& layout);

  NameBox& box(int side) { return boxes_[side]; }
  std::string text(int side) const { return boxes_[side].text(); }
  void setText(int side, const std::string& text) { boxes_[side].setText(text); }

  /// The side whose box has this number; none for any other control.
  std::optional<int> sideOf(int control) const;

  /// The box that is being edited, if one is.
  const NameBox* focusedBox() const;
  NameBox* focusedBox();

  /// Asks for a name and puts it into a side's box.
  void browse(int side);

  /// Cuts a side's name down to its folder.
  void goUpOneFolder(int side);

 private:
  const NameRowTraits& traits_;
  Settings& settings_;
  NameBox boxes_[2];
  Icon browseIcon_;
  Icon upIcon_;
  HWND browseButtons_[2] = {};
  HWND upButtons_[2] = {};
  int dpi_ = 96;
  NameRowLayout layout_;  // as it stands
};

}  // namespace merivane
