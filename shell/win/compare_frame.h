#pragma once

#include <windows.h>

#include "mergeview/win/splitter_thumb.h"
#include "mergeview/win/summary.h"
#include "mergeview/win/text_view.h"
#include "shell/frame_layout.h"
#include "shell/settings.h"
#include "shell/win/button_icons.h"
#include "shell/win/name_box.h"
#include "shell/win/status_bar.h"
#include "shell/win/tool_bar.h"
#include "shell/win/tool_tips.h"

namespace merivane {

/// The numbers of the two name boxes among a text window's controls.
inline constexpr int kNameBoxIds[2] = {101, 102};

/// Everything that stands in a text window, and where.
class CompareFrame {
 public:
  /// `history` must outlive the frame.
  CompareFrame(Settings& settings, TextViewOwner& owner, UndoHistory& history);

  /// Makes the controls, in the order of the Tab key. False when the panes cannot be had.
  bool create(HWND window);

  /// Lays out the whole window.
  void layOut();

  /// Lays out what stands along the split between the panes, and sets the horizontal scroll bars.
  void followPanes();

  /// The name box that is being edited, if one is.
  const NameBox* focusedNameBox() const;

  /// The side of a horizontal scroll bar.
  int sideOfBar(HWND bar) const { return bar == scrollBars_[0] ? 0 : 1; }

  ToolBar toolBar;
  StatusBar statusBar;
  ToolTips toolTips;
  NameBox nameBoxes[2];
  TextView view;
  Summary summary;
  SplitterThumb thumb;

 private:
  HWND makeControl(const char* controlClass, DWORD style, int id);
  HWND makeButton(Command command, const Icon& icon);
  FrameMetrics metrics() const;
  void setScrollBar(int side);

  Settings& settings_;
  HWND window_ = nullptr;
  ButtonIcons icons_;
  Icon browseIcon_ = icons_.icon(IconId::browse);
  Icon upIcon_ = icons_.icon(IconId::upOneFolder);
  HWND browseButtons_[2] = {};
  HWND upButtons_[2] = {};
  HWND scrollBars_[2] = {};
  SplitLayout layout_;  // as it stands
};

}  // namespace merivane
