#ifdef _WIN32  // the shell is there alone

#include "operations/win/shell_trees.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>

#include "base/paths.h"
#include "operations/folder_operations.h"

namespace merivane {
namespace {

/// Real folders below the current one, which the runner of the tests has made for this run alone.
class ShellTreesTest : public testing::Test {
 protected:
  void SetUp() override {
    top_ = files_.absolute("shell trees");
    ASSERT_EQ(shell_->find(top_).kind, FileKind::none);
    tops_[0] = joinPath(top_, "old \xC3\xA4");
    tops_[1] = joinPath(top_, "new");
    for (const std::string& folder : {top_, tops_[0], tops_[1]}) ASSERT_EQ(shell_->makeFolder(folder), 0u);
    for (const int side : {0, 1}) {
      const std::string text = side == 0 ? "old contents" : "new";
      write(side, "both.txt", text);
      write(side, side == 0 ? "alone \xC5\x82.txt" : "only new.txt", text);
      for (const char* const folder : {"tree", "tree\\deep"}) {
        ASSERT_EQ(shell_->makeFolder(joinPath(tops_[side], folder)), 0u);
      }
      write(side, "tree\\deep\\read only.txt", text);
      std::filesystem::permissions(
          std::filesystem::u8path(joinPath(tops_[side], "tree\\deep\\read only.txt")),
          std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
      write(side, "tree\\a.txt", text);
    }
    for (const char* const hidden : {"both.txt", "tree\\deep"}) {
      ASSERT_EQ(std::system(("attrib +h \"" + joinPath(tops_[1], hidden) + '"').c_str()), 0);
    }
    FolderOptions options;
    ASSERT_EQ(compareFolders(files_, tops_, options, nullptr, result_), Result::success);
  }
  void TearDown() override { EXPECT_EQ(removeTree(files_, *shell_, top_), 0u); }

  void write(int side, const std::string& name, const std::string& text) {
    ASSERT_EQ(replaceFile(files_, joinPath(tops_[side], name), text), 0u);
  }

  /// All that is below a folder, with times, attributes and contents.
  void collect(const std::string& folder, const std::string& name,
               std::map<std::string, std::string>& found) {
    FolderListing listing;
    ASSERT_EQ(files_.list(folder, nullptr, listing), 0u);
    for (uint32_t i = 0; i < listing.size(); ++i) {
      const ListedEntry& entry = listing.entry(i);
      const std::string path = joinPath(folder, listing.name(i)), below = joinPath(name, listing.name(i));
      std::string facts = entry.isReadOnly ? "read-only " : "";
      if (entry.isHidden) facts += "hidden ";
      if (entry.kind == FileKind::folder) {
        collect(path, below, found);
      } else {
        std::unique_ptr<InputFile> file;
        ByteArray bytes;
        ASSERT_EQ(files_.open(path, file), 0u) << path;
        ASSERT_EQ(readToEnd(*file, bytes), 0u);
        facts += std::to_string(entry.modified) + ": " + std::string(bytes.data(), bytes.size());
      }
      found[below] = facts;
    }
  }
  std::map<std::string, std::string> trees() {
    std::map<std::string, std::string> found;
    for (const int side : {0, 1}) collect(tops_[side], side == 0 ? "O" : "N", found);
    return found;
  }
  const FolderEntry& entry(const std::string& name) {
    for (const auto& entries : result_.entries) {
      for (const FolderEntry& each : entries) {
        if (each.name() == name) return each;
      }
    }
    ADD_FAILURE() << name;
    static const FolderEntry none;
    return none;
  }

  FileSystem& files_ = systemFiles();
  std::unique_ptr<TreeOperations> shell_ = makeShellTrees(nullptr);
  FolderOperations operations_{files_, *shell_};
  FolderComparison result_;
  std::string top_, tops_[2];
};

TEST_F(ShellTreesTest, WhatIsDoneToRealFoldersIsUndone) {
  using Operation = EntryOperation;
  const struct {
    const char* name;
    Operation operation;
  } cases[] = {{"both.txt", Operation::copyToOld},
               {"both.txt", Operation::copyToNew},
               {"both.txt", Operation::deleteBoth},
               {"alone \xC5\x82.txt", Operation::copyToNew},
               {"alone \xC5\x82.txt", Operation::deleteOld},
               {"only new.txt", Operation::deleteNew},
               {"tree\\deep\\read only.txt", Operation::copyToNew},
               {"tree\\deep\\read only.txt", Operation::deleteBoth}};
  const auto first = trees();
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " " + std::to_string(static_cast<int>(c.operation)));
    const Examination examination =
        examine(files_, *shell_, operations_.plan(tops_, entry(c.name), c.operation, true));
    ASSERT_FALSE(examination.refusal) << examination.refusal->message();
    EXPECT_FALSE(examination.changedSince);
    DoneOperation done;
    ASSERT_EQ(operations_.perform(examination, done).kind, OperationEnd::Kind::done);
    EXPECT_NE(trees(), first);
    ASSERT_EQ(operations_.undo(examine(files_, *shell_, operations_.planUndo(done)), done).kind,
              OperationEnd::Kind::done);
    EXPECT_EQ(trees(), first);
  }
}

TEST_F(ShellTreesTest, AWholeFolderIsReplacedAndAFileInUseStopsThat) {
  FolderEntry folder;
  folder.names[0] = folder.names[1] = "tree";
  folder.isFolder = true;
  const auto first = trees();
  for (const auto operation : {EntryOperation::copyToOld, EntryOperation::deleteBoth}) {
    const Examination examination =
        examine(files_, *shell_, operations_.plan(tops_, folder, operation, true));
    ASSERT_FALSE(examination.refusal) << examination.refusal->message();
    EXPECT_EQ(examination.sides[0].size.files, 2u);
    DoneOperation done;
    {
      std::unique_ptr<JournalFile> inUse;
      std::string contents;
      ASSERT_EQ(shell_->openJournal(joinPath(tops_[0], "tree\\a.txt"), inUse, contents), 0u);
      EXPECT_NE(operations_.perform(examination, done).kind, OperationEnd::Kind::done);
    }
    EXPECT_EQ(trees(), first);
    ASSERT_EQ(operations_.perform(examination, done).kind, OperationEnd::Kind::done);
    if (operation == EntryOperation::copyToOld) {
      auto both = trees();
      for (const char* const name : {"tree\\a.txt", "tree\\deep", "tree\\deep\\read only.txt"}) {
        EXPECT_EQ(both[joinPath("O", name)], both[joinPath("N", name)]);
      }
      EXPECT_EQ(shell_->find(joinPath(tops_[0], "tree\\deep")).modified,
                shell_->find(joinPath(tops_[1], "tree\\deep")).modified);
    }
    ASSERT_EQ(operations_.undo(examine(files_, *shell_, operations_.planUndo(done)), done).kind,
              OperationEnd::Kind::done);
    EXPECT_EQ(trees(), first);
  }
}

TEST_F(ShellTreesTest, WhatTheShellWouldMisreadIsRefused) {
  // A path of 260 characters and more, which must not reach the shell.
  std::string deep = joinPath(tops_[0], "tree");
  while (deep.size() < 300) {
    deep = joinPath(deep, std::string(40, 'd'));
    ASSERT_EQ(shell_->makeFolder(deep), 0u);
  }
  FolderEntry folder;
  folder.names[0] = folder.names[1] = "tree";
  folder.isFolder = true;
  for (const auto operation :
       {EntryOperation::copyToNew, EntryOperation::deleteOld, EntryOperation::deleteBoth}) {
    const Examination examination =
        examine(files_, *shell_, operations_.plan(tops_, folder, operation, true));
    ASSERT_TRUE(examination.refusal);
    EXPECT_EQ(examination.refusal->reason, TextId::refusedTooLong);
  }
}

TEST_F(ShellTreesTest, AJournalIsFoundOnlyWhenItsProgramIsGone) {
  std::unique_ptr<Journal> journal;
  ASSERT_EQ(Journal::create(files_, *shell_, "both.txt", journal), 0u);
  const std::string folder = journal->folder();
  const std::string made = joinPath(tops_[0], "made");
  ASSERT_EQ(journal->begin("words", {{Step::Kind::makeFolder, made, {}, {}}}), 0u);
  ASSERT_EQ(journal->atStep(0), 0u);
  ASSERT_EQ(shell_->makeFolder(made), 0u);
  EXPECT_EQ(findInterrupted(files_, *shell_).size(), 0u);
  journal.reset();
  auto found = findInterrupted(files_, *shell_);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].words, "words");
  EXPECT_TRUE(putBack(files_, *shell_, found[0]));
  EXPECT_FALSE(shell_->find(made).exists());
  EXPECT_FALSE(shell_->find(folder).exists());
}

}  // namespace
}  // namespace merivane

#endif
