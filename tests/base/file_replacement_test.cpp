#include "base/file_replacement.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "tests/support/memory_files.h"

namespace merivane {
namespace {

constexpr SystemError kTaken = 80, kMomentary = 32, kForGood = 7;

/// A disk whose steps fail on demand.
class FakeDisk final : public ReplacementSteps {
 public:
  /// How replace() leaves things when it fails: as they were; with the old file gone; with the old file under
  /// the spare name.
  enum class Half { untouched, oldGone, oldIsSpare };

  std::map<std::string, std::string> files;
  bool mayMakeBeside = true;
  bool mayTakeAfter = true;
  Half half = Half::untouched;
  SystemError error = 0;      // of the steps that fail:
  uint32_t firstFailing = 0;  // the first of them,
  uint32_t lastFailing = 0;   // and the one after the last
  uint32_t stepsDone = 0;
  uint32_t waited = 0;

  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    if (const SystemError failure = next()) return failure;
    if (!files.contains(path)) return MemoryFiles::notFound;
    file = std::make_unique<Reading>(*this, files[path]);
    return 0;
  }
  SystemError make(const std::string& path, bool, std::unique_ptr<WrittenFile>& file) override {
    if (const SystemError failure = next()) return failure;
    if (files.contains(path)) return kTaken;
    if (!mayMakeBeside && path.starts_with("dir/")) return MemoryFiles::denied;
    files[path].clear();
    file = std::make_unique<Writing>(*this, files[path]);
    return 0;
  }
  SystemError openInPlace(const std::string& path, std::unique_ptr<WrittenFile>& file) override {
    if (const SystemError failure = next()) return failure;
    file = std::make_unique<Writing>(*this, files[path]);
    return 0;
  }
  SystemError replace(const std::string& target, const std::string& fresh,
                      const std::string& spare) override {
    const SystemError failure = next();
    if (failure == 0 || half == Half::oldIsSpare) files[spare] = files[target];
    if (failure == 0) files[target] = files[fresh], files.erase(fresh);
    if (failure != 0 && half != Half::untouched) files.erase(target);
    return failure;
  }
  SystemError move(const std::string& from, const std::string& to) override {
    if (const SystemError failure = next()) return failure;
    if (files.contains(to)) return kTaken;
    files[to] = files[from];
    files.erase(from);
    return 0;
  }
  SystemError remove(const std::string& path) override {
    if (const SystemError failure = next()) return failure;
    files.erase(path);
    return 0;
  }
  bool exists(const std::string& path) override { return files.contains(path); }
  void wait(uint32_t milliseconds) override { waited += milliseconds; }
  std::string temporaryFolder() override { return "tmp/"; }
  bool isTaken(SystemError failure) const override { return failure == kTaken; }
  bool isMomentary(SystemError failure) const override { return failure == kMomentary; }

 private:
  struct Reading final : InputFile {
    Reading(FakeDisk& owner, std::string bytes) : disk(owner), contents(std::move(bytes)) {}
    SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
      got = static_cast<uint32_t>(contents.copy(bytes, wanted, at));
      at += got;
      return disk.next();
    }
    uint64_t size() const override { return contents.size(); }
    FakeDisk& disk;
    const std::string contents;
    size_t at = 0;
  };
  struct Writing final : WrittenFile {
    Writing(FakeDisk& owner, std::string& bytes) : disk(owner), contents(bytes) {}
    SystemError write(std::string_view bytes) override {
      contents.replace(at, bytes.size(), bytes);
      at += bytes.size();
      return disk.next();
    }
    SystemError takeAfter(const std::string&) override { return disk.mayTakeAfter ? disk.next() : kForGood; }
    SystemError finish() override {
      contents.resize(at);
      return disk.next();
    }
    FakeDisk& disk;
    std::string& contents;
    size_t at = 0;
  };

  SystemError next() {
    const uint32_t step = stepsDone++;
    return step >= firstFailing && step < lastFailing ? error : 0;
  }
};

const std::string kOld = "the old contents", kNew = "new";
const std::string kTarget = "dir/file";
const std::map<std::string, std::string> kOnlyNew = {{kTarget, kNew}};

SystemError save(FakeDisk& disk, bool inPlace) {
  std::unique_ptr<OutputFile> file;
  SystemError error = createReplacement(disk, {kTarget, "dir/", disk.files.contains(kTarget), inPlace}, file);
  if (error == 0) error = file->write(kNew);
  return error == 0 ? file->commit() : error;
}

/// Every file that has these contents and is named in the words.
bool tellsWhere(const FakeDisk& disk, const std::string& words, const std::string& contents) {
  for (const auto& [path, text] : disk.files) {
    if (text == contents && words.find(path) != std::string::npos) return true;
  }
  return false;
}

