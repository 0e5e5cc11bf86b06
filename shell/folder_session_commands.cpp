// What the commands on the rows do: every one looks at what it is about, as a job, asks, and then does it.

#include <algorithm>
#include <utility>

#include "base/message_format.h"
#include "shell/folder_session.h"
#include "shell/row_commands.h"

namespace merivane {
namespace {

/// Is so while it lives.
class While {
 public:
  explicit While(bool& is) : is_(is) { is_ = true; }
  ~While() { is_ = false; }
  While(const While&) = delete;
  While& operator=(const While&) = delete;

 private:
  bool& is_;
};

}  // namespace

/// A look at what a command is about, before it touches anything. The job's thread writes the examinations,
/// one for each row, up to the first that it finds refused.
struct FolderSession::Look {
  std::vector<uint32_t> rows;
  std::vector<Examination> examinations;
  FolderProgress progress;
};

void FolderSession::run(Command command, FolderCategory category, const RowSelection& selection) {
  if (isBusy()) return;
  const RowFacts rows = facts(category, selection);
  if (rows.rows.empty()) return host_.showStatus(text(TextId::nothingSelected));
  if (command == Command::undo) {
    if (!rows.canUndo) return host_.showStatus(text(TextId::cannotUndo));
    std::vector<uint32_t> undoable;
    for (const uint32_t row : rows.rows) {
      const auto found = marks(category).find(row);
      if (found != marks(category).end() && !isOpen(found->second.operation) && found->second.undoable)
        undoable.push_back(row);
    }
    return examineUndo(category, std::move(undoable), 0);
  }
  if (!mayDo(category, command)) return host_.showStatus(text(TextId::notForThese));
  if (!rows.canAct) return host_.showStatus(text(TextId::alreadyDone));
  if (command == Command::compareEntries) return compareRows(category, rows);
  examine(operationOf(command), category, rows);
}

void FolderSession::markCompared(FolderCategory category, uint32_t row) {
  if (mark(category, row) != EntryOperation::none) return;
  marks(category)[row].operation = EntryOperation::compared;
  for (bool& modified : modified_) modified = true;
  host_.onMarks(category);
}

void FolderSession::compareRows(FolderCategory category, const RowFacts& facts) {
  for (const uint32_t row : facts.rows) {
    if (!isOpen(mark(category, row))) continue;
    markCompared(category, row);
    GivenSide both[2];
    sides(category, row, both);
    host_.openComparison(both, entry(category, row).isFolder, !facts.isSingle);
  }
}

void FolderSession::lookAt(std::vector<uint32_t> rows, std::vector<Examination> plans,
                           std::function<void(const Look& look)> then) {
  const auto look = std::make_shared<Look>();
  look->rows = std::move(rows);
  look->examinations = std::move(plans);
  const auto work = [look, &files = world_.files, trees = trees_](const AbortFlag& abort) {
    for (Examination& each : look->examinations) {
      if (abort.isRaised()) return;
      const bool isWaiting = each.refusal.has_value();
      each = merivane::examine(files, *trees, std::move(each), &abort, &look->progress);
      if (each.refusal && !isWaiting) return;  // which ends the command there
    }
  };
  const auto whenEnded = [this, look, then = std::move(then)](WorkEnd end) {
    job_.reset();
    switch (end) {
      case WorkEnd::done:
        return then(*look);
      case WorkEnd::cancelled:
        return host_.showStatus(text(TextId::operationAborted));
      case WorkEnd::outOfMemory:
        return host_.reportOutOfMemory();
    }
  };
  host_.startJob(TextId::pleaseWait, work, whenEnded, [this] { return progressText(); });
  job_ = {look, &look->progress};
}

void FolderSession::examine(EntryOperation operation, FolderCategory category, const RowFacts& facts) {
  std::vector<uint32_t> rows;
  std::vector<Examination> plans;
  for (const uint32_t row : facts.rows) {
    if (!isOpen(mark(category, row))) continue;
    rows.push_back(row);
    plans.push_back(operations_.plan(paths_, entry(category, row), operation, world_.settings.folderUndo));
  }
  lookAt(std::move(rows), std::move(plans), [this, category](const Look& look) { operate(category, look); });
}

void FolderSession::operate(FolderCategory category, const Look& look) {
  const While operating(operating_);
  const auto& all = look.examinations;
  const auto refused = std::find_if(all.begin(), all.end(), [](const auto& each) { return each.refusal; });
  // It ends what comes before, too.
  const std::span<const Examination> examinations(all.begin(), refused);
  if (!examinations.empty() && (!mayChange(category, look, examinations) || !mayLose(examinations))) return;
  int64_t count = 0;
  std::optional<std::string> failure;
  for (size_t i = 0; i < examinations.size() && !failure; ++i) {
    DoneOperation done;
    OperationEnd end = operations_.perform(examinations[i], done);
    if (end.kind != OperationEnd::Kind::done) failure = std::move(end.message);
    if (end.kind == OperationEnd::Kind::failed) break;
    for (const int side : {0, 1}) modified_[side] = modified_[side] || changes(done.operation, side);
    marks(category)[look.rows[i]] = std::move(done);
    ++count;
  }
  if (count > 0) host_.onMarks(category);
  if (failure) return reportFailure(*failure);
  if (refused != all.end()) return host_.report(refused->refusal->message(), ReportKind::error);
  host_.showStatus(formatMessage(TextId::entriesDone, {count}));
}

void FolderSession::examineUndo(FolderCategory category, std::vector<uint32_t> rows, int64_t undone) {
  std::vector<Examination> plans;
  for (const uint32_t row : rows) plans.push_back(operations_.planUndo(marks(category).at(row)));
  lookAt(std::move(rows), std::move(plans),
         [this, category, undone](const Look& look) { undo(category, look, undone); });
}

/// In the order of the rows; where one is about what lies in the folder of another, the later done first, and
/// the other is looked at again after that.
void FolderSession::undo(FolderCategory category, const Look& look, int64_t undone) {
  const While operating(operating_);
  if (undone == 0 && !mayChange(category, look, look.examinations)) return;
  const int64_t before = undone;
  std::optional<std::string> failure;
  std::optional<Refusal> refusal, waits;
  std::vector<uint32_t> waiting;
  for (size_t i = 0; i < look.rows.size() && !failure; ++i) {
    const Examination& examination = look.examinations[i];
    if (examination.refusal && examination.refusal->reason == TextId::refusedLaterOperation) {
      waiting.push_back(look.rows[i]);
      if (!waits) waits = examination.refusal;
      continue;
    }
    refusal = examination.refusal;
    if (refusal) break;
    OperationEnd end = operations_.undo(examination, marks(category).at(look.rows[i]));
    if (end.kind != OperationEnd::Kind::done || !end.message.empty()) failure = std::move(end.message);
    if (end.kind != OperationEnd::Kind::done) break;
    marks(category).erase(look.rows[i]);
    ++undone;
  }
  if (undone > before) host_.onMarks(category);
  if (failure) return reportFailure(*failure);
  if (!refusal && !waiting.empty() && undone > before)
    return examineUndo(category, std::move(waiting), undone);
  if (!refusal) refusal = waits;
  if (refusal) return host_.report(refusal->message(), ReportKind::error);
  host_.showStatus(formatMessage(TextId::entriesDone, {undone}));
}

void FolderSession::reportFailure(const std::string& message) {
  host_.report(message.empty() ? text(TextId::operationAborted) : message, ReportKind::error);
}

bool FolderSession::mayChange(FolderCategory category, const Look& look,
                              std::span<const Examination> examinations) {
  std::vector<std::string> changed;
  for (size_t i = 0; i < examinations.size(); ++i) {
    if (examinations[i].changedSince) changed.push_back(path(category, look.rows[i]));
  }
  if (changed.empty()) return true;
  const auto count = static_cast<int64_t>(changed.size());
  const std::string question = count == 1
                                   ? formatMessage(TextId::changedSinceCompared, {changed[0]})
                                   : formatMessage(TextId::manyChangedSinceCompared, {count, changed[0]});
  return host_.ask({question, false, true, true}) == Answer::yes;
}

/// Asks about what could not be brought back: once for all rows, with all that lies in folders.
bool FolderSession::mayLose(std::span<const Examination> examinations) {
  const bool replaces = isCopy(examinations[0].operation);
  const bool keepsUndo = examinations[0].keepsUndo;
  TreeSize lost;
  std::string path;
  int64_t newer = 0;
  bool recyclable = true, any = false;
  for (const Examination& examination : examinations) {
    for (const Examination::Side& side : examination.sides) {
      if (!side.lost) continue;
      any = true;
      lost += side.size;
      path = side.path;
    }
    newer += examination.olderOverNewer;
    recyclable = recyclable && examination.recyclable;
  }
  if (!any || (keepsUndo && recyclable)) return true;
  const std::string amount =
      formatMessage(TextId::filesAndFolders,
                    {std::to_string(lost.files), std::to_string(lost.folders), std::to_string(lost.bytes)});
  std::string facts = examinations.size() == 1 ? path + "\n\n" : std::string();
  facts += formatMessage(replaces ? TextId::toBeReplaced : TextId::toBeDeleted, {amount});
  if (newer > 0) facts += "\n" + formatMessage(TextId::newerThanReplacement, {std::to_string(newer)});
  if (!recyclable) facts += "\n" + std::string(text(TextId::noRecycleBin));
  const bool oneFile = lost.files == 1 && lost.folders == 0;
  const std::string question = keepsUndo             ? facts + "\n\n" + text(TextId::reallyGoOn)
                               : replaces && oneFile ? formatMessage(TextId::reallyReplace, {facts})
                                                     : facts + "\n\n" + text(TextId::reallyGoOnForGood);
  return host_.ask({question, false, true, true}) == Answer::yes;
}

}  // namespace merivane
