// Printing and the preview, on a PostScript printer whose pages become text.

#include <filesystem>
#include <regex>
#include <sstream>

#include "tests/win/gui_test.h"
#include "tests/win/support/test_printer.h"

namespace merivane {
namespace {

/// What pdftotext tells of a page.
using Page = std::vector<std::string>;

class PrintingTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (!canInstallTestPrinter()) GTEST_SKIP() << "needs Wine's spooler";
    save("ShowLineNumbers", DWORD{0});
    // What is printed becomes a PDF file, and that text, whose name comes when it is whole.
    const std::string pdf = outsideName("printed.pdf"), text = outsideName("printed.txt");
    const std::string part = outsideName("printed.part");
    ASSERT_TRUE(installTestPrinter("ps2pdf - " + pdf + " && pdftotext -layout " + pdf + " " + part +
                                   " && mv " + part + " " + text));
  }

  static std::string corpus(const std::string& name) { return "s:\\shared\\corpus\\text\\" + name; }

  TextWindow startWithPair(const std::string& name, const std::string& type) {
    return startWith(corpus(name) + "-a." + type, corpus(name) + "-b." + type);
  }

  std::vector<Page> printed() {
    const auto there = [] { return std::filesystem::exists("printed.txt"); };
    EXPECT_TRUE(waitUntil(there) || waitUntil(there) || waitUntil(there)) << "many pages take their time";
    std::vector<Page> pages;
    // One glyph serves two characters: pdftotext may tell a hyphen as a soft one.
    std::istringstream text(std::regex_replace(readFile("printed.txt"), std::regex("\xC2\xAD"), "-"));
    for (std::string each; std::getline(text, each, '\f');) {
      std::istringstream lines(each);
      Page& page = pages.emplace_back();
      for (std::string line; std::getline(lines, line);) {
        if (line.find_first_not_of(" \r") != std::string::npos) page.push_back(line);
      }
    }
    std::filesystem::remove("printed.txt");
    return pages;
  }

  std::vector<Page> print(const TextWindow& window) {
    window.run(Command::print);
    EXPECT_TRUE(pressButton(program_->dialog("Print"), IDOK));
    return printed();
  }
};

TEST_F(PrintingTest, PairsOfTheCorpusOnPages) {
  struct Case {
    const char* name;
    const char* type;
    DWORD scale;
    const char* portrait;
    size_t rowsAPage;  // on A4 at 600 dpi
  };
  for (const Case& c : {Case{"readme", "md", 100, "true", 77}, {"database", "cc", 50, "false", 108}}) {
    save("PrintScale", c.scale);
    save("PrintPortrait", c.portrait);
    const TextWindow window = startWithPair(c.name, c.type);
    const std::vector<Page> pages = print(window);
    ASSERT_GT(pages.size(), 10u);
    const std::string of = " of " + std::to_string(pages.size());
    for (size_t i = 0; i < pages.size(); ++i) {
      const Page& page = pages[i];
      const bool last = i + 1 == pages.size();
      ASSERT_GT(page.size(), 2u);
      EXPECT_EQ(page[0], std::string(c.name) + "-a." + c.type + ", " + c.name + "-b." + c.type);
      EXPECT_THAT(page.back(), testing::EndsWith("Page " + std::to_string(i + 1) + of));
      EXPECT_EQ(std::stoul(page[1]), i * c.rowsAPage + 1);
      EXPECT_TRUE(last || page.size() == c.rowsAPage + 2) << page.size();
      EXPECT_EQ(std::stoul(page[page.size() - 2]), i * c.rowsAPage + page.size() - 2);
    }
    const std::string text = readFile(corpus(c.name) + "-a." + c.type);
    EXPECT_THAT(pages[0][1], testing::HasSubstr(text.substr(0, std::min<size_t>(text.find('\n'), 20))));
    quit(window);
  }
}