struct Situation {
  const char* name;
  bool exists, inPlace, mayMakeBeside, mayTakeAfter;
  FakeDisk::Half half = FakeDisk::Half::untouched;
};

constexpr Situation kSituations[] = {
    {"new file", false, false, true, true},
    {"replaced", true, false, true, true},
    {"replacing loses the old file", true, false, true, true, FakeDisk::Half::oldGone},
    {"replacing renames the old file", true, false, true, true, FakeDisk::Half::oldIsSpare},
    {"file with a second name", true, true, true, true},
    {"no right to make files in the folder", true, false, false, true},
    {"rights that cannot be given", true, false, true, false},
};

FakeDisk diskFor(const Situation& situation) {
  FakeDisk disk;
  if (situation.exists) disk.files[kTarget] = kOld;
  disk.mayMakeBeside = situation.mayMakeBeside;
  disk.mayTakeAfter = situation.mayTakeAfter;
  disk.half = situation.half;
  return disk;
}

// One step after the other fails: once, for a while, with everything after it, for a moment or for good.
TEST(FileReplacement, PutsTheNewContentsInPlaceOrAfterAnyFailureOldOrNewContentsStandOrTheErrorTellsWhere) {
  int told = 0, restored = 0;
  for (const Situation& situation : kSituations) {
    for (const SystemError error : {kMomentary, kForGood}) {
      for (const uint32_t extent : {1u, 2u, 3u, 45u, 60u, 100000u}) {
        for (uint32_t failing = 0;; ++failing) {
          FakeDisk disk = diskFor(situation);
          disk.error = error;
          disk.firstFailing = failing;
          disk.lastFailing = failing + extent;
          const SystemError outcome = save(disk, situation.inPlace);
          if (disk.stepsDone <= failing) {
            EXPECT_EQ(outcome, 0u) << situation.name;
            EXPECT_EQ(disk.files, kOnlyNew) << situation.name;
            EXPECT_EQ(disk.waited, 0u);
            break;
          }
          SCOPED_TRACE(std::string(situation.name) + ", step " + std::to_string(failing) + ", error " +
                       std::to_string(error) + " for " + std::to_string(extent));
          const std::string words = systemErrorText(outcome);
          const bool hasTarget = disk.files.contains(kTarget);
          if (outcome == 0) {
            ASSERT_TRUE(hasTarget && disk.files[kTarget] == kNew);
            restored += error == kForGood;
          } else if (situation.exists ? !hasTarget || disk.files[kTarget] != kOld : hasTarget) {
            ASSERT_TRUE(tellsWhere(disk, words, kNew)) << words;
            if (situation.half != FakeDisk::Half::oldGone) {
              ASSERT_TRUE(tellsWhere(disk, words, kOld)) << words;
            }
            ++told;
          } else if (extent == 1) {
            ASSERT_EQ(disk.files.size(), size_t{situation.exists}) << "left beside";
          }
        }
      }
    }
  }
  EXPECT_GT(told, 0);
  EXPECT_GT(restored, 0);
}

TEST(FileReplacement, WaitsForWhoeverLooksAtTheFile) {
  // Making, writing, taking after and finishing come before replacing.
  constexpr uint32_t replacing = 4;
  for (const auto half : {FakeDisk::Half::untouched, FakeDisk::Half::oldGone}) {
    FakeDisk disk = diskFor({"locked for a while", true, false, true, true, half});
    disk.error = kMomentary;
    disk.firstFailing = replacing;
    disk.lastFailing = replacing + 38;
    EXPECT_EQ(save(disk, false), 0u);
    EXPECT_EQ(disk.files, kOnlyNew);
    EXPECT_GT(disk.waited, 1500) << disk.waited;
    EXPECT_LE(disk.waited, kPatience) << disk.waited;
  }
  FakeDisk disk = diskFor({"locked by all means", true, false, true, true});
  disk.error = kForGood;
  disk.firstFailing = replacing;
  disk.lastFailing = 1000;
  EXPECT_EQ(save(disk, false), kForGood);
  EXPECT_EQ(disk.waited, 0u) << "what is for good is not waited for";
}

TEST(FileReplacement, NamesBesideAreShortAndNotTakenFromAnybody) {
  FakeDisk disk = diskFor({"", true, false, true, true});
  disk.error = kTaken;
  disk.lastFailing = 20;
  std::unique_ptr<OutputFile> file;
  ASSERT_EQ(createReplacement(disk, {kTarget, "dir/", true, false}, file), 0u);
  for (const auto& [path, text] : disk.files) EXPECT_LE(path.size(), std::string("dir/12345678.123").size());
  file.reset();
  EXPECT_EQ(disk.files, (std::map<std::string, std::string>{{kTarget, kOld}}));
}

}  // namespace
}  // namespace merivane
