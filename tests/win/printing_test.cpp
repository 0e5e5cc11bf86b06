// Printing and the preview, on a PostScript printer whose pages become text.

#include <windows.h>

#include <winspool.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "base/win/wide.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

/// A printer as its driver wants it described.
constexpr char kDescription[] = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*ModelName: "Merivane test printer"
*NickName: "Merivane test printer"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*TTRasterizer: Type42
*DefaultResolution: 600dpi
*LandscapeOrientation: Plus90
*OpenUI *PageSize: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize [595 842]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize [595 842]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "12 12 583 830"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*DefaultFont: Courier
*Font Courier: Standard "(002.004S)" Standard ROM
)ppd";

const FARPROC outsideNameOf = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");

/// A file's name as the system outside Wine has it, quoted for a command.
std::string outsideName(const std::string& name) {
  using NameOf = char*(CDECL*)(LPCWSTR);
  const std::wstring path = std::filesystem::absolute(name).wstring();
  char* const outside = reinterpret_cast<NameOf>(reinterpret_cast<void*>(outsideNameOf))(path.c_str());
  const std::string result = "'" + std::string(outside != nullptr ? outside : "") + "'";
  HeapFree(GetProcessHeap(), 0, outside);
  return result;
}

/// Installs a PostScript printer with A4 paper as the default one. What is printed on it from now on goes to
/// the command's input. False when that fails.
bool installTestPrinter(const std::string& command) {
  wchar_t folder[MAX_PATH] = L"";
  DWORD needed = 0;
  if (!GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder), sizeof folder,
                                  &needed)) {
    return false;
  }
  std::filesystem::create_directories(folder);
  std::wstring description = std::wstring(folder) + L"\\merivane.ppd";
  std::ofstream(std::filesystem::path(description), std::ios::binary) << kDescription;
  std::wstring name = L"Merivane test printer", library = L"wineps.drv", port = L"LPT1:",
               processor = L"winprint", kind = L"RAW";
  DRIVER_INFO_3W driver = {};
  driver.cVersion = 3;
  driver.pName = name.data();
  driver.pDriverPath = driver.pConfigFile = library.data();
  driver.pDataFile = description.data();
  AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver),
                      APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
  PRINTER_INFO_2W printer = {};
  printer.pPrinterName = printer.pDriverName = name.data();
  printer.pPortName = port.data();
  printer.pPrintProcessor = processor.data();
  printer.pDatatype = kind.data();
  if (const HANDLE added = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer))) ClosePrinter(added);
  const std::wstring pipe = L"|" + wide(command);
  return SetDefaultPrinterW(name.c_str()) &&
         RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Printing\\Spooler", port.c_str(), REG_SZ,
                         pipe.c_str(),
                         static_cast<DWORD>((pipe.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

/// What pdftotext tells of a page.
using Page = std::vector<std::string>;

class PrintingTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (outsideNameOf == nullptr) GTEST_SKIP() << "needs Wine's spooler";
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

}  // namespace
}  // namespace merivane
