#include "shell/window_list.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(WindowList, AComparisonFindsItsWindow) {
  const std::vector<ListedWindow> none, used = {{1, false}, {2, false}},
                                        fresh = {{1, false}, {2, true}, {3, true}};
  const std::optional<WindowId> target = 9, noTarget, newWindow;
  struct Case {
    const std::vector<ListedWindow>& windows;
    WindowChoice choice;
    std::optional<WindowId> text, folder;
  };
  const Case cases[] = {
      // target, force, reuse                 text window     folder window
      {none, {noTarget, false, false}, newWindow, newWindow},
      {none, {noTarget, false, true}, newWindow, newWindow},
      {none, {target, true, true}, target, newWindow},
      {used, {noTarget, false, false}, newWindow, newWindow},
      {used, {noTarget, false, true}, 1, 1},
      {used, {noTarget, true, true}, newWindow, newWindow},
      {used, {target, false, false}, target, target},
      {used, {target, false, true}, target, target},
      {fresh, {noTarget, false, false}, 2, 2},
      {fresh, {noTarget, false, true}, 1, 1},
      {fresh, {noTarget, true, true}, 2, newWindow},
      {fresh, {noTarget, true, false}, 2, newWindow},
      {fresh, {target, true, false}, target, newWindow},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(chooseTextWindow(c.windows, c.choice), c.text) << &c - cases;
    EXPECT_EQ(chooseFolderWindow(c.windows, c.choice), c.folder) << &c - cases;
  }
}

TEST(WindowList, TheMenuListsFoldersThenTexts) {
  using Kind = WindowMenuItem::Kind;
  const MenuWindow folders[] = {{"old", false}, {"A & B", true}};
  const std::vector<WindowMenuItem> some = windowMenuItems(folders, {});
  const std::vector<WindowMenuItem> expected = {
      {Kind::command, static_cast<Command>(59000), "old", false},
      {Kind::command, static_cast<Command>(59001), "A && B", true},
      {},
      {Kind::placeholder, {}, "(no text windows)", false},
  };
  EXPECT_EQ(some, expected);

  const std::vector<MenuWindow> many(600);
  const std::vector<WindowMenuItem> full = windowMenuItems({}, many);
  EXPECT_EQ(full.front().text, "(no folder windows)");
  EXPECT_EQ(full.back().command, static_cast<Command>(59999));
  EXPECT_EQ(full.size(), 502u);
}

TEST(WindowList, AMenuNumberNamesAPlace) {
  const auto place = [](int number) { return listedPlace(static_cast<Command>(number)); };
  EXPECT_EQ(place(58999), std::nullopt);
  EXPECT_EQ(place(59000), (ListedPlace{false, 0}));
  EXPECT_EQ(place(59499), (ListedPlace{false, 499}));
  EXPECT_EQ(place(59500), (ListedPlace{true, 0}));
  EXPECT_EQ(place(59999), (ListedPlace{true, 499}));
  EXPECT_EQ(place(60000), std::nullopt);
}

TEST(WindowList, OnlyPairsOfAKindAreCompared) {
  using enum FileKind;
  struct Case {
    std::vector<FileKind> items;
    TextWindowDrop drop;
  };
  const Case cases[] = {{{}, TextWindowDrop::nothing},
                        {{file}, TextWindowDrop::intoNameBox},
                        {{file, file}, TextWindowDrop::compareFiles},
                        {{folder, folder}, TextWindowDrop::compareFolders},
                        {{file, folder}, TextWindowDrop::nothing},
                        {{none, none}, TextWindowDrop::nothing},
                        {{file, file, file}, TextWindowDrop::nothing}};
  for (const Case& c : cases) EXPECT_EQ(textWindowDrop(c.items), c.drop) << &c - cases;
}

}  // namespace
}  // namespace merivane
