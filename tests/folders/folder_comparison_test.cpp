#include "folders/folder_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/names.h"
#include "base/paths.h"
#include "base/texts.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/random_trees.h"
#include "tests/support/reference_folders.h"
#include "tests/support/watched_files.h"

namespace merivane {
namespace {

const std::string kPaths[2] = {"O", "N"};

/// The entries of a comparison as lines, each with its category's letter and description.
std::vector<std::string> listed(const FolderComparison& comparison) {
  std::vector<std::string> lines;
  for (const FolderCategory category :
       {FolderCategory::changed, FolderCategory::onlyOld, FolderCategory::onlyNew, FolderCategory::same}) {
    for (const FolderEntry& entry : comparison.category(category)) {
      std::string name(entry.name());
      std::replace(name.begin(), name.end(), kPathSeparator, '/');
      const std::string mark = entry.notCompared == NotCompared::nothing
                                   ? ""
                                   : std::string(" ") + notComparedKey(entry.notCompared);
      lines.push_back("onCS"[static_cast<size_t>(category)] + (" " + name) + (entry.isFolder ? "/" : "") +
                      mark +
                      (category == FolderCategory::changed ? " " + differenceText(entry.differences) : ""));
    }
  }
  return lines;
}

class FolderComparisonTest : public testing::Test {
 protected:
  FolderComparisonTest() { folder("O"), folder("N"); }

  MemoryFiles::File& folder(const std::string& path) {
    MemoryFiles::File& made = files_.files[inFolder(path)];
    made.kind = FileKind::folder;
    return made;
  }
  MemoryFiles::File& file(const std::string& path, const std::string& contents = "text\n") {
    MemoryFiles::File& made = files_.files[inFolder(path)];
    made.contents = contents;
    return made;
  }
  std::vector<std::string> compare() {
    EXPECT_EQ(compareFolders(files_, kPaths, options_, nullptr, found_, &progress_), Result::success);
    return listed(found_);
  }

