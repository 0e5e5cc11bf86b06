#pragma once

#include <array>
#include <cstdint>

#include "base/texts.h"
#include "shell/commands.h"
#include "shell/settings.h"

namespace merivane {

/// The two kinds of top-level window: one compares two files, the other two folders.
enum class WindowKind { text, folder };
inline constexpr int kWindowKinds = 2;

/// The row of two names at the top of a window, as far as its kind decides about it.
struct NameRowTraits {
  uint32_t dropKinds;                   // that the boxes accept; DropKinds bits
  HistoryList Settings::*histories[2];  // that the boxes show
  Command browse[2];                    // of the Browse buttons
  TextId browseTitles[2];
  TextId labels[2];  // what the boxes are called
};

/// What a kind of window is made of, as far as that is data.
struct WindowTraits {
  const char* windowClass;
  int menu;  // the numbers of its resources
  int accelerators;
  WindowPlacement Settings::*placement;  // where the next one opens
  bool Settings::*reuse;                 // no more than one is opened
  Command firstListed;                   // of the Window menu's entries for this kind
  std::array<int32_t, 4> (*statusEdges)(int32_t width, int32_t resolution);  // see shell/frame_layout.h
  NameRowTraits names;
};

const WindowTraits& traitsOf(WindowKind kind);

}  // namespace merivane
