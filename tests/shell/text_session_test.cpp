// The comparison of two files without its window: every question and message, what is written where, and what
// is left where a step or the memory fails.

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <new>

#include "base/texts.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/session_run.h"

namespace merivane {
namespace {

using enum Answer;
using Answers = std::deque<Answer>;

TEST(TextSession, ComparesTheNamedFilesAndSaysWhatItShows) {
  SessionRun run;
  EXPECT_EQ(run.session.title(), "Merivane - [l.txt, r.txt]");
  EXPECT_TRUE(run.session.isFresh());
  EXPECT_FALSE(run.session.showsComparison());
  EXPECT_EQ(run.session.lineEndText() + run.session.differencesText(), "");
  EXPECT_EQ(run.session.caretText(), "Virt 1, Ln 1, Col 1");

  run.window.names[1] = "C:\\r.lnk";
  run.files.files["C:\\r.lnk"];
  run.session.compare();
  EXPECT_EQ(run.settings.leftFileHistory.Count(), 0) << "before it has succeeded";
  const Work job = std::exchange(run.window.job, nullptr);
  run.session.compare();
  EXPECT_FALSE(run.isComparing()) << "one at a time";
  run.window.job = job;
  run.finish(WorkEnd::done);
  EXPECT_EQ(run.said(), "");
  EXPECT_FALSE(run.session.isFresh());
  EXPECT_TRUE(run.session.showsComparison());
  EXPECT_EQ(run.session.title(), "Merivane - [l.txt, r.txt]");
  EXPECT_EQ(run.session.lineEndText(), "UNIX, DOS");
  EXPECT_EQ(run.session.differencesText(), "Diffs: 1, Lines: 1");
  EXPECT_EQ(run.settings.leftFileHistory.First(), "C:\\l.txt");
  EXPECT_EQ(run.settings.rightFileHistory.First(), "C:\\r.lnk");

  run.type(1);
  EXPECT_EQ(run.session.title(), "Merivane - [l.txt, r.txt*]");
  run.edits.press("right down");
  EXPECT_EQ(run.session.caretText(), "Virt 2, Ln 2, Col 2");

  // The names come back in the next run's window, and name the sides until something was loaded.
  SessionRun next;
  next.values.values = run.values.values;
  next.session.restoreNames();
  EXPECT_EQ(next.window.names[0] + next.window.names[1], "C:\\l.txtC:\\r.lnk");
  next.window.names[0] = "C:\\dir\\";
  next.window.names[1] = "100%1.txt";
  next.type(0);
  EXPECT_EQ(next.session.title(), "Merivane - [<no file>*, 100%1.txt]");
  EXPECT_FALSE(next.session.isFresh());
  EXPECT_EQ(next.session.lineEndText(), "DOS, DOS");
}

using Spoil = void (*)(SessionRun& run);

TEST(TextSession, RefusesNamesWithoutDroppingWhatItShows) {
  const std::pair<Spoil, std::string> cases[] = {
      {[](SessionRun& run) { run.window.names[0] = "a?b"; }, text(TextId::leftFileNameInvalid)},
      {[](SessionRun& run) { run.window.names[1] = ""; }, text(TextId::rightFileNameInvalid)},
      {[](SessionRun& run) { run.window.names[0] = "C:\\none"; },
       "Cannot load left file.\n\nReason: " + systemErrorText(MemoryFiles::notFound)},
  };
  for (const auto& [spoil, message] : cases) {
    SessionRun run;
    run.compare();
    run.type(0);
    spoil(run);
    const std::string names = run.window.names[0] + run.window.names[1];
    run.session.compare();
    EXPECT_FALSE(run.isComparing());
    EXPECT_EQ(run.said(), "error: " + message + "\n");
    EXPECT_EQ(run.edits.text(0), "!a\nb\nc\n");
    EXPECT_EQ(run.window.names[0] + run.window.names[1], names) << "to be mended";
  }

  // Names are taken as they are meant, and completed.
  SessionRun run;
  run.files.files["C:\\here\\l.txt"].contents = "a\n";
  run.files.folder = "C:\\here\\";
  run.window.names[0] = " \"l.txt\" ";
  EXPECT_EQ(run.session.title(), "Merivane - [l.txt, r.txt]");
  EXPECT_EQ(run.compare(), "");
  EXPECT_EQ(run.window.names[0], "C:\\here\\l.txt");
  EXPECT_EQ(run.side(0).path, "C:\\here\\l.txt");
  EXPECT_EQ(run.settings.leftFileHistory.First(), "C:\\here\\l.txt");
}

TEST(TextSession, AComparisonThatFailsSaysWhyAndShowsNothing) {
  const std::string cannotLoad = "Cannot load left file.\n\nReason: ";
  const std::tuple<Spoil, WorkEnd, std::string> cases[] = {
      {[](SessionRun& run) { run.files.files["C:\\r.txt"].contents.assign(9, '\1'); }, WorkEnd::done,
       text(TextId::rightFileBinary)},
      {[](SessionRun& run) { run.files.failStep(1, 13); }, WorkEnd::done, cannotLoad + systemErrorText(13)},
      {[](SessionRun&) {}, WorkEnd::cancelled, text(TextId::operationAborted)},
      {[](SessionRun&) {}, WorkEnd::outOfMemory, text(TextId::outOfMemory)},
  };
  for (const auto& [spoil, end, message] : cases) {
    for (const bool used : {false, true}) {
      SessionRun run;
      if (used) run.compare();
      spoil(run);
      EXPECT_EQ(run.compare(end), "error: " + message + "\n");
      EXPECT_EQ(run.edits.text(0) + run.edits.text(1) + run.side(0).path + run.side(1).path, "");
      EXPECT_EQ(run.session.isFresh(), !used);
      EXPECT_FALSE(run.session.showsComparison());
      EXPECT_EQ(run.session.differencesText() + run.session.lineEndText(), "") << "not: no differences";
      EXPECT_EQ(run.settings.leftFileHistory.Count(), used ? 1 : 0);
      run.type(0);
      EXPECT_TRUE(run.session.showsComparison());
    }
  }
  SessionRun run;
  run.files.files["C:\\r.txt"].contents = "a\nb\nc\n";
  EXPECT_EQ(run.compare(), "");
  run.settings.identicalMessage = true;
  EXPECT_EQ(run.compare(), "tell: The files are identical.\n");
}

TEST(TextSession, FilesThatAreComparedAgainKeepTheirPlace) {
  SessionRun run;
  run.compare();
  run.edits.press("down down right");
  run.compare();
  EXPECT_EQ(run.edits.place(), "2,1");
  run.settings.scrollToFirst = true;
  run.compare();
  EXPECT_EQ(run.edits.place(), "1,0") << "the first difference";
  run.settings.scrollToFirst = false;
  run.files.files["C:\\other.txt"].contents = "a\nb\nc\n";
  run.window.names[0] = "C:\\other.txt";
  run.compare();
  EXPECT_EQ(run.edits.place(), "0,0");
  run.edits.press("down");
  run.compare(WorkEnd::cancelled);
  run.compare();
  EXPECT_EQ(run.edits.place(), "0,0") << "nothing was shown in between";

  EXPECT_FALSE(run.session.optionsChanged());
  run.settings.ignoreCase = true;
  EXPECT_TRUE(run.session.optionsChanged());
  run.settings.ignoreCase = false;
  EXPECT_FALSE(run.session.optionsChanged());
  run.session.compare();
  run.settings.ignoreCase = true;
  run.finish(WorkEnd::done);
  EXPECT_TRUE(run.session.optionsChanged()) << "while it was compared";
  EXPECT_TRUE(run.edits.view().compareOptions().ignoreCase) << "as edits compare";
  run.compare();
  EXPECT_FALSE(run.session.optionsChanged());
  run.settings.ignoreCase = false;
  run.compare(WorkEnd::cancelled);
  EXPECT_FALSE(run.session.optionsChanged()) << "nothing is shown";
}

TEST(TextSession, AsksForEachSideBeforeChangesAreLost) {
  const std::string askLeft = "ask or cancel: Save changes to C:\\l.txt?\n",
                    askRight = "ask or cancel: Save changes to C:\\r.txt?\n";
  // What is answered, whether the window closes, what was asked, and which sides stay modified.
  const std::tuple<Answers, bool, std::string, std::string> cases[] = {
      {{no, no}, true, askLeft + askRight, "lr"}, {{no, cancel}, false, askLeft + askRight, "lr"},
      {{cancel}, false, askLeft, "lr"},           {{yes, yes}, true, askLeft + askRight, ""},
      {{yes, no}, true, askLeft + askRight, "r"},
  };
  for (const auto& [answers, closes, log, modified] : cases) {
    SessionRun run;
    run.compare();
    run.type(0);
    run.type(1);
    EXPECT_TRUE(run.session.mayClose()) << "not asked unless the settings want it";
    run.settings.askConfirmation = true;
    run.window.answers = answers;
    EXPECT_EQ(run.session.mayClose(), closes);
    EXPECT_EQ(run.said(), log);
    EXPECT_EQ(std::string(run.isModified(0) ? "l" : "") + (run.isModified(1) ? "r" : ""), modified);
    EXPECT_EQ(run.left(), run.isModified(0) ? "a\nb\nc\n" : "!a\nb\nc\n");
    EXPECT_EQ(run.right(), run.isModified(1) ? "a\r\nx\r\nc\r\n" : "!a\r\nx\r\nc\r\n");
  }

  // Comparing again loses as much, and asks in its own words whatever the settings.
  for (const Answer answer : {yes, no, cancel}) {
    SessionRun run;
    run.compare();
    run.type(1);
    run.window.names[0] = "C:\\r.txt";
    run.window.answers = {answer};
    run.session.compare();
    EXPECT_EQ(run.said(),
              "ask or cancel: C:\\r.txt\n\nComparing again reads the files anew, without your changes.\n"
              "Do you want to save your changes to this file first?\n");
    EXPECT_EQ(run.isComparing(), answer != cancel);
    EXPECT_EQ(run.window.names[0], answer == cancel ? "C:\\l.txt" : "C:\\r.txt") << "what is shown";
    EXPECT_EQ(run.right(), answer == yes ? "!a\r\nx\r\nc\r\n" : "a\r\nx\r\nc\r\n");
  }

  // A side that has no path is saved under its name if that can be one, but not over another file.
  SessionRun run;
  run.settings.askConfirmation = true;
  run.window.names[0] = "C:\\new.txt";
  run.window.names[1] = "";
  run.type(0);
  run.type(1);
  run.window.answers = {yes, yes};
  EXPECT_FALSE(run.session.mayClose());
  EXPECT_EQ(run.said(),
            "ask or cancel: Save changes to C:\\new.txt?\n"
            "ask or cancel: Save changes to <no file>?\nSave Right File from \n");
  EXPECT_EQ(run.contents("C:\\new.txt"), "!");
  run.window.names[1] = "C:\\r.txt";
  run.window.answers = {yes, no};
  EXPECT_FALSE(run.session.mayClose());
  EXPECT_EQ(
      run.said(),
      "ask or cancel: Save changes to C:\\r.txt?\nwarn, rather no: C:\\r.txt\n\nThis file exists already. "
      "Do you want to replace it?\n");
}

TEST(TextSession, SavesTheChangedSideUnderItsName) {
  SessionRun run;
  run.session.save();
  EXPECT_EQ(run.window.status, "Neither file has unsaved changes.");
  run.type(0);
  run.session.save();
  EXPECT_EQ(run.said(), "Save Left File from C:\\l.txt\n") << "the name in the box is not the text's own";
  run.window.answers = {no};
  run.compare();

  // The active side goes first; one without changes is never written.
  run.type(1);
  run.edits.press("switch-pane");
  run.session.save();
  EXPECT_EQ(run.window.status, "Saved C:\\r.txt");
  EXPECT_EQ(run.left() + run.right(), "a\nb\nc\n!a\r\nx\r\nc\r\n");
  EXPECT_EQ(run.files.files["C:\\l.txt"].modified, 0);
  run.type(1);
  run.type(0);
  run.edits.view().file(1).readOnly = true;
  run.session.save();
  EXPECT_EQ(run.window.status, "Saved C:\\l.txt");
  EXPECT_TRUE(run.isModified(1));
  run.type(0);
  run.edits.view().takeChanges();
  run.session.saveAll();
  EXPECT_EQ(run.left() + run.right(), "!!a\nb\nc\n!!a\r\nx\r\nc\r\n");
  EXPECT_FALSE(run.side(1).readOnly);
  EXPECT_TRUE(run.edits.view().takeChanges().everything);

  // What another program wrote is not lost unasked, nor twice.
  run.type(0);
  run.files.files["C:\\l.txt"].contents = "theirs";
  const std::string changed =
      "warn, rather no: C:\\l.txt\n\nAnother program has changed this file since it was loaded.\nDo you want "
      "to "
      "save yours over it?\n";
  run.said();
  run.window.answers = {no, yes};
  run.session.save();
  EXPECT_TRUE(run.isModified(0));
  run.session.save();
  EXPECT_EQ(run.said(), changed + changed);
  EXPECT_EQ(run.left(), "!!!a\nb\nc\n");
  run.type(0);
  run.session.save();
  run.type(0);
  run.files.files.erase("C:\\l.txt");
  run.session.save();
  EXPECT_EQ(run.said(), "") << "nobody's work is in the way";
}

TEST(TextSession, SavesTheActiveSideUnderAnotherName) {
  SessionRun run;
  run.files.files["C:\\l.txt"].contents = "a\r\nb\r\nc\n";
  run.compare();
  EXPECT_EQ(run.session.lineEndText(), "DOS mixed, DOS");
  run.files.folder = "D:\\";
  run.window.chosen = "copy.txt";
  run.session.saveAs();
  EXPECT_EQ(run.said(), "Save Left File from C:\\l.txt\n");
  EXPECT_EQ(run.contents("D:\\copy.txt"), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(run.window.names[0] + run.side(0).path, "D:\\copy.txtD:\\copy.txt");
  EXPECT_EQ(run.settings.leftFileHistory.First(), "D:\\copy.txt");
  EXPECT_EQ(run.window.status, "Saved D:\\copy.txt");
  EXPECT_EQ(run.session.lineEndText(), "DOS, DOS");
  EXPECT_EQ(run.session.title(), "Merivane - [copy.txt, r.txt]");
}

TEST(TextSession, ReplacesASideAndItsFile) {
  const std::string question =
      "ask, rather no: C:\\l.txt\n\nWarning: you cannot undo this operation! Really replace the file?\n";
  SessionRun run;
  run.compare();
  run.type(1);
  run.session.replace(0);
  EXPECT_EQ(run.said(), question);
  EXPECT_EQ(run.edits.text(0), "a\nb\nc\n");
  run.edits.view().file(0).readOnly = true;
  run.session.replace(0);
  EXPECT_EQ(run.said(), "");
  run.edits.view().file(0).readOnly = false;

  run.window.answers = {yes};
  run.session.replace(0);
  EXPECT_EQ(run.said(), question);
  EXPECT_EQ(run.left(), "!a\r\nx\r\nc\r\n");
  EXPECT_EQ(run.edits.text(0), run.edits.text(1));
  EXPECT_FALSE(run.edits.history().canUndo());
  EXPECT_FALSE(run.isModified(0));
  EXPECT_TRUE(run.isModified(1)) << "its file is as it was";
  EXPECT_EQ(run.session.lineEndText(), "DOS, DOS");
  EXPECT_EQ(run.session.differencesText(), "No differences");
  EXPECT_EQ(run.window.status, "Saved C:\\l.txt");
  run.type(0);
  run.session.save();
  EXPECT_EQ(run.said(), "") << "the file is as this window wrote it";

  // What another program wrote stays if the user wants that, and so does the side.
  run.type(0);
  run.files.files["C:\\l.txt"].contents = "theirs";
  run.window.answers = {yes, no};
  run.session.replace(0);
  EXPECT_NE(run.said().find("Another program has changed this file"), std::string::npos);
  EXPECT_EQ(run.left(), "theirs");
  EXPECT_EQ(run.edits.text(0), "!!!a\nx\nc\n");

  SessionRun unnamed;
  unnamed.window.names[1] = "C:\\dir\\";
  unnamed.session.replace(1);
  EXPECT_EQ(unnamed.said(), "error: The file name is invalid.\n");
}

TEST(TextSession, ACopyThatCannotBeWrittenIsAnEdit) {
  SessionRun run;
  run.compare();
  run.window.answers = {yes};
  run.files.files["C:\\l.txt"].writable = false;
  run.session.replace(0);
  EXPECT_TRUE(
      run.said().ends_with("\nerror: Could not save the file.\n\nReason: " + systemErrorText(13) + "\n"));
  EXPECT_EQ(run.left(), "a\nb\nc\n");
  EXPECT_EQ(run.edits.text(0), "a\nx\nc\n");
  EXPECT_TRUE(run.isModified(0));
  run.edits.press("undo");
  EXPECT_EQ(run.edits.text(0), "a\nb\nc\n");
}

TEST(TextSession, SwitchesSidesWithTheirNames) {
  SessionRun run;
  run.compare();
  run.type(0);
  run.window.names[0] = "typed";
  run.session.switchSides();
  EXPECT_EQ(run.session.title(), "Merivane - [r.txt, l.txt*]");
  EXPECT_EQ(run.window.names[0] + ' ' + run.window.names[1], "C:\\r.txt typed");
  EXPECT_EQ(run.session.lineEndText(), "DOS, UNIX");
  run.session.save();
  EXPECT_EQ(run.left(), "!a\nb\nc\n");
}

TEST(TextSession, ExportsOverItsOwnPageAloneUnasked) {
  const auto warning = [](const std::string& path) {
    return "warn, rather no: " + path + "\n\nThis file exists already. Do you want to replace it?\n";
  };
  SessionRun run;
  run.compare();
  run.settings.exportResults = "C:\\last.html";
  run.session.exportResults();
  EXPECT_EQ(run.said(), "export from C:\\last.html\n");
  EXPECT_EQ(run.settings.exportResults, "C:\\last.html") << "cancelled";

  run.files.folder = "C:\\";
  run.window.chosen = "page.html";
  run.session.exportResults();
  run.session.exportResults();
  EXPECT_EQ(run.said(), "export from C:\\last.html\nexport from C:\\page.html\n");
  EXPECT_EQ(run.settings.exportHow, 2);
  EXPECT_EQ(run.contents("C:\\page.html").substr(0, 42), "<HTML>\r\n<HEAD>\r\n<TITLE>C:\\l.txt, C:\\r.txt<");

  // A compared file under another name, and a page of somebody else.
  run.files.otherNames["D:\\link"] = "C:\\l.txt";
  run.files.files["D:\\link"];
  run.files.files["C:\\theirs.html"].contents = "theirs";
  for (const std::string path : {"D:\\link", "C:\\theirs.html", "C:\\l.txt"}) {
    run.window.chosen = path;
    run.said();
    run.window.answers = {no};
    run.session.exportResults();
    EXPECT_TRUE(run.said().ends_with("\n" + warning(path)));
  }
  EXPECT_EQ(run.left() + run.contents("C:\\theirs.html"), "a\nb\nc\ntheirs");
  run.window.answers = {yes, yes};
  run.session.exportResults();
  run.session.exportResults();
  EXPECT_TRUE(run.said().ends_with("\n" + warning("C:\\l.txt"))) << "once more for a file that is compared";

  run.window.chosen = "C:\\dir\\";
  run.session.exportResults();
  EXPECT_TRUE(run.said().ends_with("error: The file name is invalid.\n"));
  run.window.chosen = "C:\\no.html";
  run.files.files["C:\\no.html"].writable = false;
  run.window.answers = {yes};
  run.session.exportResults();
  EXPECT_TRUE(run.said().ends_with(
      "error: Could not export comparison results.\n\nReason: " + systemErrorText(13) + "\n"));
}

/// All that the user would miss: the files, and which sides differ from them.
std::string state(SessionRun& run) {
  std::string state = run.left() + '#' + run.right() + '#' + run.edits.text(0) + '#' + run.edits.text(1);
  for (const int side : {0, 1}) state += '#' + run.side(side).path + (run.isModified(side) ? "*" : "");
  return state + run.contents("C:\\chosen");
}

/// What a user does to two edited sides, with one answer to every question.
using Action = void (*)(SessionRun& run);
constexpr Action kActions[] = {
    [](SessionRun& run) { run.session.save(); },        [](SessionRun& run) { run.session.saveAs(); },
    [](SessionRun& run) { run.session.replace(0); },    [](SessionRun& run) { run.session.saveAll(); },
    [](SessionRun& run) { run.session.switchSides(); }, [](SessionRun& run) { run.session.exportResults(); },
    [](SessionRun& run) { run.session.offerToSave(); },
};

/// The sides' texts were changed, and both files as well.
std::unique_ptr<SessionRun> editedRun() {
  auto run = std::make_unique<SessionRun>();
  run->compare();
  run->type(0);
  run->type(1);
  run->window.chosen = "C:\\chosen";
  run->window.answers = Answers(9, yes);
  return run;
}

/// Whether what a side is said to hold is what its file holds: unsaved changes are known as such.
void expectHonest(SessionRun& run) {
  for (const int side : {0, 1}) {
    const std::string& path = run.side(side).path;
    std::string file = run.contents(path);
    std::erase(file, '\r');
    EXPECT_TRUE(run.isModified(side) || file == run.edits.text(side)) << path;
  }
  EXPECT_EQ(run.edits.fault(), "");
}

TEST(TextSession, AFailingStepLosesNothing) {
  for (const Action& action : kActions) {
    SCOPED_TRACE(&action - kActions);
    for (uint32_t failing = 0;; ++failing) {
      const auto run = editedRun();
      const std::string before = state(*run);
      run->files.failStep(failing, 77);
      action(*run);
      if (!run->files.endFailing()) break;
      EXPECT_NE(run->said().find("Reason: " + systemErrorText(77)), std::string::npos) << failing;
      expectHonest(*run);
      if (&action < kActions + 2) {
        EXPECT_EQ(state(*run), before);
      }
    }
  }
}

TEST(TextSession, WithoutMemoryNothingIsLost) {
  for (const Action& action : kActions) {
    SCOPED_TRACE(&action - kActions);
    auto run = editedRun();
    action(*run);
    const std::string whole = state(*run);
    failEachAllocation([&] { run = editedRun(); },
                       [&] {
                         try {
                           action(*run);
                         } catch (const std::bad_alloc&) {
                           ++run->window.outOfMemory;
                         }
                         return 0;
                       },
                       [&](int) {
                         const int reports = run->window.outOfMemory + run->edits.host().outOfMemory;
                         const bool told = reports > 0 || run->said().find("error") != std::string::npos;
                         EXPECT_TRUE(told || state(*run) == whole);
                         expectHonest(*run);
                       });
  }
  // A comparison ends in what it shows, or in what was shown before.
  for (const WorkEnd end : {WorkEnd::done, WorkEnd::cancelled, WorkEnd::outOfMemory}) {
    std::unique_ptr<SessionRun> run;
    failEachAllocation(
        [&] {
          run = editedRun();
          run->window.answers = {no, no};
        },
        [&] {
          try {
            run->session.compare();
            run->finish(end);
          } catch (const std::bad_alloc&) {
          }
          return 0;
        },
        [&](int) {
          const bool before = run->isModified(0) && run->isModified(1);
          const bool compared = run->edits.text(0) == "a\nb\nc\n" && run->session.showsComparison();
          EXPECT_TRUE(before || compared || (run->edits.text(0).empty() && !run->session.showsComparison()));
          EXPECT_EQ(run->edits.fault(), "");
          run->window.answers = {no, no};
          run->session.compare();
          EXPECT_TRUE(run->isComparing());
        });
  }
}

}  // namespace
}  // namespace merivane
