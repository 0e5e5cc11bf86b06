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

/// What the window shows of it.
std::string shown(const SessionRun& run) {
  const TextSession& session = run.session;
  return session.title() + '|' + session.lineEndText() + '|' + session.differencesText() +
         (session.isFresh() ? "|fresh" : "") + (session.showsComparison() ? "|compared" : "");
}

TEST(TextSession, ComparesTheNamedFilesAndSaysWhatItShows) {
  SessionRun run;
  EXPECT_EQ(shown(run), "Merivane - [l.txt, r.txt]|||fresh");
  run.window.names[1] = "C:\\r.lnk";
  run.files.files["C:\\r.lnk"];
  run.session.compare();
  EXPECT_EQ(run.settings.leftFileHistory.Count(), 0) << "before it has succeeded";
  const Work job = std::exchange(run.window.job, nullptr);
  run.session.compare();
  EXPECT_FALSE(run.isComparing()) << "one at a time";
  run.window.job = job;
  run.window.finish(WorkEnd::done);
  EXPECT_EQ(run.said(), "");
  EXPECT_EQ(shown(run), "Merivane - [l.txt, r.txt]|UNIX, DOS|Diffs: 1, Lines: 1|compared");
  EXPECT_EQ(run.settings.leftFileHistory.First() + run.settings.rightFileHistory.First(),
            "C:\\l.txtC:\\r.lnk");
  run.act("type-right right down");
  EXPECT_EQ(shown(run), "Merivane - [l.txt, r.txt*]|UNIX, DOS|Diffs: 1, Lines: 2|compared");
  EXPECT_EQ(run.session.caretText(), "Virt 2, Ln 2, Col 2");
}

TEST(TextSession, WhatIsSaidOfAFileGoesWithIt) {
  SessionRun run;
  GivenSide left("C:\\l.txt");
  left.title = "notes (old)";
  left.readOnly = true;
  run.session.describe(left, std::string("C:\\r.txt"));
  run.act("compare switch compare");
  EXPECT_EQ(run.session.title(), "Merivane - [r.txt, notes (old)]");
  run.type(1);
  EXPECT_FALSE(run.isModified(1));
}

using Spoil = void (*)(SessionRun& run);

TEST(TextSession, RefusesNamesWithoutDroppingWhatItShows) {
  const std::tuple<int, const char*, std::string> cases[] = {
      {0, "a?b", text(TextId::leftFileNameInvalid)},
      {1, "", text(TextId::rightFileNameInvalid)},
      {0, "C:\\none", "Cannot load left file.\n\nReason: " + systemErrorText(MemoryFiles::notFound)},
  };
  for (const auto& [side, name, message] : cases) {
    SessionRun run;
    run.act("compare type-left");
    run.window.names[side] = name;
    EXPECT_EQ(run.act("compare"), "error: " + message + "\n");
    EXPECT_EQ(run.edits.text(0), "!a\nb\nc\n");
    EXPECT_EQ(run.window.names[side], name) << "to be mended";
  }

  // Names are taken as they are meant, and completed.
  SessionRun run;
  run.files.files["C:\\here\\l.txt"].contents = "a\n";
  run.files.folder = "C:\\here\\";
  run.window.names[0] = " \"l.txt\" ";
  EXPECT_EQ(run.compare(), "");
  EXPECT_EQ(run.window.names[0] + ' ' + run.side(0).path, "C:\\here\\l.txt C:\\here\\l.txt");
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
      EXPECT_EQ(shown(run), std::string("Merivane - [l.txt, r.txt]||") + (used ? "" : "|fresh"));
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
  run.files.files["C:\\l.txt"].contents = "\xEF\xBB\xBF" + run.right();
  EXPECT_EQ(run.compare(),
            "tell: The texts of the files are identical. Their encodings differ: UTF-8 BOM, ASCII.\n");
  run.take("switch");
  EXPECT_EQ(run.session.lineEndText(), "UNIX, UNIX UTF-8 BOM");
}

TEST(TextSession, FilesThatAreComparedAgainKeepTheirPlace) {
  SessionRun run;
  const auto placeAfter = [&run](const char* steps) { return run.act(steps), run.edits.place(); };
  EXPECT_EQ(placeAfter("compare down down right compare"), "2,1");
  run.settings.scrollToFirst = true;
  EXPECT_EQ(placeAfter("compare"), "1,0") << "the first difference";
  run.settings.scrollToFirst = false;
  run.files.files["C:\\other.txt"].contents = "a\nb\nc\n";
  run.window.names[0] = "C:\\other.txt";
  EXPECT_EQ(placeAfter("compare"), "0,0");
  run.edits.press("down");
  run.compare(WorkEnd::cancelled);
  EXPECT_EQ(placeAfter("compare"), "0,0") << "nothing was shown in between";

  run.session.compare();
  run.settings.ignoreCase = true;
  run.window.finish(WorkEnd::done);
  EXPECT_TRUE(run.session.optionsChanged()) << "while it was compared";
  run.compare();
  EXPECT_FALSE(run.session.optionsChanged());
}

