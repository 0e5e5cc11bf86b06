#include "operations/folder_operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/names.h"
#include "base/paths.h"
#include "tests/support/memory_trees.h"
#include "tests/support/random_trees.h"

namespace merivane {
namespace {

const std::string kTops[2] = {"O", "N"};
using Files = std::map<std::string, std::string>;

std::string inFolder(std::string path) {
  std::replace(path.begin(), path.end(), '/', kPathSeparator);
  return path;
}

/// Two trees in memory, compared, and what is done to their entries.
class World {
 public:
  MemoryFiles::File& file(const std::string& path, const std::string& contents, int64_t modified) {
    MemoryFiles::File& made = files.files[inFolder(path)];
    made.contents = contents;
    made.modified = modified;
    return made;
  }
  void folder(const std::string& path, int64_t modified) { file(path, "", modified).kind = FileKind::folder; }

  void compare(bool ignoreNameCase = true) {
    FolderOptions options;
    options.threads = 1;
    options.ignoreNameCase = ignoreNameCase;
    options.folderDate = true;
    ASSERT_EQ(compareFolders(files, kTops, options, nullptr, result), Result::success);
  }
  const FolderEntry& entry(const std::string& name) {
    for (const auto& entries : result.entries) {
      for (const FolderEntry& each : entries) {
        if (each.name() == inFolder(name)) return each;
      }
    }
    ADD_FAILURE() << name;
    static const FolderEntry none;
    return none;
  }

  Examination examine(const std::string& name, EntryOperation operation, bool keepsUndo = true) {
    return operations.examine(kTops, entry(name), operation, keepsUndo);
  }
  OperationEnd::Kind perform(const Examination& examination) {
    EXPECT_FALSE(examination.refusal) << examination.refusal->message();
    const OperationEnd end = operations.perform(examination, done);
    message = end.message;
    return end.kind;
  }
  OperationEnd::Kind undo() {
    const Examination examination = operations.examineUndo(done);
    EXPECT_FALSE(examination.refusal) << examination.refusal->message();
    return operations.undo(examination, done).kind;
  }

  /// Both trees, save for what an operation could not clear away in the end: an empty folder.
  Files trees() const {
    Files found;
    for (const auto& [name, each] : files.files) {
      if (name.starts_with("T") || (name.find("cmp-") != std::string::npos && name.ends_with(".tmp")))
        continue;
      const char* const kind = each.kind == FileKind::folder ? "folder" : "file";
      found[name] = kind + std::string(each.hidden ? " hidden" : "") + (each.writable ? " " : " read-only ") +
                    std::to_string(each.modified) + ": " + each.contents;
    }
    return found;
  }
  /// The program ends and starts again. It finds nothing to be done, and leaves nothing behind.
  void startAgain() {
    done = {};
    EXPECT_EQ(findInterrupted(files, disk).size(), 0u);
    EXPECT_EQ(journals(), 0u);
  }
  /// Counts the files that are kept.
  size_t journals() const {
    const auto kept = disk.below("T");
    return static_cast<size_t>(std::count_if(kept.begin(), kept.end(), [this](const std::string& path) {
      return files.files.at(path).kind == FileKind::file;
    }));
  }

