#include "base/file_replacement.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

#include "base/message_format.h"
#include "base/unfinished_files.h"

namespace merivane {
namespace {

constexpr uint32_t kPause = 50;  // milliseconds between two tries

/// Short, so that it fits wherever the shortest name does: eight characters and three.
std::string temporaryName() {
  static std::atomic<uint32_t> next =
      static_cast<uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count() >> 10);
  char name[16];
  std::snprintf(name, sizeof name, "~mv%05x.tmp", static_cast<unsigned>(next.fetch_add(0x9E35) & 0xFFFFF));
  return name;
}

class ReplacingOutput final : public OutputFile {
 public:
  ReplacingOutput(ReplacementSteps& steps, ReplacementTarget target)
      : steps_(steps), target_(std::move(target)), block_(1 << 16) {}

  ~ReplacingOutput() override {
    file_.reset();
    if (endangered_) stay(fresh_);
    discard(fresh_);
  }

  SystemError open() {
    // What nobody else may read shall not be readable beside either.
    const SystemError error = make(target_.folder, target_.exists, fresh_, file_);
    if (error == 0 || !target_.exists) return error;
    // The file can be written all the same where no other can be made beside it.
    inPlace_ = true;
    const std::string folder = steps_.temporaryFolder();
    return !folder.empty() && make(folder, true, fresh_, file_) == 0 ? 0 : error;
  }

  SystemError write(std::string_view bytes) override { return file_->write(bytes); }

  SystemError commit() override {
    const bool besides = target_.exists && !target_.inPlace && !inPlace_;
    // Rights that cannot be given to another file are kept by writing into this one.
    inPlace_ = target_.inPlace || inPlace_ || (besides && file_->takeAfter(target_.path) != 0);
    const SystemError error = file_->finish();
    file_.reset();
    if (error != 0) return error;
    const FinishBeforeSignals held;
    if (inPlace_) return writeInPlace();
    return target_.exists ? replace() : moveIntoPlace();
  }

 private:
  /// A file that is there only meanwhile.
  struct Meanwhile {
    std::string path;
    UnfinishedFile note;
  };

  SystemError make(const std::string& folder, bool secret, Meanwhile& made,
                   std::unique_ptr<WrittenFile>& file) {
    SystemError error = 0;
    for (int tries = 0; tries < 1000; ++tries) {
      std::string path = folder + temporaryName();
      error = steps_.make(path, secret, file);
      if (error == 0) {
        made.path = std::move(path);
        made.note.begin(made.path);
      }
      if (error == 0 || !steps_.isTaken(error)) break;
    }
    return error;
  }

  /// Tries a step until it succeeds, fails for good or patience ends.
  template <typename Step>
  SystemError patiently(Step step) {
    for (uint32_t waited = 0;; waited += kPause) {
      const SystemError error = step();
      if (error == 0 || waited >= kPatience || !steps_.isMomentary(error)) return error;
      steps_.wait(kPause);
    }
  }

  void discard(Meanwhile& file) {
    if (!file.path.empty()) patiently([&] { return steps_.remove(file.path); });
    stay(file);
  }

  /// The file has become another one, or holds what is nowhere else.
  void stay(Meanwhile& file) {
    file.path.clear();
    file.note.end();
  }

  SystemError moveIntoPlace() {
    const SystemError error = patiently([&] { return steps_.move(fresh_.path, target_.path); });
    if (error == 0) stay(fresh_);
    return error;
  }

  SystemError replace() {
    Meanwhile spare;
    do {
      spare.path = target_.folder + temporaryName();
    } while (steps_.exists(spare.path));
    bool targetIsThere = true;
    endangered_ = true;
    const SystemError error = patiently([&] {
      const SystemError failure = steps_.replace(target_.path, fresh_.path, spare.path);
      targetIsThere = failure == 0 || steps_.exists(target_.path);
      return targetIsThere ? failure : 0;
    });
    if (!targetIsThere) return restore(spare);
    endangered_ = false;
    if (error != 0) return writeInPlace();
    stay(fresh_);
    discard(spare);
    return 0;
  }

