// Printing and the preview, on a PostScript printer whose pages become text.

#include <windows.h>

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

  void print(const TextWindow& window) {
    window.run(Command::print);
    EXPECT_TRUE(pressButton(program_->dialog("Print"), IDOK));
  }
};

TEST_F(PrintingTest, PairsOfTheCorpusOnPages) {
  const std::tuple<std::string, std::string, DWORD, std::string, size_t> cases[] = {
      {"readme", "md", 100, "true", 77}, {"database", "cc", 50, "false", 108}};
  for (const auto& [name, type, scale, portrait, rowsAPage] : cases) {  // on A4 at 600 dpi
    save("PrintScale", scale);
    save("PrintPortrait", portrait);
    const TextWindow window = startWithPair(name, type);
    print(window);
    const std::vector<Page> pages = printed();
    ASSERT_GT(pages.size(), 10u);
    const std::string of = " of " + std::to_string(pages.size());
    for (size_t i = 0; i < pages.size(); ++i) {
      const Page& page = pages[i];
      const bool last = i + 1 == pages.size();
      ASSERT_GT(page.size(), 2u);
      EXPECT_EQ(page[0], name + "-a." + type + ", " + name + "-b." + type);
      EXPECT_THAT(page.back(), testing::EndsWith("Page " + std::to_string(i + 1) + of));
      EXPECT_EQ(std::stoul(page[1]), i * rowsAPage + 1);
      EXPECT_TRUE(last || page.size() == rowsAPage + 2) << page.size();
      EXPECT_EQ(std::stoul(page[page.size() - 2]), i * rowsAPage + page.size() - 2);
    }
    const std::string text = readFile(corpus(name) + "-a." + type);
    EXPECT_THAT(pages[0][1], testing::HasSubstr(text.substr(0, std::min<size_t>(text.find('\n'), 20))));
    quit(window);
  }
}

TEST_F(PrintingTest, Preview) {
  const TextWindow window = startWithPair("database", "cc");
  window.run(Command::printPreview);
  const HWND preview = program_->dialog("Print preview");
  ASSERT_NE(preview, nullptr);
  const HWND pane = childOf(preview, "PreviewPane");
  const auto item = [&](int id) { return GetDlgItem(preview, id); };
  /// The page, between the signs of the buttons that lead on from it.
  const auto page = [&] {
    const auto sign = [&](int id, const char* text) { return IsWindowEnabled(item(id)) ? text : ""; };
    return sign(102, "<< ") + textOf(item(104)) + sign(103, " >>");
  };
  EXPECT_SOON(page(), "Page 1 of 23 >>");
  SendMessageA(item(103), BM_CLICK, 0, 0);
  EXPECT_EQ(page(), "<< Page 2 of 23 >>");
  SendMessageA(pane, WM_KEYDOWN, VK_END, 0);
  EXPECT_EQ(page(), "<< Page 23 of 23");
  SendMessageA(item(105), CB_SETCURSEL, 6, 0);  // 50 %
  SendMessageA(preview, WM_COMMAND, MAKEWPARAM(105, CBN_SELCHANGE), 0);
  EXPECT_EQ(page(), "<< Page 11 of 11");
  // Printing from here, cancelled, leaves everything usable.
  PostMessageA(item(100), BM_CLICK, 0, 0);
  EXPECT_TRUE(pressButton(program_->dialog("Print"), IDCANCEL));
  EXPECT_SOON(IsWindowEnabled(window.handle()), TRUE);
  quit(window);
  EXPECT_EQ(saved("PrintScale"), "# 50");
}

TEST_F(PrintingTest, CancelledAndClosedInTheMiddle) {
  const TextWindow window = startWithPair("header", "hpp");
  const auto startPrinting = [&] {
    print(window);
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

TEST_F(PrintingTest, WithoutAPrinter) {
  RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows NT\\CurrentVersion\\Windows",
                     L"Device");
  const TextWindow window = startWithPair("readme", "md");
  for (const Command command : {Command::print, Command::printPreview}) {
    window.run(command);
    EXPECT_EQ(
        program_->answerMessage(),
        "There is no default printer. Add a printer, or make one the default, in the settings of Windows.");
    EXPECT_TRUE(IsWindowEnabled(window.handle()));
  }
  quit(window);
}

}  // namespace
}  // namespace merivane