  MemoryFiles files;
  MemoryTrees disk{files};
  FolderOperations operations{files, disk};
  FolderComparison result;
  DoneOperation done;
  std::string message;
};

void fillWorld(World& world) {
  world.folder("O", 1);
  world.folder("N", 1);
  for (const std::string side : {"O", "N"}) {
    const int64_t time = side == "O" ? 10 : 20;
    world.file(side + "/both.txt", "contents of " + side, time).hidden = side == "O";
    world.folder(side + "/tree", time);
    world.folder(side + "/tree/deep", time + 1);
    world.file(side + "/tree/deep/a.txt", "deep " + side, time + 2).writable = side == "N";
    world.file(side + "/tree/b.txt", side, time + 3);
    world.file(side + "/tree/only" + side, side, time + 3);
    world.folder(side + "/in" + side, time);
    world.file(side + "/in" + side + "/c \xC3\xA9.txt", "alone", time);
    world.folder(side + "/in" + side + "/empty", time);
  }
  world.compare();
}

struct Case {
  const char* name;
  EntryOperation operation;
};
const Case kCases[] = {
    {"both.txt", EntryOperation::copyToOld},
    {"both.txt", EntryOperation::copyToNew},
    {"both.txt", EntryOperation::deleteOld},
    {"both.txt", EntryOperation::deleteNew},
    {"both.txt", EntryOperation::deleteBoth},
    {"tree", EntryOperation::copyToOld},
    {"tree", EntryOperation::copyToNew},
    {"tree", EntryOperation::deleteOld},
    {"tree", EntryOperation::deleteBoth},
    {"inO", EntryOperation::copyToNew},
    {"inO", EntryOperation::deleteOld},
    {"inN", EntryOperation::copyToOld},
    {"inN", EntryOperation::deleteNew},
    {"tree/b.txt", EntryOperation::copyToOld},
    {"tree/deep/a.txt", EntryOperation::deleteBoth},
};

/// Whether the wanted side has become what the operation makes of it.
void expectDone(const Files& before, const Files& after, const Case& c) {
  const auto part = [&](const Files& files, int side) {
    Files found;
    const std::string path = inFolder(kTops[side] + "/" + c.name);
    for (const auto& [name, file] : files) {
      if (name == path || name.starts_with(path + kPathSeparator)) found[name.substr(1)] = file;
    }
    return found;
  };
  for (const int side : {0, 1}) {
    const Files wanted = !changes(c.operation, side) ? part(before, side)
                         : isCopy(c.operation)       ? part(before, 1 - side)
                                                     : Files();
    EXPECT_EQ(part(after, side), wanted) << c.name << " on side " << side;
  }
}

std::string traceOf(const Case& c, uint32_t failing) {
  return std::string(c.name) + " operation " + std::to_string(static_cast<int>(c.operation)) + " failing " +
         std::to_string(failing);
}

TEST(FolderOperations, EveryStepMayFailAndNothingIsLost) {
  for (const Case& c : kCases) {
    for (const bool partly : {false, true}) {
      for (uint32_t failing = 0;; ++failing) {
        SCOPED_TRACE(std::string(c.name) + " operation " + std::to_string(static_cast<int>(c.operation)) +
                     " failing " + std::to_string(failing));
        World world;
        fillWorld(world);
        world.disk.recyclesPartly = partly;
        const Files before = world.trees();
        const Examination examination = world.examine(c.name, c.operation);
        world.files.failStep(failing, MemoryFiles::denied);
        const auto end = world.perform(examination);
        const bool failed = world.files.endFailing();
        if (end == OperationEnd::Kind::failed) {
          EXPECT_EQ(world.trees(), before);
          EXPECT_EQ(world.journals(), 0u);
        } else if (end == OperationEnd::Kind::partly) {
          EXPECT_EQ(world.done.operation, EntryOperation::deleteOld);
          expectDone(before, world.trees(), {c.name, EntryOperation::deleteOld});
          EXPECT_EQ(world.undo(), OperationEnd::Kind::done);
          EXPECT_EQ(world.trees(), before);
        } else {
          expectDone(before, world.trees(), c);
        }
        if (!failed) break;
      }
    }
  }
}

/// Without undo a copy over an entry that fails leaves nothing there; all else stays.
TEST(FolderOperations, WithoutUndoAFailureLeavesTheRest) {
  for (const Case& c : kCases) {
    for (uint32_t failing = 0;; ++failing) {
      SCOPED_TRACE(traceOf(c, failing));
      World world;
      fillWorld(world);
      const Files before = world.trees();
      const Examination examination = world.examine(c.name, c.operation, false);
      world.files.failStep(failing, MemoryFiles::denied);
      const auto end = world.perform(examination);
      const bool failed = world.files.endFailing();
      if (end == OperationEnd::Kind::done) {
        EXPECT_FALSE(world.done.undoable);
      } else if (end == OperationEnd::Kind::partly) {
        expectDone(before, world.trees(), {c.name, EntryOperation::deleteOld});
      } else if (isCopy(c.operation) && world.trees() != before) {
        const auto deletion =
            c.operation == EntryOperation::copyToOld ? EntryOperation::deleteOld : EntryOperation::deleteNew;
        expectDone(before, world.trees(), {c.name, deletion});
      } else {
        EXPECT_EQ(world.trees(), before);
      }
      EXPECT_EQ(world.journals(), 0u);
      if (!failed) break;
    }
  }
}

TEST(FolderOperations, WhatCannotBeDoneSafelyIsRefused) {
  const std::string deep(200, 'd');
  const struct {
    const char* entry;
    TextId reason;
    std::function<void(World&)> make;
    EntryOperation operation = EntryOperation::copyToOld;
  } cases[] = {
      {"tree", TextId::refusedLink, [](World& w) { w.file("N/tree/b.txt", "", 23).link = true; }},
      {"tree", TextId::refusedName, [](World& w) { w.file("N/tree/any*", "", 23); }},
      {"tree", TextId::refusedName, [](World& w) { w.file("N/tree/Com1.txt", "", 23); }},
      {"tree", TextId::refusedName, [](World& w) { w.folder("O/tree/dot.", 23); },
       EntryOperation::deleteBoth},
      {"tree", TextId::refusedSpecial, [](World& w) { w.file("O/tree/p", "", 3).kind = FileKind::other; }},
      {"tree", TextId::refusedUnreadable,
       [](World& w) { w.files.files[inFolder("O/tree/deep")].error = 13; }},
      {"tree", TextId::refusedTooLong,
       [&](World& w) {
         w.file("N/tree/" + deep + "/" + deep, "", 1);
         w.folder("N/tree/" + deep, 1);
       }},
      {"both.txt", TextId::refusedMissing, [](World& w) { w.files.files.erase(inFolder("N/both.txt")); }},
      {"both.txt", TextId::refusedOtherKind, [](World& w) { w.folder("O/both.txt", 1); }},
      {"both.txt", TextId::refusedSameEntry,
       [](World& w) { w.files.otherNames[inFolder("O/both.txt")] = inFolder("N/both.txt"); }},
      {"both.txt", TextId::refusedNoRoom, [](World& w) { w.disk.room = 17; }},
  };
  for (const auto& c : cases) {
    World world;
    fillWorld(world);
    c.make(world);
    const Files before = world.trees();
    const Examination examination = world.examine(c.entry, c.operation);
    ASSERT_TRUE(examination.refusal) << text(c.reason);
    EXPECT_EQ(examination.refusal->reason, c.reason) << examination.refusal->message();
    EXPECT_EQ(world.trees(), before);
  }
}

/// An entry is kept whatever the comparison knew of it, and under its own name.
TEST(FolderOperations, WhatStandsInTheWayOfACopyIsKept) {
  World world;
  fillWorld(world);
  world.file("O/twin.txt", "old", 3);
  world.compare(false);
  world.file("N/TWIN.TXT", "new", 4);
  world.disk.ignoresCase = true;
  const Files before = world.trees();
  const Examination examination = world.examine("twin.txt", EntryOperation::copyToNew);
  EXPECT_TRUE(examination.changedSince);
  EXPECT_TRUE(examination.olderOverNewer);
  ASSERT_EQ(world.perform(examination), OperationEnd::Kind::done);
  EXPECT_FALSE(world.files.files.contains(inFolder("N/TWIN.TXT")));
  EXPECT_EQ(world.files.files[inFolder("N/twin.txt")].contents, "old");
  ASSERT_EQ(world.undo(), OperationEnd::Kind::done);
  EXPECT_EQ(world.trees(), before);
}

TEST(FolderOperations, EveryStepOfUndoMayFailAndUndoCanBeTriedAgain) {
  for (const Case& c : kCases) {
    for (uint32_t failing = 0;; ++failing) {
      SCOPED_TRACE(traceOf(c, failing));
      World world;
      fillWorld(world);
      const Files before = world.trees();
      ASSERT_EQ(world.perform(world.examine(c.name, c.operation)), OperationEnd::Kind::done);
      const Files after = world.trees();
      const Examination examination = world.operations.examineUndo(world.done);
      world.files.failStep(failing, MemoryFiles::denied);
      const auto end = world.operations.undo(examination, world.done).kind;
      const bool failed = world.files.endFailing();
      if (end == OperationEnd::Kind::failed) {
        EXPECT_EQ(world.trees(), after);
        ASSERT_EQ(world.undo(), OperationEnd::Kind::done);
      }
      EXPECT_EQ(world.trees(), before);
      world.startAgain();
      if (!failed) break;
    }
  }
}

/// Ends the program at a change and takes up an offer of the next start. False when there was no such change.
bool killAndStartAgain(const Case& c, bool undoing, uint32_t step, bool finishes, uint32_t& interrupted) {
  SCOPED_TRACE(std::string(c.name) + " operation " + std::to_string(static_cast<int>(c.operation)) +
               (undoing ? " undone" : "") + " killed at " + std::to_string(step));
  World world;
  fillWorld(world);
  const Files first = world.trees();
  const Examination examination = world.examine(c.name, c.operation);
  EXPECT_TRUE(!undoing || world.perform(examination) == OperationEnd::Kind::done);
  const Files before = world.trees();
  const bool hasJournal = world.done.journal != nullptr;
  world.disk.killAt = step;
  bool killed = false;
  try {
    if (undoing) {
      world.undo();
    } else {
      world.perform(examination);
    }
  } catch (const MemoryTrees::Killed&) {
    killed = true;
  }
  world.disk.killAt.reset();
  if (!killed) {
    EXPECT_EQ(findInterrupted(world.files, world.disk).size(), 0u) << "of a program that lives";
    return false;
  }
  world.done = {};
  auto found = findInterrupted(world.files, world.disk);
  if (found.empty()) {
    // Nothing was touched yet, or all was done; only a single deletion takes place without a journal.
    const Files now = world.trees();
    if (!undoing && now != before) expectDone(before, now, c);
    EXPECT_TRUE(!undoing || now == before || now == first || !hasJournal);
    return true;
  }
  ++interrupted;
  EXPECT_TRUE(finishes ? finish(world.files, world.disk, found[0])
                       : putBack(world.files, world.disk, found[0]));
  EXPECT_EQ(world.journals(), 0u);
  if (!finishes) {
    EXPECT_EQ(world.trees(), before);
  } else if (undoing) {
    EXPECT_EQ(world.trees(), first);
  } else {
    expectDone(before, world.trees(), c);
  }
  return true;
}

TEST(FolderOperations, WhatACrashInterruptedIsFinishedOrPutBack) {
  uint32_t interrupted = 0;
  for (const Case& c : kCases) {
    for (const bool undoing : {false, true}) {
      for (const bool finishes : {false, true}) {
        for (uint32_t step = 0; killAndStartAgain(c, undoing, step, finishes, interrupted); ++step) {
          if (HasFailure()) return;
        }
      }
    }
  }
  EXPECT_GT(interrupted, 300u);
}

TEST(FolderOperations, ThousandsOfOperationsUndoneGiveTheFirstTreesBack) {
  Random random(12);
  uint32_t count = 0;
  while (count < 10'000) {
    World world;
    makeTrees(world.files, kTops, random);
    for (auto& [name, file] : world.files.files)
      file.contents.resize(std::min<size_t>(file.contents.size(), 99));
    const Files first = world.trees();
    world.compare(random.below(2) == 0);
    std::vector<std::pair<const FolderEntry*, DoneOperation>> rows;
    for (const auto& entries : world.result.entries) {
      for (const FolderEntry& entry : entries) rows.emplace_back(&entry, DoneOperation());
    }
    if (rows.empty()) continue;
    const auto undo = [&](DoneOperation& done) {
      const Examination examination = world.operations.examineUndo(done);
      if (!examination.refusal) {
        EXPECT_EQ(world.operations.undo(examination, done).kind, OperationEnd::Kind::done);
      }
      return !examination.refusal;
    };
    for (uint32_t i = 0; i < 60; ++i) {
      auto& [entry, done] = rows[random.below(static_cast<uint32_t>(rows.size()))];
      if (done.operation != EntryOperation::none) {
        count += undo(done);
        continue;
      }
      const auto operation = static_cast<EntryOperation>(2 + random.below(5));
      const Examination examination = world.operations.examine(kTops, *entry, operation, true);
      if (examination.refusal) continue;
      const Files before = world.trees();
      const auto end = world.operations.perform(examination, done).kind;
      // Names that differ in case alone may get into each other's way here.
      if (end == OperationEnd::Kind::failed) {
        ASSERT_EQ(world.trees(), before);
      }
      count += end == OperationEnd::Kind::done;
    }
    for (bool undone = true; undone;) {
      undone = false;
      for (auto& [entry, done] : rows) {
        if (done.operation != EntryOperation::none) undone = undo(done) || undone;
      }
    }
    for (auto& [entry, done] : rows) {
      ASSERT_EQ(done.operation, EntryOperation::none)
          << world.operations.examineUndo(done).refusal->message();
    }
    ASSERT_EQ(world.trees(), first) << "after " << count;
    ASSERT_EQ(world.journals(), 0u);
  }
}

}  // namespace
}  // namespace merivane
