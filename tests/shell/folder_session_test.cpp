#include "shell/folder_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/paths.h"
#include "operations/journal.h"
#include "shell/interrupted_operations.h"
#include "tests/support/memory_trees.h"
#include "tests/support/session_run.h"

namespace merivane {
namespace {

using enum FolderCategory;

class FakeFolderWindow final : public FakeSessionHost, public FolderSessionHost {
 public:
  void onResult(bool again) override { log += again ? "the same folders\n" : "a result\n"; }
  void onMarks(FolderCategory category) override {
    log += "marks " + std::to_string(static_cast<int>(category)) + "\n";
  }
  void openComparison(const GivenSide (&sides)[2], bool folders, bool several) override {
    log += "open " + sides[0].path + (sides[0].readOnly ? " read-only " : " ") + sides[1].path +
           (folders ? " folders" : "") + (several ? " several" : "") + "\n";
  }
};

/// Two folders in memory whose names stand in the boxes.
class FolderSessionTest : public testing::Test {
 protected:
  FolderSessionTest() {
    for (const std::string side : {"O", "N"}) {
      files_.files[side].kind = FileKind::folder;
      window_.names[side == "N"] = side;
      file(side, "a.txt", "of " + side, side == "O" ? 5 : 7);
      file(side, "b.txt", side == "O" ? "longer than that" : "short", 9);
      file(side, "same.txt", "same", 1);
    }
    file("O", "old 1.txt", "1", 1);
    file("O", "old 2.txt", "22", 1);
    file("N", "new.txt", "333", 1);
    settings_.compareQuick = true;
  }

  MemoryFiles::File& file(const std::string& side, const std::string& name, const std::string& contents,
                          int64_t modified) {
    MemoryFiles::File& made = files_.files[joinPath(side, name)];
    made.contents = contents;
    made.modified = modified;
    return made;
  }
  std::string compare(WorkEnd end = WorkEnd::done) {
    session_.compare();
    window_.finish(end);
    return window_.said();
  }
  std::string run(Command command, FolderCategory category, std::vector<uint32_t> rows,
                  std::deque<Answer> answers = {}, WorkEnd end = WorkEnd::done) {
    window_.answers = std::move(answers);
    session_.run(command, category, {rows, rows[0]});
    window_.finish(end);
    return window_.said();
  }
  std::string labels(FolderCategory category, const RowSelection& selection) {
    std::string labels;
    for (const RowMenuItem& item : session_.menu(category, selection)) {
      labels += !item.command ? "-, " : item.label + (item.isDefault ? " (default), " : ", ");
    }
    return labels;
  }
  std::string tabs() {
    std::string labels;
    for (const FolderCategory tab : kFolderTabs) labels += session_.tabLabel(tab) + " ";
    return labels;
  }
  MemoryFiles::File& fileOf(const std::string& path) { return files_.files[inFolder(path)]; }
  bool has(const std::string& path) { return files_.files.contains(inFolder(path)); }
  static std::string target(const std::string& path) { return path; }
  static std::string time() { return "now"; }