  /// Nothing has the target's name any more: one of the two has to get it.
  SystemError restore(Meanwhile& spare) {
    const SystemError error = moveIntoPlace();
    if (error == 0) {
      discard(spare);
      return 0;
    }
    const bool oldIsThere = steps_.exists(spare.path);
    if (oldIsThere && patiently([&] { return steps_.move(spare.path, target_.path); }) == 0) {
      endangered_ = false;
      return error;
    }
    return tellWhere(error, oldIsThere ? spare.path : std::string());
  }

  SystemError writeInPlace() {
    Meanwhile kept;
    if (target_.exists) {
      const SystemError error = copyAside(kept);
      if (error != 0) {
        discard(kept);
        return error;
      }
    }
    bool begun = false;
    const SystemError error = patiently([&] { return overwrite(fresh_.path, begun); });
    if (error != 0 && begun && target_.exists &&
        patiently([&] { return overwrite(kept.path, begun); }) != 0) {
      const std::string keptPath = kept.path;
      stay(kept);
      return tellWhere(error, keptPath);
    }
    discard(kept);
    return error;
  }

  SystemError copyAside(Meanwhile& copy) {
    std::unique_ptr<InputFile> from;
    std::unique_ptr<WrittenFile> to;
    const std::string folder = fresh_.path.substr(0, fresh_.path.size() - temporaryName().size());
    SystemError error = patiently([&] { return steps_.open(target_.path, from); });
    if (error == 0) error = make(folder, true, copy, to);
    if (error == 0) error = copyContents(*from, *to);
    return error;
  }

  /// Writes a file's contents over the target's; `begun` once they may have changed.
  SystemError overwrite(const std::string& path, bool& begun) {
    std::unique_ptr<InputFile> from;
    std::unique_ptr<WrittenFile> to;
    SystemError error = steps_.open(path, from);
    if (error == 0) error = steps_.openInPlace(target_.path, to);
    if (error != 0) return error;
    begun = true;
    return copyContents(*from, *to);
  }

  SystemError copyContents(InputFile& from, WrittenFile& to) {
    uint32_t got = 0;
    do {
      SystemError error = from.read(block_.data(), static_cast<uint32_t>(block_.size()), got);
      if (error == 0) error = to.write({block_.data(), got});
      if (error != 0) return error;
    } while (got == block_.size());
    return to.finish();
  }

  SystemError tellWhere(SystemError error, const std::string& old) {
    const std::string fresh = fresh_.path;
    stay(fresh_);
    const std::string reason = systemErrorText(error);
    return errorInWords(old.empty() ? formatMessage(TextId::contentsElsewhere, {reason, fresh})
                                    : formatMessage(TextId::oldContentsElsewhere, {reason, fresh, old}));
  }

  ReplacementSteps& steps_;
  const ReplacementTarget target_;
  std::vector<char> block_;  // here before it is needed, when nothing may fail any more
  Meanwhile fresh_;
  std::unique_ptr<WrittenFile> file_;
  bool inPlace_ = false;
  bool endangered_ = false;  // the new contents may be the only ones
};

class DirectOutput final : public OutputFile {
 public:
  explicit DirectOutput(std::unique_ptr<WrittenFile> file) : file_(std::move(file)) {}

  SystemError write(std::string_view bytes) override { return file_->write(bytes); }
  SystemError commit() override { return file_->finish(); }

 private:
  std::unique_ptr<WrittenFile> file_;
};

}  // namespace

SystemError createReplacement(ReplacementSteps& steps, ReplacementTarget target,
                              std::unique_ptr<OutputFile>& file) {
  auto made = std::make_unique<ReplacingOutput>(steps, std::move(target));
  const SystemError error = made->open();
  if (error == 0) file = std::move(made);
  return error;
}

std::unique_ptr<OutputFile> directOutput(std::unique_ptr<WrittenFile> file) {
  return std::make_unique<DirectOutput>(std::move(file));
}

}  // namespace merivane
