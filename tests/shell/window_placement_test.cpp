#include "shell/window_placement.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/memory_values.h"

namespace merivane {
namespace {

constexpr ScreenRect kWorkArea = {0, 0, 1024, 740};

TEST(WindowPlacement, WhatIsReadMustBeWholeAndOnTheScreen) {
  struct Case {
    const char* text;
    bool valid;
    bool maximized;
  };
  const Case cases[] = {
      {"0,a,a,64,64", true, false},
      {"1,a,a,64,64", true, true},
      {"2,a,a,64,64", true, false},
      {"1, A,+a,0x64,64 and more", true, true},
      {"", false, false},
      {"1,a,a,64", false, false},
      {"1,a,a,64,", false, false},
      {"1;a;a;64;64", false, false},
      {"1,a,a ,64,64", false, false},
      {"g,a,a,64,64", false, false},
      {"0,10,10,10,40", false, false},  // no width
      {"0,10,40,20,10", false, false},  // upside down
      {"0,400,0,500,64", true, false},  // starts on the right edge
      {"0,401,0,500,64", false, false},
      {"0,0,2e4,64,300", true, false},
      {"0,0,2e5,64,300", false, false},
      {"0,ffffff9c,0,0,64", true, false},  // ends on the left edge
      {"0,ffffff9c,0,ffffffff,64", false, false},
      {"0,0,ffffff9c,64,0", true, false},
      {"0,0,ffffff9c,64,ffffffff", false, false},
      {"0,80000000,80000000,80000000,80000000", false, false},
  };
  for (const Case& c : cases) {
    const WindowPlacement placement = parsePlacement(c.text, kWorkArea);
    EXPECT_EQ(placement.valid, c.valid) << c.text;
    EXPECT_EQ(placement.maximized, c.maximized) << c.text;
    EXPECT_TRUE(c.valid || placement == WindowPlacement()) << c.text;
  }
  EXPECT_EQ(parsePlacement("1,fffffffc,-4,64,c8", kWorkArea).rect, (ScreenRect{-4, -4, 100, 200}));
}

TEST(WindowPlacement, SavedOnesComeBack) {
  EXPECT_EQ(formatPlacement({{-4, 0, 500, 600}, true, true}), "1,fffffffc,0,1f4,258");
  MemoryValues values;
  SettingsStore store(values);
  std::mt19937 random(1);
  const auto number = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
  for (int i = 0; i < 200; ++i) {
    WindowPlacement saved, loaded;
    saved.rect.left = number(-500, 1024);
    saved.rect.top = number(-500, 740);
    saved.rect.right = number(std::max(0, saved.rect.left + 1), 2000);
    saved.rect.bottom = number(std::max(0, saved.rect.top + 1), 2000);
    saved.valid = true;
    saved.maximized = number(0, 1) == 1;
    SavePlacement(store, "W", saved);
    LoadPlacement(store, "W", kWorkArea, loaded);
    EXPECT_EQ(loaded, saved);
  }
  WindowPlacement placement = {{1, 2, 3, 4}, true, true};
  LoadPlacement(store, "Absent", kWorkArea, placement);
  EXPECT_EQ(placement, WindowPlacement());
}

TEST(WindowPlacement, AMaximizedWindowKeepsTheRectangleBefore) {
  WindowPlacement placement;
  capturePlacement({{0, 0, 1024, 740}, true, false}, placement);
  EXPECT_EQ(placement, (WindowPlacement{WindowPlacement().rect, false, true}));
  capturePlacement({{10, 20, 30, 40}, false, false}, placement);
  EXPECT_EQ(placement, (WindowPlacement{{10, 20, 30, 40}, true, false}));
  capturePlacement({{-32000, -32000, -31900, -31900}, false, true}, placement);
  capturePlacement({{0, 0, 1024, 740}, true, false}, placement);
  EXPECT_EQ(placement, (WindowPlacement{{10, 20, 30, 40}, true, true}));
}

TEST(WindowPlacement, FurtherWindowsOpenAStepAway) {
  const auto opened = [](const ScreenRect& saved, bool another) {
    return newWindowRect({saved, true, false}, another, kWorkArea);
  };
  EXPECT_EQ(newWindowRect({}, false, kWorkArea), NewWindowRect());
  EXPECT_EQ(newWindowRect({}, true, kWorkArea), NewWindowRect());
  EXPECT_EQ(opened({10, 20, 510, 420}, false), (NewWindowRect{10, 20, 500, 400}));
  EXPECT_EQ(opened({10, 20, 510, 420}, true), (NewWindowRect{60, 70, 500, 400}));
  EXPECT_EQ(opened({474, 290, 974, 690}, true), (NewWindowRect{524, 340, 500, 400}));
  EXPECT_EQ(opened({475, 20, 975, 420}, true), (NewWindowRect{0, 0, 500, 400}));
  EXPECT_EQ(opened({10, 291, 510, 691}, true), (NewWindowRect{0, 0, 500, 400}));
}

TEST(WindowPlacement, ADialogStaysOffTheFarEdges) {
  EXPECT_EQ(formatDialogPosition({-1, 16}), "ffffffff,10");
  EXPECT_EQ(parseDialogPosition("ffffffff,10", kWorkArea), (ScreenPoint{-1, 16}));
  EXPECT_EQ(parseDialogPosition("400,2e4", kWorkArea), (ScreenPoint{1024, 740}));
  for (const char* text : {"", "10", "10,", "401,0", "0,2e5"}) {
    EXPECT_EQ(parseDialogPosition(text, kWorkArea), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace merivane
