#include "operations/folder_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/names.h"
#include "base/paths.h"
#include "tests/support/memory_trees.h"
#include "tests/support/random_trees.h"
#include "tests/support/reference_folders.h"

namespace merivane {
namespace {

const std::string kTops[2] = {"O", "N"};
using Files = std::map<std::string, std::string>;
using End = OperationEnd::Kind;
using enum EntryOperation;

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
  Examination examine(const std::string& name, EntryOperation operation, bool keepsUndo = true) {
    return merivane::examine(
        files, disk, operations.plan(kTops, entryNamed(result, inFolder(name)), operation, keepsUndo));
  }
  Examination examineUndo(const DoneOperation& undone) {
    return merivane::examine(files, disk, operations.planUndo(undone));
  }
  End perform(const Examination& examination) {
    EXPECT_FALSE(examination.refusal) << examination.refusal->message();
    return operations.perform(examination, done).kind;
  }
  End undo() {
    const Examination examination = examineUndo(done);
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
constexpr Case kCases[] = {
    {"both.txt", copyToOld}, {"both.txt", copyToNew},   {"both.txt", deleteOld},
    {"both.txt", deleteNew}, {"both.txt", deleteBoth},  {"tree", copyToOld},
    {"tree", copyToNew},     {"tree", deleteOld},       {"tree", deleteBoth},
    {"inO", copyToNew},      {"inO", deleteOld},        {"inN", copyToOld},
    {"inN", deleteNew},      {"tree/b.txt", copyToOld}, {"tree/deep/a.txt", deleteBoth}};

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

/// A case in a world of its own, about to be done or undone.
struct Attempt {
  Attempt(const Case& wanted, bool undoes, bool keepsUndo = true) : c(wanted), undoing(undoes) {
    fillWorld(world);
    first = before = world.trees();
    examination = world.examine(c.name, c.operation, keepsUndo);
    if (!undoing) return;
    EXPECT_EQ(world.perform(examination), End::done);
    examination = world.examineUndo(world.done);
    before = world.trees();
  }
  End run() {
    return undoing ? world.operations.undo(examination, world.done).kind : world.perform(examination);
  }
  std::string name(uint32_t step) const {
    return c.name + (" operation " + std::to_string(static_cast<int>(c.operation))) +
           (undoing ? " undone" : "") + ", step " + std::to_string(step);
  }

  const Case& c;
  const bool undoing;
  World world;
  Files first, before;
  Examination examination;
};

/// Has one step after the other of every case fail; `check` looks at what comes of each.
template <typename Check>
void failEachStepOf(bool undoing, bool keepsUndo, bool recyclesPartly, Check check) {
  for (const Case& c : kCases) {
    for (uint32_t failing = 0, failed = 1; failed != 0; ++failing) {
      Attempt attempt(c, undoing, keepsUndo);
      SCOPED_TRACE(attempt.name(failing));
      attempt.world.disk.recyclesPartly = recyclesPartly;
      attempt.world.files.failStep(failing, MemoryFiles::denied);
      const auto end = attempt.run();
      failed = attempt.world.files.endFailing();
      check(attempt, attempt.world, end);
    }
  }
}

TEST(FolderOperations, EveryStepMayFailAndNothingIsLost) {
  for (const bool partly : {false, true}) {
    failEachStepOf(false, true, partly, [](const Attempt& attempt, World& world, End end) {
      if (end == End::failed) {
        EXPECT_EQ(world.trees(), attempt.before);
        EXPECT_EQ(world.journals(), 0u);
      } else if (end == End::partly) {
        EXPECT_EQ(world.done.operation, deleteOld);
        expectDone(attempt.before, world.trees(), {attempt.c.name, deleteOld});
        EXPECT_EQ(world.undo(), End::done);
        EXPECT_EQ(world.trees(), attempt.before);
      } else {
        expectDone(attempt.before, world.trees(), attempt.c);
      }
    });
  }
}

/// Without undo a copy over an entry that fails leaves nothing there; all else stays.
TEST(FolderOperations, WithoutUndoAFailureLeavesTheRest) {
  failEachStepOf(false, false, false, [](const Attempt& attempt, World& world, End end) {
    const auto& [name, operation] = attempt.c;
    if (end == End::done) {
      EXPECT_FALSE(world.done.undoable);
    } else if (end == End::partly) {
      expectDone(attempt.before, world.trees(), {name, deleteOld});
    } else if (isCopy(operation) && world.trees() != attempt.before) {
      expectDone(attempt.before, world.trees(), {name, operation == copyToOld ? deleteOld : deleteNew});
    } else {
      EXPECT_EQ(world.trees(), attempt.before);
    }
    EXPECT_EQ(world.journals(), 0u);
  });
}

TEST(FolderOperations, EveryStepOfUndoMayFailAndUndoCanBeTriedAgain) {
  failEachStepOf(true, true, false, [](const Attempt& attempt, World& world, End end) {
    if (end == End::failed) {
      EXPECT_EQ(world.trees(), attempt.before);
      ASSERT_EQ(world.undo(), End::done);
    }
    EXPECT_EQ(world.trees(), attempt.first);
    // The program's next start finds nothing to be done.
    world.done = {};
    EXPECT_EQ(findInterrupted(world.files, world.disk).size(), 0u);
    EXPECT_EQ(world.journals(), 0u);
  });
}

TEST(FolderOperations, WhatCannotBeDoneSafelyIsRefused) {
  const std::string deep(200, 'd');
  const struct {
    const char* entry;
    TextId reason;
    std::function<void(World&)> make;
    EntryOperation operation = copyToOld;
  } cases[] = {
      {"tree", TextId::refusedLink, [](World& w) { w.file("N/tree/b.txt", "", 23).link = true; }},
      {"tree", TextId::refusedName, [](World& w) { w.file("N/tree/any*", "", 23); }},
      {"tree", TextId::refusedName, [](World& w) { w.file("N/tree/Com1.txt", "", 23); }},
      {"tree", TextId::refusedName, [](World& w) { w.folder("O/tree/dot.", 23); }, deleteBoth},
      {"tree", TextId::refusedSpecial, [](World& w) { w.file("O/tree/p", "", 3).kind = FileKind::other; }},
      {"tree", TextId::refusedUnreadable,
       [](World& w) { w.files.files[inFolder("O/tree/deep")].error = 13; }},
      {"tree", TextId::refusedTooLong,
       [&](World& w) { w.file("N/tree/" + deep + "/" + deep, "", 1), w.folder("N/tree/" + deep, 1); }},
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
  const Examination examination = world.examine("twin.txt", copyToNew);
  EXPECT_TRUE(examination.changedSince);
  EXPECT_TRUE(examination.olderOverNewer);
  ASSERT_EQ(world.perform(examination), End::done);
  EXPECT_EQ(world.trees().count(inFolder("N/TWIN.TXT")), 0u);
  EXPECT_EQ(world.trees()[inFolder("N/twin.txt")], "file 3: old");
  ASSERT_EQ(world.undo(), End::done);
  EXPECT_EQ(world.trees(), before);
}

/// Ends the program at a change and takes up an offer of the next start. False when there was no such change.
bool killAndStartAgain(const Case& c, bool undoing, uint32_t step, bool finishes, uint32_t& interrupted) {
  Attempt attempt(c, undoing);
  SCOPED_TRACE(attempt.name(step));
  World& world = attempt.world;
  const bool hasJournal = world.done.journal != nullptr;
  world.disk.killAt = step;
  bool killed = false;
  try {
    attempt.run();
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
    if (!undoing && now != attempt.before) expectDone(attempt.before, now, c);
    EXPECT_TRUE(!undoing || now == attempt.before || now == attempt.first || !hasJournal);
    return true;
  }
  ++interrupted;
  EXPECT_TRUE(finishes ? finish(world.files, world.disk, found[0])
                       : putBack(world.files, world.disk, found[0]));
  EXPECT_EQ(world.journals(), 0u);
  if (finishes && !undoing) {
    expectDone(attempt.before, world.trees(), c);
  } else {
    EXPECT_EQ(world.trees(), finishes ? attempt.first : attempt.before);
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
      const Examination examination = world.examineUndo(done);
      if (!examination.refusal) {
        EXPECT_EQ(world.operations.undo(examination, done).kind, End::done);
      }
      return !examination.refusal;
    };
    for (uint32_t i = 0; i < 60; ++i) {
      auto& [entry, done] = rows[random.below(static_cast<uint32_t>(rows.size()))];
      if (done.operation != none) {
        count += undo(done);
        continue;
      }
      const auto operation = static_cast<EntryOperation>(2 + random.below(5));
      const Examination examination =
          examine(world.files, world.disk, world.operations.plan(kTops, *entry, operation, true));
      if (examination.refusal) continue;
      const Files before = world.trees();
      const auto end = world.operations.perform(examination, done).kind;
      // Names that differ in case alone may get into each other's way here.
      if (end == End::failed) {
        ASSERT_EQ(world.trees(), before);
      }
      count += end == End::done;
    }
    for (bool undone = true; undone;) {
      undone = false;
      for (auto& [entry, done] : rows) {
        if (done.operation != none) undone = undo(done) || undone;
      }
    }
    for (auto& [entry, done] : rows) {
      ASSERT_EQ(done.operation, none) << world.examineUndo(done).refusal->message();
    }
    ASSERT_EQ(world.trees(), first) << "after " << count;
    ASSERT_EQ(world.journals(), 0u);
  }
}

}  // namespace
}  // namespace merivane
