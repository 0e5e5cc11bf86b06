// The folder window: what it shows of two trees, and what its commands do to them.

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/win/wide.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

namespace fs = std::filesystem;

/// One of the program's folder windows, as a user sees it.
class FolderWindowSeen : public TextWindow {
 public:
  using TextWindow::TextWindow;

  std::string selected() const { return statusText(1); }

  HWND list() const {
    HWND found = nullptr;
    while ((found = FindWindowExA(handle(), found, WC_LISTVIEWA, nullptr)) != nullptr) {
      if (IsWindowVisible(found)) return found;
    }
    return nullptr;
  }

  /// What a screen reader says of the rows that are shown, a line each.
  std::string rows() const {
    std::string text;
    const auto count = static_cast<int>(SendMessageA(list(), LVM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) text += row(i) + '\n';
    return text;
  }

 private:
  std::string row(int index) const {
    constexpr int room = 300;
    struct Block {
      LVITEMW item;
      wchar_t text[room];
    } block = {};
    const HANDLE process = program().process();
    void* const there = VirtualAllocEx(process, nullptr, sizeof block, MEM_COMMIT, PAGE_READWRITE);
    block.item.pszText = static_cast<Block*>(there)->text;
    block.item.cchTextMax = room;
    WriteProcessMemory(process, there, &block, sizeof block, nullptr);
    SendMessageW(list(), LVM_GETITEMTEXTW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&static_cast<Block*>(there)->item));
    ReadProcessMemory(process, there, &block, sizeof block, nullptr);
    VirtualFreeEx(process, there, 0, MEM_RELEASE);
    return utf8(block.text);
  }
};

class FoldersTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    save("SessionWindow", "0,28,1e,348,276");
    removeTrees();
  }

  void TearDown() override {
    GuiTest::TearDown();
    program_.reset();
    removeTrees();
  }

  fs::path path(const std::string& name) const { return trees_ / fs::u8path(name); }

  void put(const std::string& name, const std::string& text) const {
    fs::create_directories(path(name).parent_path());
    std::ofstream(path(name), std::ios::binary) << text;
    fs::last_write_time(path(name), written_);
  }

  /// The files of a side with their texts: "a.txt=1 sub/b.txt=2 ".
  std::string tree(const char* side) const try {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(path(side))) {
      std::string line = utf8(entry.path().lexically_relative(path(side)).generic_wstring());
      if (!entry.is_directory()) {
        std::ifstream file(entry.path(), std::ios::binary);
        line += '=' + std::string(std::istreambuf_iterator<char>(file), {});
      }
      files.push_back(line);
    }
    std::ranges::sort(files);
    std::string all;
    for (const std::string& file : files) all += file + ' ';
    return all;
  } catch (const fs::filesystem_error&) {
    return "something vanished meanwhile";
  }

  FolderWindowSeen compare() {
    program_ = std::make_unique<Program>('"' + utf8(path("old").wstring()) + "\" \"" +
                                         utf8(path("new").wstring()) + '"');
    const FolderWindowSeen window(*program_, program_->window("SessionWindow"));
    EXPECT_TRUE(waitUntil([&] { return window.help().starts_with("Changed: "); })) << window.help();
    EXPECT_TRUE(window.activate());
    EXPECT_SOON(program_->focus(), window.list());
    return window;
  }

  /// Presses a key of a menu that is to open.
  void chooseFromMenu(WORD key) {
    ASSERT_NE(program_->window("#32768"), nullptr);
    press(key);
  }

 private:
  void removeTrees() const {
    if (!fs::exists(trees_)) return;
    for (const auto& entry : fs::recursive_directory_iterator(trees_)) {
      SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    fs::remove_all(trees_);
  }

  const fs::file_time_type written_ = fs::file_time_type::clock::now();
  const fs::path trees_ = fs::u8path(programFolder() + "folders");
};