TEST_F(PrintingTest, DifferencesOnly) {
  save("PrintHow", 2);
  const TextWindow window = startWith(writeFile("left.txt", "same\none line\nsame\nsame\nlast\n"),
                                      writeFile("right.txt", "same\ntwo line\nsame\nsame\nmore\nlast\n"));
  const std::vector<Page> pages = print(window);
  ASSERT_EQ(pages.size(), 1u);
  ASSERT_EQ(pages[0].size(), 6u);
  EXPECT_THAT(pages[0][1], testing::ContainsRegex("Line 2 +Line 2"));
  EXPECT_THAT(pages[0][2], testing::ContainsRegex("2 one line +2 two line"));
  EXPECT_THAT(pages[0][3], testing::ContainsRegex("^ +Line 5"));
  EXPECT_THAT(pages[0][4], testing::ContainsRegex("5 +5 more"));
  quit(window);
}

TEST_F(PrintingTest, Preview) {
  const TextWindow window = startWithPair("database", "cc");
  window.run(Command::printPreview);
  const HWND preview = program_->dialog("Print preview");
  ASSERT_NE(preview, nullptr);
  const HWND pane = childOf(preview, "PreviewPane");
  const auto item = [&](int id) { return GetDlgItem(preview, id); };
  const auto page = [&] { return textOf(item(104)); };
  const auto buttons = [&] {
    return std::pair(IsWindowEnabled(item(102)) != 0, IsWindowEnabled(item(103)) != 0);
  };
  EXPECT_SOON(page(), "Page 1 of 23");
  EXPECT_EQ(buttons(), std::pair(false, true));
  SendMessageA(item(103), BM_CLICK, 0, 0);
  EXPECT_EQ(page(), "Page 2 of 23");
  EXPECT_EQ(buttons(), std::pair(true, true));
  SendMessageA(pane, WM_KEYDOWN, VK_END, 0);
  EXPECT_EQ(page(), "Page 23 of 23");
  EXPECT_EQ(buttons(), std::pair(true, false));
  SendMessageA(item(105), CB_SETCURSEL, 6, 0);  // 50 %
  SendMessageA(preview, WM_COMMAND, MAKEWPARAM(105, CBN_SELCHANGE), 0);
  EXPECT_EQ(page(), "Page 11 of 11");
  SendMessageA(pane, WM_CHAR, '+', 0);
  EXPECT_GE(SendMessageA(item(106), CB_GETCURSEL, 0, 0), 2) << "a percentage";
  // Printing from here, cancelled, leaves everything usable.
  PostMessageA(item(100), BM_CLICK, 0, 0);
  EXPECT_TRUE(pressButton(program_->dialog("Print"), IDCANCEL));
  EXPECT_FALSE(IsWindow(preview));
  EXPECT_SOON(IsWindowEnabled(window.handle()), TRUE);
  quit(window);
  EXPECT_EQ(saved("PrintScale"), "# 50");
  EXPECT_NE(saved("PreviewWindow"), "(none)");
}

TEST_F(PrintingTest, CancelledAndClosedInTheMiddle) {
  const TextWindow window = startWithPair("header", "hpp");
  const auto startPrinting = [&] {
    window.run(Command::print);
    EXPECT_TRUE(pressButton(program_->dialog("Print"), IDOK));
    const HWND box = program_->dialog("Merivane");
    EXPECT_TRUE(waitUntil([&] { return textOf(GetDlgItem(box, 101)).starts_with("Page "); }));
    EXPECT_FALSE(IsWindowEnabled(window.handle()));
    return box;
  };
  EXPECT_TRUE(pressButton(startPrinting(), IDCANCEL));
  EXPECT_SOON(IsWindowEnabled(window.handle()), TRUE);
  EXPECT_LT(printed().size(), 300u);
  EXPECT_TRUE(program_->windows("#32770").empty()) << "no message";
  startPrinting();
  quit(window);
}

}  // namespace
}  // namespace merivane