  MemoryFiles files_;
  MemoryTrees disk_{files_};
  Settings settings_;
  MemoryValues values_;
  SettingsStore store_{values_};
  FakeFolderWindow window_;
  FolderSession session_{
      window_, {files_, settings_, store_, target, time}, {std::shared_ptr<void>(), &disk_}};
};

const std::string kShellItems = "&Open in app, E&xplore folder, &Properties, ";

TEST_F(FolderSessionTest, ComparesWhatTheBoxesNameOrSaysWhyNot) {
  EXPECT_EQ(compare(), "a result\n");
  EXPECT_EQ(tabs(), "Changed (2) Old (2) New (1) Same (1) ");
  EXPECT_EQ(session_.countsText(), "Changed: 2, Old: 2, New: 1, Same: 1");
  EXPECT_EQ(session_.rowName(changed, 0) + session_.rowDescription(changed, 0), "a.txt(newer, contents)");
  EXPECT_EQ(session_.pathsText(onlyOld, {{0, 1}, 0}),
            inFolder("O/old 1.txt") + "\r\n" + inFolder("O/old 2.txt"));
  EXPECT_EQ(session_.findTyped(onlyOld, "OLD", 1), 1u);
  EXPECT_EQ(session_.findTyped(onlyOld, "old 1", 1), 0u);
  EXPECT_EQ(compare(), "the same folders\n");
  EXPECT_EQ(settings_.leftFolderHistory.First(), "O");

  settings_.haveIncludeFilter = true;
  settings_.includeFilterHistory.Add("b*;same.*");
  EXPECT_TRUE(session_.optionsChanged());
  compare();
  EXPECT_FALSE(session_.optionsChanged());
  EXPECT_EQ(session_.filterText(), "Filter: b*;same.*");
  EXPECT_EQ(tabs(), "Changed (1) Old (0) New (0) Same (1) ");

  settings_.identicalMessage = true;
  settings_.includeFilterHistory.Add("same.*");
  EXPECT_EQ(compare(), "the same folders\ntell: The folders are identical.\n");
  fileOf("N/same.txt").error = MemoryFiles::denied;
  EXPECT_EQ(compare(), "the same folders\n") << "it could not be read";
  EXPECT_EQ(compare(WorkEnd::cancelled), "a result\nerror: Operation aborted.\n");

  const std::pair<std::string, std::string> refused[] = {
      {"", "error: The old folder name is invalid.\n"},
      {"missing", "a result\nerror: Could not find the file or folder:\nmissing\n"},
      {inFolder("O/a.txt"), "a result\nerror: 'Old Folder' is not a folder.\n"}};
  for (const auto& [name, message] : refused) {
    window_.names[0] = name;
    EXPECT_EQ(compare(), message);
  }
}

TEST_F(FolderSessionTest, TheMenuIsMadeOfWhatTheRowsAllow) {
  compare();
  EXPECT_EQ(labels(onlyOld, {{0}, 0}), "C&opy to new, &Delete old (default), -, " + kShellItems);
  EXPECT_EQ(labels(changed, {{0, 1}, 0}),
            "Co&mpare..., -, &Copy to old, C&opy to new, -, &Delete old, D&elete new, Delete &both, -, " +
                kShellItems);
  EXPECT_EQ(labels(same, {{0}, 0}), "Co&mpare... (default), -, " + kShellItems);
  EXPECT_EQ(labels(changed, {}), "");
  EXPECT_FALSE(session_.defaultCommand(changed, {{1}, 0})) << "the caret is elsewhere";

  EXPECT_EQ(run(Command::compareEntries, changed, {0}),
            "marks 2\nopen " + inFolder("O/a.txt") + " " + inFolder("N/a.txt") + "\n");
  EXPECT_EQ(session_.nextOpenRow(changed, std::nullopt, 1), 1u);

  EXPECT_EQ(run(Command::copyToOld, changed, {0, 1}), "marks 2\nstatus: Entries done: 2\n")
      << "also what was only compared";
  EXPECT_EQ(labels(changed, {{0}, 0}), "&Undo copy to old, -, " + kShellItems);
  run(Command::deleteOld, onlyOld, {1});
  EXPECT_TRUE(labels(onlyOld, {{0, 1}, 0}).starts_with("&Undo, -, C&opy to new, &Delete old, -, "));
  EXPECT_EQ(run(Command::deleteOld, onlyOld, {1}),
            "status: Something was done to this entry already. Undo it first.\n");
}

TEST_F(FolderSessionTest, AReadOnlyFolderIsNotChanged) {
  GivenSide old("O");
  old.title = "last week";
  old.readOnly = true;
  session_.describe(old, std::string("N"));
  compare();
  EXPECT_EQ(session_.title(), "Merivane - [last week, N]");
  EXPECT_EQ(labels(changed, {{0}, 0}),
            "Co&mpare... (default), -, C&opy to new, -, D&elete new, -, " + kShellItems);
  for (const Command command : {Command::copyToOld, Command::deleteOld, Command::deleteBoth}) {
    EXPECT_EQ(run(command, changed, {0}), "status: This cannot be done with these entries.\n");
  }
  EXPECT_EQ(run(Command::compareEntries, changed, {0}),
            "marks 2\nopen " + joinPath("O", "a.txt") + " read-only " + joinPath("N", "a.txt") + "\n");
}

TEST_F(FolderSessionTest, OperationsAndUndoGoThroughTheRows) {
  compare();
  const auto first = files_.files;
  EXPECT_EQ(run(Command::deleteOld, onlyOld, {0, 1}), "marks 0\nstatus: Entries done: 2\n");
  EXPECT_EQ(session_.title() + ' ' + tabs(), "Merivane - [O*, N] Changed (2) Old (0) New (1) Same (1) ");
  EXPECT_FALSE(has("O/old 1.txt"));
  EXPECT_EQ(run(Command::undo, onlyOld, {0, 1}), "marks 0\nstatus: Entries done: 2\n");
  EXPECT_EQ(files_.files, first);

  // A look that is given up changes nothing.
  EXPECT_EQ(run(Command::deleteOld, onlyOld, {0, 1}, {}, WorkEnd::cancelled), "status: Operation aborted.\n");
  EXPECT_EQ(run(Command::copyToNew, onlyOld, {0, 1}, {}, WorkEnd::outOfMemory), "");
  EXPECT_EQ(window_.outOfMemory, 1);
  EXPECT_FALSE(session_.isBusy());
  EXPECT_EQ(files_.files, first);

  // The first failure stops it.
  fileOf("O/old 2.txt").link = true;
  EXPECT_EQ(run(Command::copyToNew, onlyOld, {0, 1}),
            "marks 0\nerror: " + inFolder("O/old 2.txt") +
                "\n\nThis is a link. Copying or deleting would reach what it leads to.\n");
  EXPECT_TRUE(has("N/old 1.txt"));
  fileOf("O/old 2.txt").link = false;

  // What was changed since is asked about, and what Undo moves away goes to the recycle bin.
  run(Command::copyToOld, changed, {0});
  file("O", "a.txt", "later work", 50);
  EXPECT_THAT(run(Command::undo, changed, {0}, {Answer::no}), testing::HasSubstr("This was changed since"));
  EXPECT_EQ(fileOf("O/a.txt").contents, "later work");
  run(Command::undo, changed, {0}, {Answer::yes});
  EXPECT_EQ(fileOf("O/a.txt").contents, "of O");
  EXPECT_TRUE(std::ranges::any_of(disk_.bin, [](const auto& recycled) {
    return nameOf(recycled.first) == "a.txt" && recycled.second.contents == "later work";
  }));
}

TEST_F(FolderSessionTest, WhatCannotBeBroughtBackIsAskedAboutOnce) {
  fileOf("O/tree").kind = FileKind::folder;
  file("O", joinPath("tree", "hidden by the filter.obj"), "12345", 1);
  file("O", "b.txt", "longer than that", 99);
  settings_.haveExcludeFilter = true;
  settings_.excludeFilterHistory.Add("*.obj");
  settings_.folderUndo = false;
  compare();
  const std::string lost = "\n\nWarning: you cannot undo this operation! Really ";
  EXPECT_EQ(run(Command::deleteOld, onlyOld, {0, 1, 2}),
            "warn, rather no: To be deleted: files: 3, folders: 1, bytes: 8" + lost + "go on?\n");
  EXPECT_EQ(run(Command::copyToOld, changed, {1}),
            "warn, rather no: " + inFolder("O/b.txt") +
                "\n\nTo be replaced: files: 1, folders: 0, bytes: 16\nNewer than what replaces it: 1" + lost +
                "replace the file?\n");
  EXPECT_TRUE(has("O/old 1.txt"));

  settings_.folderUndo = true;
  disk_.hasBin = false;
  EXPECT_THAT(run(Command::deleteOld, onlyOld, {0}, {Answer::yes}),
              testing::HasSubstr("There is no recycle bin"));
  EXPECT_FALSE(has("O/tree"));

  settings_.askConfirmation = true;
  window_.answers = {Answer::no, Answer::yes};
  EXPECT_FALSE(session_.mayClose());
  EXPECT_TRUE(session_.mayClose());
  EXPECT_EQ(disk_.below("T").size(), 5u) << "a journal, its file and the tree";
  window_.answers = {Answer::yes};
  compare();
  EXPECT_EQ(disk_.below("T").size(), 1u) << "a new result drops the journals";
  EXPECT_TRUE(session_.mayClose());
}

TEST_F(FolderSessionTest, UndoOfNestedEntriesGoesFromTheLaterToTheEarlier) {
  settings_.compareFolderDate = true;
  for (const std::string side : {"O", "N"}) {
    files_.files[joinPath(side, "tree")].kind = FileKind::folder;
    files_.files[joinPath(side, "tree")].modified = side == "O";
    file(side, joinPath("tree", "x"), side, 3);
  }
  compare();
  const auto first = files_.files;
  ASSERT_EQ(session_.rowName(changed, 0) + ", " + session_.rowName(changed, 1),
            "tree, " + joinPath("tree", "x"));
  EXPECT_EQ(run(Command::deleteOld, changed, {1}), "marks 2\nstatus: Entries done: 1\n");
  EXPECT_EQ(run(Command::deleteBoth, changed, {0}), "marks 2\nstatus: Entries done: 1\n");
  EXPECT_THAT(run(Command::undo, changed, {1}), testing::HasSubstr("Undo that one first."));
  EXPECT_EQ(run(Command::undo, changed, {0, 1}), "marks 2\nmarks 2\nstatus: Entries done: 2\n");
  EXPECT_EQ(files_.files, first);
}

TEST_F(FolderSessionTest, TheNextStartAsksAboutWhatWasInterrupted) {
  compare();
  const auto first = files_.files;
  for (const Answer answer : {Answer::cancel, Answer::no, Answer::yes}) {
    if (answer != Answer::no) {
      disk_.killAt = 6;
      EXPECT_THROW(run(Command::copyToOld, changed, {0}), MemoryTrees::Killed);
      disk_.killAt.reset();
    }
    window_.said();
    window_.answers = {answer};
    offerInterruptedOperations(window_, files_, disk_);
    EXPECT_THAT(window_.said(),
                testing::HasSubstr("ended before this was done:\n\ncopy to old: " + inFolder("O/a.txt")));
    if (answer == Answer::no) {
      EXPECT_EQ(files_.files, first);
    }
  }
  EXPECT_EQ(fileOf("O/a.txt").contents, "of N");
  offerInterruptedOperations(window_, files_, disk_);
  EXPECT_EQ(window_.said(), "");
}

}  // namespace
}  // namespace merivane