TEST(TextSession, AsksForEachSideBeforeChangesAreLost) {
  const std::string askLeft = "ask or cancel: Save changes to C:\\l.txt?\n",
                    askRight = "ask or cancel: Save changes to C:\\r.txt?\n";
  const std::string left = "a\nb\nc\n", right = "a\r\nx\r\nc\r\n";
  const std::string savedLeft = "status: Saved C:\\l.txt\n";
  // What is answered, whether the window closes, what was asked, and what is saved and stays modified.
  const std::tuple<Answers, bool, std::string, std::string> cases[] = {
      {{no, cancel}, false, askLeft + askRight, left + "*|" + right + "*"},
      {{cancel}, false, askLeft, left + "*|" + right + "*"},
      {{yes, no}, true, askLeft + savedLeft + askRight, "!" + left + "|" + right + "*"},
  };
  for (const auto& [answers, closes, log, saved] : cases) {
    SessionRun run;
    run.act("compare type-left type-right");
    EXPECT_TRUE(run.session.mayClose()) << "not asked unless the settings want it";
    run.settings.askConfirmation = true;
    run.window.answers = answers;
    EXPECT_EQ(run.session.mayClose(), closes);
    EXPECT_EQ(run.said(), log);
    EXPECT_EQ(run.saved(), saved);
  }

  // Comparing again loses as much, and asks in its own words whatever the settings.
  for (const Answer answer : {yes, no, cancel}) {
    SessionRun run;
    run.act("compare type-right");
    run.window.names[0] = "C:\\r.txt";
    run.window.answers = {answer};
    run.session.compare();
    EXPECT_TRUE(run.said().starts_with(
        "ask or cancel: C:\\r.txt\n\nComparing again reads the files anew, without your changes.\n"
        "Do you want to save your changes to this file first?\n"));
    EXPECT_EQ(run.isComparing(), answer != cancel);
    EXPECT_EQ(run.window.names[0], answer == cancel ? "C:\\l.txt" : "C:\\r.txt") << "what is shown";
    EXPECT_EQ(run.right(), answer == yes ? "!" + right : right);
  }

  // A side that has no path is saved under its name if that can be one, but not over another file.
  SessionRun run;
  run.settings.askConfirmation = true;
  const std::tuple<const char*, Answers, std::string> unnamed[] = {
      {"",
       {yes, yes},
       "ask or cancel: Save changes to C:\\new.txt?\nstatus: Saved C:\\new.txt\n"
       "ask or cancel: Save changes to <no file>?\nSave Right File from \n"},
      {"C:\\r.txt",
       {yes, no},
       askRight + "warn, rather no: C:\\r.txt\n\nThis file exists already. Do you want to replace it?\n"}};
  run.window.names[0] = "C:\\new.txt";
  run.act("type-left type-right");
  for (const auto& [name, answers, log] : unnamed) {
    run.window.names[1] = name;
    run.window.answers = answers;
    EXPECT_FALSE(run.session.mayClose());
    EXPECT_EQ(run.said(), log);
    EXPECT_EQ(run.contents("C:\\new.txt"), "!");
  }
}

TEST(TextSession, SavesTheChangedSideUnderItsName) {
  const std::string savedLeft = "status: Saved C:\\l.txt\n", savedRight = "status: Saved C:\\r.txt\n";
  SessionRun run;
  EXPECT_EQ(run.act("save"), "status: Neither file has unsaved changes.\n");
  EXPECT_EQ(run.act("type-left save"), "Save Left File from C:\\l.txt\n")
      << "the name in the box is not the text's own";
  run.window.answers = {no};
  run.compare();

  // The active side goes first; one without changes is never written.
  EXPECT_EQ(run.act("type-right switch-pane save"), savedRight);
  EXPECT_EQ(run.saved(), "a\nb\nc\n|!a\r\nx\r\nc\r\n");
  EXPECT_EQ(run.files.files["C:\\l.txt"].modified, 0);
  run.act("type-right type-left");
  run.edits.view().file(1).readOnly = true;
  EXPECT_EQ(run.act("save"), savedLeft);
  EXPECT_EQ(run.saved(), "!a\nb\nc\n|!a\r\nx\r\nc\r\n*");
  run.type(0);
  run.edits.view().takeChanges();
  run.act("save-all");
  EXPECT_EQ(run.saved(), "!!a\nb\nc\n|!!a\r\nx\r\nc\r\n");
  EXPECT_FALSE(run.side(1).readOnly);
  EXPECT_TRUE(run.edits.view().takeChanges().everything);

  // What another program wrote is not lost unasked, nor twice.
  run.files.files["C:\\l.txt"].contents = "theirs";
  const std::string changed =
      "warn, rather no: C:\\l.txt\n\nAnother program has changed this file since it was loaded.\n"
      "Do you want to save yours over it?\n";
  EXPECT_EQ(run.act("type-left save", {no}), changed);
  EXPECT_TRUE(run.isModified(0));
  EXPECT_EQ(run.act("save", {yes}), changed + savedLeft);
  EXPECT_EQ(run.left(), "!!!a\nb\nc\n");
  run.files.files.erase("C:\\l.txt");
  EXPECT_EQ(run.act("type-left save"), savedLeft) << "nobody's work is in the way";
}