TEST_F(FoldersTest, FourListsShowWhatWasFound) {
  put("old/alone.txt", "o");
  put("old/both.txt", "1");
  put("old/same.txt", "s");
  put("old/sub/deep.txt", "12");
  put("new/both.txt", "22");
  put("new/same.txt", "s");
  put("new/sub/deep.txt", "345");
  put("new/\xC3\xA4 b.txt", "n");
  const FolderWindowSeen window = compare();
  EXPECT_EQ(window.help(), "Changed: 2, Old: 1, New: 1, Same: 1");
  EXPECT_SOON(window.title(), "Merivane - [old, new]");
  EXPECT_EQ(window.rows(), "sub\\deep.txt (larger)\nboth.txt (larger)\n");
  press('2', {VK_CONTROL});
  EXPECT_SOON(window.rows(), "alone.txt\n");
  press(VK_TAB, {VK_CONTROL});
  EXPECT_SOON(window.rows(), "\xC3\xA4 b.txt\n");
  press('1', {VK_CONTROL});
  press('A', {VK_CONTROL});
  EXPECT_SOON(window.selected(), "2 entries, 5 bytes");

  // A pair in a text window, from which the other files of the list are in reach.
  press(VK_DOWN);
  press(VK_HOME);
  EXPECT_SOON(window.selected(), "1 entry, 3 bytes");
  press(VK_RETURN);
  const TextWindow text(*program_, program_->window("CompareWindow"));
  EXPECT_SOON(text.title(), "Merivane - [deep.txt, deep.txt]");
  ASSERT_TRUE(text.activate());
  press(VK_F8, {VK_CONTROL});
  EXPECT_SOON(text.title(), "Merivane - [both.txt, both.txt]");
  EXPECT_SOON(window.rows(), "sub\\deep.txt (larger), compared\nboth.txt (larger), compared\n");
  text.run(Command::compareParents);
  EXPECT_SOON(window.help(), "Changed: 2, Old: 1, New: 1, Same: 1");
  quit(window);
}

TEST_F(FoldersTest, OperationsCanBeTakenBack) {
  put("old/a b.txt", "old");
  put("new/a b.txt", "newer");
  put("old/tree/sub/1.txt", "1");
  put("old/tree/2.txt", "2");
  const std::string trees = tree("old") + '|' + tree("new");
  const FolderWindowSeen window = compare();
  const auto expect = [&](const std::string& row, const std::string& done) {
    EXPECT_SOON(window.rows(), row + '\n');
    EXPECT_SOON(tree("old") + '|' + tree("new"), done);
    press('Z', {VK_CONTROL});
    EXPECT_SOON(tree("old") + '|' + tree("new"), trees);
    EXPECT_SOON(window.rows().find(','), std::string::npos) << "no mark is left";
  };
  press(VK_LEFT, {VK_MENU});
  EXPECT_SOON(window.title(), "Merivane - [old*, new]");
  expect("a b.txt (larger), copy to old",
         "a b.txt=newer tree tree/2.txt=2 tree/sub tree/sub/1.txt=1 |a b.txt=newer ");
  press(VK_DELETE);  // both
  chooseFromMenu('B');
  expect("a b.txt (larger), delete both", "tree tree/2.txt=2 tree/sub tree/sub/1.txt=1 |");
  press('2', {VK_CONTROL});  // a folder
  press(VK_RIGHT, {VK_MENU});
  expect("tree, copy to new", trees + "tree tree/2.txt=2 tree/sub tree/sub/1.txt=1 ");
  press(VK_DELETE);
  expect("tree, delete old", "a b.txt=old |a b.txt=newer ");
  quit(window);
}

TEST_F(FoldersTest, WhatFailsLeavesBothSidesAsTheyWere) {
  put("old/a.txt", "1");
  put("new/a.txt", "22");
  const FolderWindowSeen window = compare();
  const HANDLE locked =
      CreateFileW(path("old/a.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  press(VK_LEFT, {VK_MENU});
  EXPECT_THAT(program_->answerMessage(), testing::StartsWith("Operation aborted."));
  CloseHandle(locked);
  EXPECT_EQ(tree("old") + tree("new"), "a.txt=1 a.txt=22 ");
  EXPECT_EQ(window.rows(), "a.txt (larger)\n");
  quit(window);
}

}  // namespace
}  // namespace merivane
