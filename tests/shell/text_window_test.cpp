// The rules of a text window's frame: title, name boxes, closing, status bar.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/diff_model.h"
#include "shell/close_rules.h"
#include "shell/name_box.h"
#include "shell/status_text.h"
#include "shell/window_title.h"

namespace merivane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(WindowTitle, NamesBothSides) {
  struct Case {
    TitleSide sides[2];
    const char* title;
  };
  const Case cases[] = {
      {{}, "Merivane - [<no file>, <no file>]"},
      {{{"", "", true}, {"C:\\x\\b.txt", "", false}}, "Merivane - [<no file>*, b.txt]"},
      {{{"C:\\a.c", "C:\\typed.c", true}, {"", "d\\typed.c", true}}, "Merivane - [a.c*, typed.c*]"},
      {{{"", "C:\\dir\\", false}, {"", "a?b", false}}, "Merivane - [<no file>, <no file>]"},
      {{{"", "100%1.txt", false}, {"", "%2", false}}, "Merivane - [100%1.txt, %2]"},
  };
  for (const Case& c : cases) EXPECT_EQ(windowTitle(c.sides), c.title);
}

TEST(NameBox, CompletesWhatIsTypedButNotWhatIsDeleted) {
  HistoryList history;
  history.Add("C:\\dir\\a.txt");
  NameCompletion box;
  EXPECT_EQ(box.onEdit("c:\\d", history), (Completion{0, 4, 12}));
  EXPECT_EQ(box.onEdit("x", history), std::nullopt);
  box.onKey(true);
  EXPECT_EQ(box.onEdit("c:\\", history), std::nullopt);
  box.onKey(false);
  EXPECT_EQ(box.onEdit("c:\\dir\\A.TXT", history), (Completion{0, 12, 12}));
  box.onCut();
  EXPECT_EQ(box.onEdit("c:", history), std::nullopt);
}

TEST(NameBox, TakesDropsOfItsKinds) {
  EXPECT_TRUE(acceptsDrop(FileKind::file, kDropFiles));
  EXPECT_FALSE(acceptsDrop(FileKind::folder, kDropFiles));
  EXPECT_TRUE(acceptsDrop(FileKind::folder, kDropFiles | kDropFolders));
  EXPECT_FALSE(acceptsDrop(FileKind::file, kDropFolders));
  EXPECT_FALSE(acceptsDrop(FileKind::none, kDropFiles | kDropFolders));
}

TEST(NameBox, GoesUpNoHigherThanTheRoot) {
  struct Case {
    const char *path, *above;  // null: stays
  };
  const Case cases[] = {
      {"C:\\a\\b", "C:\\a"},
      {"C:\\a\\b\\\\", "C:\\a"},
      {"C:\\a", "C:\\"},
      {"C:\\", nullptr},
      {"C:", nullptr},
      {"\\\\server\\share\\x", "\\\\server\\share"},
      {"\\a", "\\"},
      {"\\", nullptr},
      {"\\\\server\\share\\", nullptr},
      {"a\\b", "a"},
      {"a", nullptr},
      {"\\\\server", nullptr},
      {"", nullptr},
      {"dir\\", nullptr},
  };
  for (const Case& c : cases) {
    const auto expected = c.above ? std::optional<std::string>(c.above) : std::nullopt;
    EXPECT_EQ(upOneFolder(c.path), expected) << c.path;
  }
}

/// Answers as told and writes down what it was asked to do.
class ScriptedWindow final : public ClosingWindow {
 public:
  TitleSide sides[2] = {{"C:\\l.txt", "", true}, {"", "", true}};
  std::vector<CloseAnswer> answers;
  bool saves = true;
  std::vector<std::string> log;

  TitleSide side(int side) override { return sides[side]; }
  CloseAnswer ask(const std::string& question) override {
    log.push_back(question);
    const CloseAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  bool save(int side, const std::string& path) override {
    log.push_back("save " + std::to_string(side) + " " + path);
    return saves;
  }
  bool saveAs(int side, const char* title) override {
    log.push_back("save as " + std::to_string(side) + " " + title);
    return saves;
  }
};

TEST(Closing, AsksForEachSideInTurn) {
  const char* const left = "Save changes to C:\\l.txt?";
  const char* const right = "Save changes to <no file>?";
  {
    ScriptedWindow window;
    EXPECT_TRUE(mayClose(window, false));
    EXPECT_THAT(window.log, IsEmpty());
  }
  {
    ScriptedWindow window;
    window.answers = {CloseAnswer::no, CloseAnswer::cancel};
    EXPECT_FALSE(mayClose(window, true));
    EXPECT_THAT(window.log, ElementsAre(left, right));
  }
  {
    ScriptedWindow window;
    window.answers = {CloseAnswer::cancel};
    EXPECT_FALSE(mayClose(window, true));
    EXPECT_THAT(window.log, ElementsAre(left));
  }
  {
    ScriptedWindow window;
    window.answers = {CloseAnswer::yes, CloseAnswer::yes};
    EXPECT_TRUE(mayClose(window, true));
    EXPECT_THAT(window.log, ElementsAre(left, "save 0 C:\\l.txt", right, "save as 1 Save Right File"));
  }
  {
    ScriptedWindow window;
    window.answers = {CloseAnswer::yes};
    window.saves = false;
    EXPECT_FALSE(mayClose(window, true));
    EXPECT_THAT(window.log, ElementsAre(left, "save 0 C:\\l.txt"));
  }
  {
    ScriptedWindow window;
    window.sides[0] = {"", "typed?", true};
    window.sides[1].modified = false;
    window.answers = {CloseAnswer::yes};
    EXPECT_TRUE(mayClose(window, true));
    EXPECT_THAT(window.log, ElementsAre("Save changes to typed??", "save as 0 Save Left File"));
  }
}

TEST(StatusBar, AFillerRowHasLineZero) {
  EXPECT_EQ(caretText(0, 0, 0), "Virt 1, Ln 1, Col 1");
  EXPECT_EQ(caretText(41, kNoLine, 6), "Virt 42, Ln 0, Col 7");
}

}  // namespace
}  // namespace merivane