TEST(TextSession, SavesTheActiveSideUnderAnotherName) {
  SessionRun run;
  run.files.files["C:\\l.txt"].contents = "a\r\nb\r\nc\n";
  run.compare();
  EXPECT_EQ(run.session.lineEndText(), "DOS mixed, DOS");
  run.files.folder = "D:\\";
  run.window.chosen = "copy.txt";
  EXPECT_EQ(run.act("save-as"), "Save Left File from C:\\l.txt\nstatus: Saved D:\\copy.txt\n");
  EXPECT_EQ(run.contents("D:\\copy.txt"), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(run.settings.leftFileHistory.First(), "D:\\copy.txt");
  EXPECT_EQ(shown(run), "Merivane - [copy.txt, r.txt]|DOS, DOS|Diffs: 1, Lines: 1|compared");
}

TEST(TextSession, ReplacesASideAndItsFile) {
  const std::string question =
      "ask, rather no: C:\\l.txt\n\nWarning: you cannot undo this operation! Really replace the file?\n";
  SessionRun run;
  EXPECT_EQ(run.act("compare type-right replace-left"), question);
  EXPECT_EQ(run.edits.text(0), "a\nb\nc\n");
  EXPECT_EQ(run.act("replace-left", {yes}), question + "status: Saved C:\\l.txt\n");
  EXPECT_EQ(run.saved(), "!a\r\nx\r\nc\r\n|a\r\nx\r\nc\r\n*") << "the other's file is as it was";
  EXPECT_EQ(shown(run), "Merivane - [l.txt, r.txt*]|DOS, DOS|No differences|compared");
  EXPECT_FALSE(run.edits.history().canUndo());
  EXPECT_EQ(run.act("type-left save"), "status: Saved C:\\l.txt\n") << "as this window wrote it";

  // What another program wrote stays if the user wants that, and so does the side.
  run.files.files["C:\\l.txt"].contents = "theirs";
  EXPECT_NE(run.act("type-left replace-left", {yes, no}).find("Another program has changed this file"),
            std::string::npos);
  EXPECT_EQ(run.left() + run.edits.text(0), "theirs!!!a\nx\nc\n");

  // A copy that cannot be written is an edit.
  SessionRun locked;
  locked.compare();
  locked.files.files["C:\\l.txt"].writable = false;
  EXPECT_EQ(locked.act("replace-left", {yes}),
            question + "error: Could not save the file.\n\nReason: " + systemErrorText(13) + "\n");
  EXPECT_EQ(locked.saved(), "a\nb\nc\n*|a\r\nx\r\nc\r\n");
  EXPECT_EQ(locked.edits.text(0), "a\nx\nc\n");
  locked.act("undo");
  EXPECT_EQ(locked.edits.text(0), "a\nb\nc\n");
}

TEST(TextSession, SwitchesSidesWithTheirNames) {
  SessionRun run;
  run.act("compare type-left");
  run.window.names[0] = "typed";
  run.act("switch save");
  EXPECT_EQ(shown(run), "Merivane - [r.txt, l.txt]|DOS, UNIX|Diffs: 1, Lines: 2|compared");
  EXPECT_EQ(run.window.names[0] + ' ' + run.window.names[1], "C:\\r.txt typed");
  EXPECT_EQ(run.left(), "!a\nb\nc\n");
}

TEST(TextSession, ExportsOverItsOwnPageAloneUnasked) {
  SessionRun run;
  run.settings.exportResults = "C:\\last.html";
  EXPECT_EQ(run.act("compare export"), "export from C:\\last.html\n");
  EXPECT_EQ(run.settings.exportResults, "C:\\last.html") << "cancelled";

  run.files.folder = "C:\\";
  run.window.chosen = "page.html";
  run.act("export");
  EXPECT_EQ(run.act("export").find("exists"), std::string::npos);
  EXPECT_EQ(run.contents("C:\\page.html").substr(0, 42), "<HTML>\r\n<HEAD>\r\n<TITLE>C:\\l.txt, C:\\r.txt<");

  // A compared file under another name, a page of somebody else, and, once more, a file that is compared.
  run.files.otherNames["D:\\link"] = "C:\\l.txt";
  run.files.files["D:\\link"];
  run.files.files["C:\\theirs.html"].contents = "theirs";
  const auto asks = [&run](const std::string& path, const char* steps, const Answers& answers) {
    run.window.chosen = path;
    const std::string said = run.act(steps, answers);
    const size_t asked =
        said.rfind("warn, rather no: " + path + "\n\nThis file exists already. Do you want to replace it?\n");
    return asked != said.npos && asked > said.rfind("export from");
  };
  for (const char* const path : {"D:\\link", "C:\\theirs.html", "C:\\l.txt"}) {
    EXPECT_TRUE(asks(path, "export", {no})) << path;
  }
  EXPECT_EQ(run.left() + run.contents("C:\\theirs.html"), "a\nb\nc\ntheirs");
  EXPECT_TRUE(asks("C:\\l.txt", "export export", {yes, yes}));

  run.window.chosen = "C:\\no.html";
  run.files.files["C:\\no.html"].writable = false;
  EXPECT_TRUE(
      run.act("export", {yes})
          .ends_with("error: Could not export comparison results.\n\nReason: " + systemErrorText(13) + "\n"));
}

/// All that the user would miss: the files, and which sides differ from them.
std::string state(SessionRun& run) {
  return run.saved() + '#' + run.edits.text(0) + '#' + run.edits.text(1) + '#' + run.side(0).path + '#' +
         run.side(1).path + '#' + run.contents("C:\\chosen");
}

/// What a user does to two edited sides, with one answer to every question.
constexpr const char* kActions[] = {"save",   "save-as", "replace-left", "save-all",
                                    "switch", "export",  "offer"};
const Answers kYes(9, yes);

/// The sides' texts were changed, and both files as well.
std::unique_ptr<SessionRun> editedRun() {
  auto run = std::make_unique<SessionRun>();
  run->act("compare type-left type-right");
  run->window.chosen = "C:\\chosen";
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
  for (const char* const action : kActions) {
    SCOPED_TRACE(action);
    for (uint32_t failing = 0;; ++failing) {
      const auto run = editedRun();
      const std::string before = state(*run);
      run->files.failStep(failing, 77);
      const std::string said = run->act(action, kYes);
      if (!run->files.endFailing()) break;
      EXPECT_NE(said.find("Reason: " + systemErrorText(77)), std::string::npos) << failing;
      expectHonest(*run);
      if (std::string_view(action).starts_with("save") && action != kActions[3]) {
        EXPECT_EQ(state(*run), before);
      }
    }
  }
}

TEST(TextSession, WithoutMemoryNothingIsLost) {
  for (const std::string action : kActions) {
    SCOPED_TRACE(action);
    auto run = editedRun();
    run->act(action, kYes);
    const std::string whole = state(*run);
    failEachAllocation(
        [&] { run = editedRun(), run->window.answers = kYes; }, [&] { return run->take(action), false; },
        [&](bool thrown) {
          const bool told = thrown || run->window.outOfMemory + run->edits.host().outOfMemory > 0 ||
                            run->said().find("error") != std::string::npos;
          EXPECT_TRUE(told || state(*run) == whole);
          expectHonest(*run);
        },
        true);
  }
  // A comparison ends in what it shows, or in what was shown before.
  for (const WorkEnd end : {WorkEnd::done, WorkEnd::cancelled, WorkEnd::outOfMemory}) {
    std::unique_ptr<SessionRun> run;
    failEachAllocation(
        [&] {
          run = editedRun();
          run->window.answers = {no, no};
        },
        [&] { return run->session.compare(), run->window.finish(end), 0; },
        [&](int) {
          const bool before = run->isModified(0) && run->isModified(1);
          const bool compared = run->edits.text(0) == "a\nb\nc\n" && run->session.showsComparison();
          EXPECT_TRUE(before || compared || (run->edits.text(0).empty() && !run->session.showsComparison()));
          EXPECT_EQ(run->edits.fault(), "");
          run->window.answers = {no, no};
          run->session.compare();
          EXPECT_TRUE(run->isComparing());
        },
        0);
  }
}

}  // namespace
}  // namespace merivane
