#ifdef _WIN32  // the shell is there alone

#include "operations/win/shell_trees.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "base/paths.h"
#include "operations/folder_operations.h"
#include "tests/support/reference_folders.h"

namespace merivane {
namespace {

namespace fs = std::filesystem;
using enum EntryOperation;
using Files = std::map<std::string, std::string>;

/// Real folders below the current one, which the runner of the tests has made for this run alone.
class ShellTreesTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(shell_->find(top_).kind, FileKind::none);
    for (const int side : {0, 1}) {
      fs::create_directories(at(side, "tree\\deep"));
      for (const char* const name : {"both.txt", side == 0 ? "alone \xC5\x82.txt" : "only new.txt",
                                     "tree\\deep\\read only.txt", "tree\\a.txt"})
        std::ofstream(at(side, name)) << (side == 0 ? "old contents" : "new");
      fs::permissions(at(side, "tree\\deep\\read only.txt"), fs::perms::owner_write,
                      fs::perm_options::remove);
    }
    for (const char* const hidden : {"both.txt", "tree\\deep"})
      ASSERT_EQ(std::system(("attrib +h \"" + joinPath(tops_[1], hidden) + '"').c_str()), 0);
  }
  void TearDown() override { EXPECT_EQ(removeTree(files_, *shell_, top_), 0u); }

  fs::path at(int side, const std::string& name) const { return fs::u8path(joinPath(tops_[side], name)); }

  /// What stands on a side under names that begin so: attributes, and of files times and contents.
  Files filesOf(int side, const std::string& start = "", const std::string& folder = "") {
    Files found;
    FolderListing listing;
    EXPECT_EQ(files_.list(joinPath(tops_[side], folder), nullptr, listing), 0u);
    for (uint32_t i = 0; i < listing.size(); ++i) {
      const ListedEntry& entry = listing.entry(i);
      const std::string name = joinPath(folder, listing.name(i));
      std::string facts = entry.isReadOnly ? "read-only " : "";
      if (entry.isHidden) facts += "hidden ";
      if (entry.kind == FileKind::folder) {
        found.merge(filesOf(side, start, name));
      } else {
        std::ifstream file(at(side, name));
        facts +=
            std::to_string(entry.modified) + ": " + std::string(std::istreambuf_iterator<char>(file), {});
      }
      if (name.starts_with(start)) found[name] = facts;
    }
    return found;
  }

  /// Compares the folders first. "tree" is an entry of its own where nothing below it is.
  Examination examined(const std::string& name, EntryOperation operation) {
    FolderOptions options;
    options.subfolders = name != "tree";
    EXPECT_EQ(compareFolders(files_, tops_, options, nullptr, result_), Result::success);
    return examine(files_, *shell_, operations_.plan(tops_, entryNamed(result_, name), operation, true));
  }

  FileSystem& files_ = systemFiles();
  std::unique_ptr<TreeOperations> shell_ = makeShellTrees(nullptr);
  FolderOperations operations_{files_, *shell_};
  FolderComparison result_;
  const std::string top_ = files_.absolute("shell trees");
  const std::string tops_[2] = {joinPath(top_, "old \xC3\xA4"), joinPath(top_, "new")};
};

TEST_F(ShellTreesTest, WhatIsDoneIsUndoneAndAFileInUseStopsAWholeFolder) {
  const std::pair<const char*, EntryOperation> cases[] = {{"both.txt", copyToOld},
                                                          {"both.txt", copyToNew},
                                                          {"both.txt", deleteBoth},
                                                          {"alone \xC5\x82.txt", copyToNew},
                                                          {"alone \xC5\x82.txt", deleteOld},
                                                          {"only new.txt", deleteNew},
                                                          {"tree\\deep\\read only.txt", copyToNew},
                                                          {"tree\\deep\\read only.txt", deleteBoth},
                                                          {"tree", copyToOld},
                                                          {"tree", deleteBoth}};
  const Files first[2] = {filesOf(0), filesOf(1)};
  for (const auto& [name, operation] : cases) {
    SCOPED_TRACE(name + (" " + std::to_string(static_cast<int>(operation))));
    const auto expectFirst = [&] {
      for (const int side : {0, 1}) EXPECT_EQ(filesOf(side), first[side]);
    };
    const Examination examination = examined(name, operation);
    ASSERT_FALSE(examination.refusal) << examination.refusal->message();
    EXPECT_FALSE(examination.changedSince);
    DoneOperation done;
    const bool isFolder = name == std::string("tree");
    if (isFolder) {
      std::unique_ptr<JournalFile> inUse;
      std::string contents;
      ASSERT_EQ(shell_->openJournal(joinPath(tops_[0], "tree\\a.txt"), inUse, contents), 0u);
      EXPECT_NE(operations_.perform(examination, done).kind, OperationEnd::Kind::done);
    }
    expectFirst();
    const Files before[2] = {filesOf(0, name), filesOf(1, name)};
    ASSERT_EQ(operations_.perform(examination, done).kind, OperationEnd::Kind::done);
    for (const int side : {0, 1}) {
      EXPECT_EQ(filesOf(side, name), !changes(operation, side) ? before[side]
                                     : isCopy(operation)       ? before[1 - side]
                                                               : Files());
    }
    if (isFolder && isCopy(operation)) {
      const auto deep = [&](int side) { return shell_->find(joinPath(tops_[side], "tree\\deep")); };
      EXPECT_EQ(deep(0).modified, deep(1).modified);
    }
    ASSERT_EQ(operations_.undo(examine(files_, *shell_, operations_.planUndo(done)), done).kind,
              OperationEnd::Kind::done);
    expectFirst();
  }
}

TEST_F(ShellTreesTest, WhatTheShellWouldMisreadIsRefused) {
  // A path of 260 characters and more, which must not reach the shell.
  std::string deep = joinPath(tops_[0], "tree");
  while (deep.size() < 300) {
    deep = joinPath(deep, std::string(40, 'd'));
    ASSERT_EQ(shell_->makeFolder(deep), 0u);
  }
  for (const auto operation : {copyToNew, deleteOld, deleteBoth}) {
    const Examination examination = examined("tree", operation);
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