  MemoryFiles files_;
  FolderOptions options_;
  FolderComparison found_;
  FolderProgress progress_;
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FolderComparisonTest, FindsWhatThePlainComparisonFinds) {
  for (uint32_t seed = 0; seed < 2000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    MemoryFiles files;
    makeTrees(files, kPaths, random);
    const FolderOptions options = randomFolderOptions(random);
    const ReferenceFolders expected(files, kPaths, options);
    files.opened = 0;
    ASSERT_EQ(compareFolders(files, kPaths, options, nullptr, found_), Result::success);
    for (int category = 0; category < kFolderCategories; ++category) {
      ASSERT_EQ(plainEntries(found_.entries[category]), expected.entries[category]) << category;
    }
    if (options.quickContents || !options.fullContents) {
      ASSERT_TRUE(found_.notCompared.empty());
    }
    for (const FolderTrouble& trouble : found_.notCompared) ASSERT_EQ(trouble.reason, NotCompared::binary);
    if (!options.comparesContents()) {
      ASSERT_EQ(files.opened, 0);
    }
  }
}

TEST_F(FolderComparisonTest, DescribesDifferencesAndStandsForWhatIsBelow) {
  file("O/hid").hidden = true;
  file("N/hid").modified = 1;
  folder("O/gone"), file("O/gone/x");
  folder("O/dir"), folder("N/dir").modified = 5;
  file("O/dir/one", "1"), file("N/dir/one", "12").writable = false;
  file("O/swap"), folder("N/swap");
  options_.attributes = options_.folderDate = true;
  EXPECT_THAT(compare(), ElementsAre("C dir/ (newer, contents)", "C dir/one (read-only, larger)",
                                     "C hid (was hidden, newer)", "o gone/", "o swap", "n swap/"));
  EXPECT_TRUE(found_.differs());
  EXPECT_GT(progress_.entries(), 0u);
}

TEST_F(FolderComparisonTest, TellsWhatItCouldNotCompareAndWhy) {
  options_.date = options_.size = false;
  options_.fullContents = true;
  file("O/sub/locked").error = MemoryFiles::denied;
  file("N/sub/locked");
  folder("O/sub"), folder("N/sub");
  file("O/bin", std::string("\0\1", 2)), file("N/bin", std::string("\0\2", 2));
  file("O/bin2", std::string("\0\1", 2)), file("N/bin2", std::string("\0\1", 2));
  const std::string lines = std::string(200000, 'x') + "\n\xC3\xA9\n";
  file("O/marked", "\xEF\xBB\xBF" + lines), file("N/marked", lines);
  file("O/pipe").kind = file("N/pipe").kind = FileKind::other;
  folder("O/dir").error = MemoryFiles::denied;
  folder("N/dir"), folder("O/dir2").error = folder("N/dir2").error = MemoryFiles::denied;
  EXPECT_THAT(compare(), ElementsAre("S dir/ unreadable", "S dir2/ unreadable", "S sub/ below",
                                     "S bin binary", "S bin2", "S marked", "S pipe special"));
  EXPECT_FALSE(found_.differs() || found_.isIdentical());
  std::vector<std::string> troubles;
  for (const FolderTrouble& trouble : found_.notCompared) {
    troubles.push_back(trouble.name + " " + "ON"[trouble.side] + " " + notComparedKey(trouble.reason));
    EXPECT_EQ(trouble.error, trouble.reason == NotCompared::unreadable ? MemoryFiles::denied : 0);
  }
  EXPECT_THAT(troubles,
              ElementsAre("bin O binary", "dir O unreadable", "dir2 O unreadable", "dir2 N unreadable",
                          "pipe O special", inFolder("sub/locked") + " O unreadable"));
}

TEST_F(FolderComparisonTest, EveryFailingStepIsTold) {
  options_.date = options_.size = false;
  options_.threads = 1;
  for (const char* const path : {"O/dir", "N/dir"}) folder(path);
  for (const char* const path : {"O/a", "N/a", "O/dir/b", "N/dir/b", "O/dir/c", "N/dir/c"}) file(path);
  for (bool* const contents : {&options_.quickContents, &options_.fullContents}) {
    options_.quickContents = options_.fullContents = false;
    *contents = true;
    const uint32_t steps = failEachStep(
        files_, MemoryFiles::denied,
        [&] { return compareFolders(files_, kPaths, options_, nullptr, found_); },
        [&](Result result) {
          EXPECT_EQ(result, Result::success);
          ASSERT_EQ(found_.notCompared.size(), 1u);
          EXPECT_EQ(found_.notCompared[0].reason, NotCompared::unreadable);
          EXPECT_FALSE(found_.isIdentical());
        });
    EXPECT_EQ(steps, 4u + 6 * 2);
    EXPECT_TRUE(found_.isIdentical());
  }
}

TEST_F(FolderComparisonTest, RunsOutOfMemoryWithNothingHalfDone) {
  Random random(5);
  makeTrees(files_, kPaths, random);
  options_.threads = 1;
  options_.quickContents = true;
  file("N/only");
  const std::vector<std::string> whole = compare();
  failEachAllocation([&] { file("N/only"); },
                     [&] { return compareFolders(files_, kPaths, options_, nullptr, found_); },
                     [&](Result result) {
                       // Without room for a file's blocks that file alone is not compared; keeping room that
                       // could be given back loses nothing.
                       if (result == Result::success) {
                         EXPECT_TRUE(!found_.notCompared.empty() || listed(found_) == whole);
                         return;
                       }
                       EXPECT_EQ(result, Result::outOfMemory);
                       EXPECT_TRUE(found_.isIdentical());
                       EXPECT_TRUE(found_.names.empty());
                     });
}

TEST_F(FolderComparisonTest, CancelsAtEveryStepAndLeavesNothing) {
  Random random(3);
  while (files_.files.size() < 50) {
    files_.files.clear();
    makeTrees(files_, kPaths, random);
  }
  options_.quickContents = true;
  for (const uint32_t threads : {1u, 3u}) {
    options_.threads = threads;
    for (int after = 0;; ++after) {
      AbortFlag flag;
      std::atomic<int> left = after;
      WatchedFiles files(files_, [&](const std::string&) { --left < 0 ? flag.raise() : void(); });
      const Result result = compareFolders(files, kPaths, options_, &flag, found_);
      if (left >= 0) {
        EXPECT_EQ(result, Result::success);
        EXPECT_TRUE(found_.differs());
        EXPECT_GT(after, 10);
        break;
      }
      EXPECT_EQ(result, Result::cancelled);
      EXPECT_TRUE(found_.isIdentical());
      EXPECT_TRUE(found_.names.empty());
    }
  }
}

TEST_F(FolderComparisonTest, ChecksBothFoldersInOrder) {
  file("file");
  const std::string missing = "Could not find the file or folder:\n";
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"missing", "gone", missing + "missing"},
      {"file", "missing", missing + "missing"},
      {"file", "file", "'Old Folder' is not a folder."},
      {"O", "file", "'New Folder' is not a folder."},
      {"O", "N", ""}};
  for (const auto& [oldPath, newPath, message] : cases) {
    const std::string paths[2] = {oldPath, newPath};
    EXPECT_EQ(folderResultMessage(compareFolders(files_, paths, options_, nullptr, found_), paths), message);
  }
}

}  // namespace
}  // namespace merivane
