// The Options dialog: its pages, what its controls do to the windows beside it, and what is left in the
// registry.

#include <windows.h>

#include <commdlg.h>

#include <cctype>
#include <set>
#include <stdexcept>

#include "shell/options.h"
#include "shell/settings_table.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

constexpr const char* kChanged = "Options changed: F5 compares again";

class OptionsTest : public GuiTest {
 protected:
  const std::string a_ = writeFile("a.txt", "same\r\nText\r\nold\r\nsame\r\n");
  const std::string b_ = writeFile("b.txt", "same\r\ntext\r\nsame\r\nnew\r\n");

  /// Opens the dialog at a page, or where it was left.
  void openOptions(const TextWindow& window) {
    window.run(Command::options);
    dialog_ = program_->dialog("Options");
    if (dialog_ == nullptr) throw std::runtime_error("no dialog came");
    EXPECT_SOON(GetForegroundWindow(), dialog_);
  }
  void openOptions(const TextWindow& window, DWORD page) {
    save("OptionsPage", page);
    openOptions(window);
  }

  void closeOptions() {
    press(VK_ESCAPE);
    EXPECT_SOON(IsWindow(dialog_), FALSE);
  }

  HWND page() const { return childOf(dialog_, "#32770"); }
  HWND control(int id) const { return GetDlgItem(page(), id); }
  void click(int id) const { SendMessageA(control(id), BM_CLICK, 0, 0); }
  bool isChecked(int id) const { return SendMessageA(control(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

  /// The edit field of a box, with the keyboard and its text selected.
  HWND enter(int id) const {
    const HWND edit = childOf(control(id), "Edit");
    SendMessageA(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(edit), TRUE);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    EXPECT_SOON(program_->focus(), edit);
    return edit;
  }

  HWND dialog_ = nullptr;
};

TEST_F(OptionsTest, EveryPageIsReachedByKeyAndEveryBoxReachesTheRegistry) {
  const TextWindow window = startWith(a_, b_);
  openOptions(window);
  EXPECT_SOON(program_->focus(), GetDlgItem(dialog_, 10000));
  for (const OptionsPageRow& row : optionsPages()) {
    EXPECT_SOON(control(row.options.front().control) != nullptr, true) << "page of " << row.helpPage;
    std::set<int> mnemonics;
    for (HWND each = GetWindow(page(), GW_CHILD); each != nullptr; each = GetWindow(each, GW_HWNDNEXT)) {
      const std::string label = textOf(each);
      const size_t mark = label.find('&');
      EXPECT_TRUE(mark == label.npos || mnemonics.insert(std::tolower(label[mark + 1])).second) << label;
      EXPECT_LE(areaOf(each).right, areaOf(page()).right) << label;
    }
    for (const OptionRow& option : row.options) {
      ASSERT_NE(control(option.control), nullptr) << option.control;
      if (!std::holds_alternative<CheckOption>(option.kind)) continue;
      if (IsWindowEnabled(control(option.control))) click(option.control);
    }
    SendMessageA(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog_, 10000)), TRUE);
    press(VK_DOWN);
  }
  const RECT place = areaOf(dialog_);
  MoveWindow(dialog_, 77, 66, place.right - place.left, place.bottom - place.top, TRUE);
  closeOptions();
  EXPECT_EQ(saved("OptionsBox") + saved("OptionsPage"), "4d,42# 3");
  openOptions(window);
  EXPECT_EQ(areaOf(dialog_).left, 77);
  EXPECT_TRUE(isChecked(10400));
  quit(window);  // with the dialog open
  std::string unchanged;
  for (const SettingsRow& row : settingsRows()) {
    const auto* kind = std::get_if<BoolSetting>(&row.kind);
    if (kind == nullptr || saved(row.key) != (Settings().*kind->member ? "true" : "false")) continue;
    unchanged += std::string(row.key) + " ";
  }
  EXPECT_EQ(unchanged,
            "WordWrap ShowWhiteSpace SyncScroll HighlightChanges ViewSummary ViewToolBar ViewStatusBar "
            "CompareQuick FindMatchCase FindWholeWord FindDownwards PrintPortrait ")
      << "what has no box, was greyed, or gave way to the full comparison";

  save("OptionsBox", "4000,10");
  const TextWindow next = startWith(a_, b_);
  openOptions(next);
  EXPECT_NEAR(areaOf(dialog_).left + areaOf(dialog_).right, 40 + 840, 2) << "in the middle of its window";
}

TEST_F(OptionsTest, WindowsFollowAtOnceAndSayWhatWasComparedOtherwise) {
  const TextWindow window = startWith(a_, b_);
  openOptions(window, 0);
  click(10101);
  EXPECT_FALSE(IsWindowEnabled(control(10102)));
  click(10101);
  click(10100);
  EXPECT_SOON(window.help(), kChanged);
  press(VK_F5);  // in the dialog
  EXPECT_SOON(window.help(), "Press F1 for help");
  EXPECT_SOON(window.differences(), "Diffs: 2, Lines: 2");
  EXPECT_TRUE(IsWindow(dialog_)) << "beside it";
  openOptions(window);  // comes to the front again
  closeOptions();

  openOptions(window, 3);
  for (const char* const item : {"-&New Text", "&New Text"}) {
    click(10404);
    EXPECT_THAT(window.menu(0), testing::StartsWith(item));
  }
  const auto go = [&](Command command, int row) {
    window.run(command);
    EXPECT_SOON(window.row(), row);
  };
  go(Command::nextDiff, 3);
  click(10402);  // no longer on at the other end
  go(Command::nextDiff, 5);
  window.run(Command::nextDiff);
  go(Command::prevDiff, 3);
  writeFile("b.txt", "same\r\nText\r\nold\r\nsame\r\n");
  if (!isChecked(10400)) click(10400);
  press(VK_F5);
  EXPECT_EQ(program_->answerMessage(), "The files are identical.");

  // One dialog, which goes to the window that asks for it and goes with that.
  window.run(Command::options);
  window.run(Command::newTextWindow);
  waitUntil([&] { return program_->windows("CompareWindow").size() == 2; });
  const TextWindow second(*program_, program_->windows("CompareWindow").front());
  second.run(Command::options);
  EXPECT_SOON(IsWindow(dialog_), FALSE);
  dialog_ = program_->dialog("Options");
  EXPECT_EQ(program_->windows("#32770").size(), 1u);
  EXPECT_EQ(GetWindow(dialog_, GW_OWNER), second.handle());
  second.run(Command::close);
  EXPECT_SOON(IsWindow(dialog_), FALSE);
  quit(window);
}

TEST_F(OptionsTest, ListsFiltersAndColours) {
  const TextWindow window = startWith(a_, b_);
  openOptions(window, 1);
  for (const auto& [id, filter] : {std::pair(10211, "*.txt"), {10213, "*.obj;*.tmp"}}) {
    const HWND edit = enter(id);
    EXPECT_EQ(SendMessageA(edit, EM_GETLIMITTEXT, 0, 0), 260);
    type(filter);
    press(VK_RETURN);
    EXPECT_SOON(SendMessageA(control(id), CB_GETCOUNT, 0, 0), 1);
  }
  const HWND edit = enter(10211);
  type("*.t");
  EXPECT_SOON(textOf(edit), "*.txt") << "completed";
  closeOptions();  // takes in what was typed

  openOptions(window, 2);
  const auto band = [&](COLORREF colour) {
    const Picture picture = pictureOfClient(window.view());
    return picture.shows(colour, 0, picture.height());
  };
  MoveWindow(dialog_, 60, 500, 100, 100, TRUE);  // out of the way
  EXPECT_SOON(band(0xC0DCC0), true);
  click(10311);
  EXPECT_SOON(band(redGreenSafeColours()[4]), true);

  for (const int button : {IDCANCEL, IDOK}) {
    EXPECT_TRUE(isChecked(10311)) << "a set, until a colour is chosen";
    PostMessageA(control(10307), BM_CLICK, 0, 0);
    const HWND picker = program_->dialog("Color");
    for (const auto& [field, text] : {std::pair(706, "1"), {707, "2"}, {708, "3"}}) {
      SendMessageA(GetDlgItem(picker, field), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }
    EXPECT_TRUE(pressButton(picker, button));
  }
  EXPECT_SOON(band(RGB(1, 2, 3)), true);
  EXPECT_FALSE(isChecked(10311));

  enter(10301);
  type("250");
  press(VK_TAB);
  EXPECT_SOON(textOf(control(10301)), "9");
  press(VK_END);
  EXPECT_SOON(textOf(control(10302)), "16");
  quit(window);
  EXPECT_EQ(saved("FontSize") + saved("TabStop") + saved("LeftBkColor"), "# 9# 16# 197121");
  EXPECT_EQ(saved("IncludeFilterHistory.0"), "*.txt");
  EXPECT_EQ(saved("ExcludeFilterHistory.0"), "*.obj;*.tmp");
}

TEST_F(OptionsTest, OddSettingsDoNoHarm) {
  for (const SettingsRow& row : settingsRows()) {
    if (std::holds_alternative<PlacementSetting>(row.kind)) continue;
    const std::string odd = std::holds_alternative<BoolSetting>(row.kind) ? "true" : std::string(600, '&');
    for (const char* end : {"", ".0"}) save((row.key + std::string(end)).c_str(), odd);
    save((row.key + std::string(".count")).c_str(), 1u);
  }
  save("IgnoreBlanks2", 0xFFFFFFFF);
  save("FontSize", 200);
  const TextWindow window = startWith(a_, b_);
  for (DWORD page = 0; page < 4; ++page) {
    openOptions(window, page);
    EXPECT_NE(control(optionsPages()[page].options.front().control), nullptr) << page;
    closeOptions();
  }
  quit(window);
  EXPECT_EQ(saved("IncludeFilterHistory.0"), std::string(600, '&')) << "nothing of it is lost";
}

}  // namespace
}  // namespace merivane
