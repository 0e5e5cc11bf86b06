// Files dropped on a text window and on its name boxes.

#include <gtest/gtest.h>

#include "tests/win/gui_test.h"
#include "tests/win/support/drops.h"

namespace merivane {
namespace {

class DropsTest : public GuiTest {
 protected:
  const std::string a_ = writeFile("a.txt", "1\r\n2\r\n");
  const std::string b_ = writeFile("b.txt", "1\r\n");
  const std::string folder_ = programFolder();
};

TEST_F(DropsTest, TwoFilesAreComparedInThisWindow) {
  const TextWindow window = start();
  dropFiles(*program_, window.handle(), {50, 200}, {a_, b_});
  EXPECT_EQ(window.compared(), "Diffs: 1, Lines: 1");
  EXPECT_EQ(window.title(), "Merivane - [a.txt, b.txt]");
  EXPECT_EQ(program_->windows("CompareWindow").size(), 1u);
  // Neither three nor one and a folder mean anything.
  dropFiles(*program_, window.handle(), {50, 200}, {b_, b_, b_});
  dropFiles(*program_, window.handle(), {50, 200}, {b_, folder_});
  dropFiles(*program_, window.handle(), {50, 200}, {b_, a_});
  EXPECT_SOON(window.title(), "Merivane - [b.txt, a.txt]");
}

TEST_F(DropsTest, OneFileGoesIntoTheBoxOfItsHalf) {
  const TextWindow window = start();
  RECT client = {};
  GetClientRect(window.handle(), &client);
  dropFiles(*program_, window.handle(), {client.right - 50, 200}, {a_});
  EXPECT_SOON(window.name(1), a_);
  EXPECT_EQ(window.name(0), "");
  dropFiles(*program_, window.handle(), {50, 200}, {b_});
  EXPECT_SOON(window.name(0), b_);
}

TEST_F(DropsTest, OnANameBox) {
  const TextWindow window = start();
  ASSERT_TRUE(window.activate());
  dropFiles(*program_, window.nameBox(1), {5, 5}, {a_});
  EXPECT_SOON(window.name(1), a_);
  EXPECT_SOON(program_->focus(), window.nameEdit(1));
  DWORD begin = 0;
  DWORD end = 0;
  SendMessageA(window.nameEdit(1), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
               reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(begin, a_.size());
  EXPECT_EQ(end, a_.size());

  dropFiles(*program_, window.nameBox(0), {5, 5}, {folder_});
  dropFiles(*program_, window.nameBox(1), {5, 5}, {b_});
  EXPECT_SOON(window.name(1), b_);
  EXPECT_EQ(window.name(0), "") << "folders are not taken";
}

}  // namespace
}  // namespace merivane
