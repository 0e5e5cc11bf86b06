#include "operations/steps.h"

#include "base/paths.h"
#include "operations/tree_size.h"

namespace merivane {
namespace {

/// How one step ended. A failure that the shell has told of itself has no error.
struct StepEnd {
  bool done = true;
  bool begun = true;  // something may have changed
  SystemError error = 0;
};

StepEnd ended(SystemError error) { return {error == 0, true, error}; }

constexpr StepEnd kToldByShell = {false, true, 0};

class StepRun {
 public:
  StepRun(FileSystem& files, TreeOperations& trees) : files_(files), trees_(trees) {}

  StepEnd run(const Step& step, bool resumed) {
    switch (step.kind) {
      case Step::Kind::makeFolder:
        if (resumed && exists(step.path)) return {};
        return ended(trees_.makeFolder(step.path));
      case Step::Kind::copy:
        return copy(step, resumed);
      case Step::Kind::overwrite:
        return copyChecked(step.path, step.target, step.title);
      case Step::Kind::move:
        if (resumed && !exists(step.path) && exists(step.target)) return {};
        return ended(trees_.move(step.path, step.target));
      case Step::Kind::recycle:
        if (!exists(step.path)) return {};
        return trees_.recycle(step.path) ? ended(0) : kToldByShell;
      case Step::Kind::remove:
        return ended(removeTree(files_, trees_, step.path));
      case Step::Kind::removeFolder:
        if (exists(step.path)) trees_.removeFolder(step.path);
        return {};
    }
    return {};
  }

  bool takeBack(const Step& step) {
    switch (step.kind) {
      case Step::Kind::makeFolder:
        // Where somebody has put something into it meanwhile, it stays.
        if (exists(step.path)) trees_.removeFolder(step.path);
        return true;
      case Step::Kind::copy:
      case Step::Kind::overwrite:
        return removeTree(files_, trees_, joinPath(step.target, nameOf(step.path))) == 0;
      case Step::Kind::move:
        if (!exists(step.target)) return exists(step.path);
        return trees_.move(step.target, step.path) == 0;
      case Step::Kind::recycle:
      case Step::Kind::remove:
        return step.backup.empty() ? exists(step.path) : restore(step);
      case Step::Kind::removeFolder:
        return exists(step.path) || trees_.makeFolder(step.path) == 0;
    }
    return false;
  }

 private:
  bool exists(const std::string& path) { return trees_.find(path).exists(); }

  StepEnd copy(const Step& step, bool resumed) {
    const std::string made = joinPath(step.target, nameOf(step.path));
    if (exists(made)) {
      // What is there is the part that was copied before the interruption, or somebody else's.
      if (!resumed) return {false, false, errorInWords(text(TextId::copyInTheWay))};
      if (const SystemError error = removeTree(files_, trees_, made)) return ended(error);
    }
    return copyChecked(step.path, step.target, step.title);
  }

  StepEnd copyChecked(const std::string& path, const std::string& folder, TextId title) {
    if (!trees_.copyInto(path, folder, title)) return kToldByShell;
    const std::string made = joinPath(folder, nameOf(path));
    const bool isWhole =
        isCopied(files_, trees_, path, made) &&
        (trees_.find(path).kind != FileKind::folder || copyFolderFacts(files_, trees_, path, made));
    if (!isWhole) return ended(errorInWords(text(TextId::copyDiffers)));
    return {};
  }

  /// Brings back what was deleted, also when that stopped midway.
  bool restore(const Step& step) {
    if (exists(step.path)) {
      if (isCopied(files_, trees_, step.backup, step.path)) return true;
      if (removeTree(files_, trees_, step.path) != 0) return false;
    }
    return copyChecked(step.backup, folderOf(step.path), TextId::performingUndo).done;
  }

  FileSystem& files_;
  TreeOperations& trees_;
};

}  // namespace

bool takeBackSteps(FileSystem& files, TreeOperations& trees, const std::vector<Step>& steps, StepLog* log,
                   uint32_t last, uint32_t keep) {
  StepRun run(files, trees);
  for (uint32_t i = last + 1; i-- > keep;) {
    // A journal that can be written no longer names a later step, which takes more back and not less.
    if (log != nullptr) log->atStep(i);
    if (!run.takeBack(steps[i])) return false;
  }
  return true;
}

StepsEnd runSteps(FileSystem& files, TreeOperations& trees, const std::vector<Step>& steps, StepLog* log,
                  uint32_t keep, uint32_t first, bool resumed) {
  StepRun run(files, trees);
  for (uint32_t i = first; i < steps.size(); ++i) {
    StepEnd end;
    if (log != nullptr) end = {true, false, log->atStep(i)};
    if (end.error == 0) end = run.run(steps[i], resumed && i == first);
    if (end.error == 0 && end.done) continue;
    const uint32_t begun = end.begun ? i + 1 : i;
    const uint32_t kept = i >= keep ? keep : 0;
    const bool whole = begun <= kept || takeBackSteps(files, trees, steps, log, begun - 1, kept);
    return {kept, end.error, whole};
  }
  return {static_cast<uint32_t>(steps.size()), 0, true};
}

}  // namespace merivane
