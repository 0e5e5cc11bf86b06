// The rules of windows: where they open and which of them a comparison goes to.

#include <gtest/gtest.h>

#include "shell/frame_layout.h"
#include "shell/window_list.h"
#include "shell/window_placement.h"

namespace merivane {
namespace {

const Monitors kMonitors = {{{0, 0, 1024, 768}, {0, 0, 1024, 740}}};

TEST(WindowPlacement, WhatIsReadMustBeWholeAndTouchTheScreen) {
  const std::pair<const char*, ScreenRect> accepted[] = {
      {"1,fffffffc,-4,64,C8", {-4, -4, 100, 200}},
      {"1, A,+b,0x64,64 and more", {10, 11, 100, 100}},
      {"1,400,0,500,64", {1024, 0, 1280, 100}},
  };
  for (const auto& [text, rect] : accepted) {
    EXPECT_EQ(parsePlacement(text, kMonitors), (WindowPlacement{rect, true, true})) << text;
  }
  EXPECT_FALSE(parsePlacement("2,a,a,64,64", kMonitors).maximized);
  for (const char* text : {"", "1,a,a,64,", "1;a;a;64;64", "g,a,a,64,64", "1,10,10,10,40", "1,401,0,500,64",
                           "1,0,ffffff9c,64,ffffffff", "1,80000000,80000000,80000000,80000000"}) {
    EXPECT_EQ(parsePlacement(text, kMonitors), WindowPlacement()) << text;
  }
  EXPECT_EQ(formatPlacement({{-4, 0, 500, 600}, true, true}), "1,fffffffc,0,1f4,258");
  EXPECT_EQ(formatDialogPosition({-1, 740}), "ffffffff,2e4");
  EXPECT_EQ(parseDialogPosition("ffffffff,2e4", kMonitors), (ScreenPoint{-1, 740}));
  EXPECT_EQ(parseDialogPosition("400,10", kMonitors), (ScreenPoint{1024, 16}));
  EXPECT_EQ(parseDialogPosition("401,0", kMonitors), std::nullopt);
}

TEST(WindowPlacement, WindowsOpenWhereTheyWereAndFurtherOnesAStepAway) {
  WindowPlacement placement;
  EXPECT_EQ(newWindowRect(placement, true, kMonitors), NewWindowRect());
  capturePlacement({{10, 20, 510, 420}, false, false}, placement);
  capturePlacement({{-32000, -32000, -31900, -31900}, false, true}, placement);
  capturePlacement({{0, 0, 1024, 740}, true, false}, placement);
  EXPECT_EQ(placement, (WindowPlacement{{10, 20, 510, 420}, true, true}));

  EXPECT_EQ(newWindowRect(placement, false, kMonitors), (NewWindowRect{10, 20, 500, 400}));
  placement.rect = {474, 290, 974, 690};
  EXPECT_EQ(newWindowRect(placement, true, kMonitors), (NewWindowRect{524, 340, 500, 400}));
  for (const ScreenRect& rect : {ScreenRect{475, 20, 975, 420}, {10, 291, 510, 691}}) {
    EXPECT_EQ(newWindowRect({rect, true, false}, true, kMonitors), (NewWindowRect{0, 0, 500, 400}));
  }
}

TEST(WindowPlacement, EveryMonitorCounts) {
  // The second is left of the first and above it, its task bar at its left.
  const Monitors both = {kMonitors[0], {{-1920, -200, 0, 880}, {-1860, -200, 0, 880}}};
  const char* const onSecond = "0,fffff9c0,0,fffffd80,258";
  EXPECT_EQ(parsePlacement(onSecond, kMonitors), WindowPlacement()) << "it has been taken away";
  const WindowPlacement placement = parsePlacement(onSecond, both);
  EXPECT_EQ(placement.rect, (ScreenRect{-1600, 0, -640, 600}));
  EXPECT_EQ(newWindowRect(placement, false, both), (NewWindowRect{-1600, 0, 960, 600}));
  const std::pair<ScreenRect, ScreenPoint> next[] = {
      {placement.rect, {-1550, 50}},            // beside the last one
      {{-1000, 300, -100, 700}, {-950, 350}},   // below the first monitor's edge, not the second's
      {{-1000, 300, -40, 900}, {-1920, -200}},  // no room: the corner of the same monitor
      {{-100, 0, 800, 600}, {-50, 50}},         // mostly on the first
      {{3000, 0, 3900, 600}, {0, 0}},           // on none
  };
  for (const auto& [last, at] : next) {
    const NewWindowRect rect = newWindowRect({last, true, false}, true, both);
    EXPECT_EQ((ScreenPoint{rect.x, rect.y}), at) << last.left;
  }
  EXPECT_EQ(parseDialogPosition("fffff9c0,300", kMonitors), std::nullopt);
  EXPECT_EQ(parseDialogPosition("fffff9c0,300", both), (ScreenPoint{-1600, 768}));
}

TEST(FrameLayout, EmptyPartsOfTheStatusBarLeaveTheirRoomToTheHelp) {
  EXPECT_EQ(withoutEmptyParts({100, 180, 230, 300}, 0b0000), (std::array{100, 180, 230, 300}));
  EXPECT_EQ(withoutEmptyParts({100, 180, 230, 300}, 0b1100), (std::array{220, 300, 300, 300}));
  EXPECT_EQ(withoutEmptyParts({-50, 30, 100, 300}, 0b0000), (std::array{0, 30, 100, 300}));
}

TEST(WindowList, AComparisonFindsItsWindow) {
  const std::vector<ListedWindow> none, used = {{1, false}, {2, false}},
                                        fresh = {{1, false}, {2, true}, {3, true}};
  using Window = std::optional<WindowId>;
  const std::tuple<std::vector<ListedWindow>, WindowChoice, Window, Window> cases[] = {
      // Target, force and reuse, and the windows that texts and folders go to, if not to new ones.
      {none, {9, true, true}, 9, {}}, {used, {{}, false, false}, {}, {}}, {used, {{}, false, true}, 1, 1},
      {used, {9, false, true}, 9, 9}, {fresh, {{}, false, false}, 2, 2},  {fresh, {{}, true, true}, 2, {}},
  };
  for (const auto& [windows, choice, text, folder] : cases) {
    EXPECT_EQ(chooseWindow(WindowKind::text, windows, choice), text);
    EXPECT_EQ(chooseWindow(WindowKind::folder, windows, choice), folder);
  }
}

}  // namespace
}  // namespace merivane
