#include "shell/folder_session.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/message_format.h"
#include "base/names.h"
#include "base/paths.h"
#include "output/folder_writers.h"
#include "shell/name_box.h"
#include "shell/row_commands.h"

namespace merivane {
namespace {

int shownSide(FolderCategory category) { return category == FolderCategory::onlyOld ? 0 : 1; }

/// Of a folder's path, however it ends; a drive's whole path.
std::string shownFolderName(std::string path) {
  while (path.size() > 1 && (path.back() == kPathSeparator || path.back() == '/')) path.pop_back();
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  return name.empty() || name.back() == ':' ? path + (path.ends_with(':') ? "\\" : "") : name;
}

bool beginsWith(std::string_view name, std::string_view typed) {
  return name.size() >= typed.size() && equalNames(name.substr(0, typed.size()), typed, false);
}

}  // namespace

/// A comparison under way.
struct FolderSession::Comparison {
  std::string names[2];  // as the boxes had them
  FolderOptions options;
  FolderProgress progress;
  // What the job's thread makes of them.
  std::string paths[2];  // shortcuts replaced by their targets
  Result outcome = Result::cancelled;
  FolderComparison result;
};

std::vector<uint32_t> RowSelection::rows() const {
  if (!selected.empty() || !caret) return selected;
  return {*caret};
}

bool RowSelection::isMultiple() const {
  return selected.size() > 1 || (selected.size() == 1 && caret != selected[0]);
}

FolderSession::FolderSession(FolderSessionHost& host, const SessionWorld& world,
                             std::shared_ptr<TreeOperations> trees)
    : host_(host), world_(world), trees_(std::move(trees)), operations_(world.files, *trees_) {}

FolderSession::~FolderSession() { discardOperations(); }

// What the window shows.

std::string FolderSession::sideName(int side) const {
  return shown_ ? paths_[side] : meantName(host_.name(side));
}

bool FolderSession::canBeFolder(const std::string& name) const {
  return IsValidPath(name, true) || world_.files.kind(name) == FileKind::folder;
}

std::string FolderSession::title() const {
  std::string names[2];
  for (const int side : {0, 1}) {
    const std::string name = sideName(side);
    names[side] = canBeFolder(name) ? shownFolderName(name) : text(TextId::noFolder);
    if (!given_[side].title.empty() && name == given_[side].path) names[side] = given_[side].title;
    if (modified_[side]) names[side] += '*';
  }
  return formatMessage(TextId::windowTitle, {text(TextId::productName), names[0], names[1]});
}

std::string FolderSession::tabLabel(FolderCategory category) const {
  constexpr TextId labels[kFolderCategories] = {TextId::oldTab, TextId::newTab, TextId::changedTab,
                                                TextId::sameTab};
  const size_t open = entries(category).size() - marks(category).size();
  return formatMessage(labels[static_cast<size_t>(category)], {static_cast<int64_t>(open)});
}

std::string FolderSession::selectionText(FolderCategory category, const RowSelection& selection) const {
  uint64_t bytes = 0;
  for (const uint32_t row : selection.selected) bytes += entry(category, row).facts[shownSide(category)].size;
  const auto count = static_cast<int64_t>(selection.selected.size());
  if (count == 0) return {};
  if (count == 1) return formatMessage(TextId::oneEntrySelected, {std::to_string(bytes)});
  return formatMessage(TextId::entriesSelected, {count, std::to_string(bytes)});
}

std::string FolderSession::countsText() const { return shown_ ? folderCounts(result_) : std::string(); }

std::string FolderSession::troubleText() const {
  const auto count = static_cast<int64_t>(result_.notCompared.size());
  return count == 0 ? std::string() : formatMessage(TextId::couldNotBeCompared, {count});
}

std::string FolderSession::progressText() const {
  if (job_ == nullptr) return {};
  return formatMessage(TextId::comparingProgress,
                       {std::to_string(job_->entries()), std::to_string(job_->bytes()), job_->folder()});
}

// The rows.

uint32_t FolderSession::rowCount(FolderCategory category) const {
  return static_cast<uint32_t>(entries(category).size());
}

const FolderEntry& FolderSession::entry(FolderCategory category, uint32_t row) const {
  return entries(category)[row];
}

std::string FolderSession::rowName(FolderCategory category, uint32_t row) const {
  return std::string(entry(category, row).name());
}

std::string FolderSession::rowDescription(FolderCategory category, uint32_t row) const {
  const FolderEntry& shown = entry(category, row);
  std::string description;
  if (category == FolderCategory::changed) description = differenceText(shown.differences);
  if (shown.notCompared == NotCompared::nothing) return description;
  return description + (description.empty() ? "" : " ") + notComparedText(shown.notCompared);
}

EntryOperation FolderSession::mark(FolderCategory category, uint32_t row) const {
  const auto found = marks(category).find(row);
  return found == marks(category).end() ? EntryOperation::none : found->second.operation;
}

std::string FolderSession::markText(FolderCategory category, uint32_t row) const {
  return operationName(mark(category, row));
}

std::string FolderSession::path(FolderCategory category, uint32_t row) const {
  std::string both[2];
  paths(category, row, both);
  return both[shownSide(category)];
}

void FolderSession::paths(FolderCategory category, uint32_t row, std::string (&paths)[2]) const {
  const FolderEntry& shown = entry(category, row);
  for (const int side : {0, 1}) {
    paths[side] = joinPath(paths_[side], shown.names[shown.names[side].empty() ? 1 - side : side]);
  }
}

void FolderSession::sides(FolderCategory category, uint32_t row, GivenSide (&sides)[2]) const {
  std::string both[2];
  paths(category, row, both);
  for (const int side : {0, 1}) {
    sides[side].path = std::move(both[side]);
    sides[side].readOnly = readOnly_[side];
  }
}

std::string FolderSession::pathsText(FolderCategory category, const RowSelection& selection) const {
  std::string lines;
  for (const uint32_t row : selection.rows()) {
    if (!lines.empty()) lines += "\r\n";
    lines += path(category, row);
  }
  return lines;
}

std::optional<uint32_t> FolderSession::findTyped(FolderCategory category, std::string_view typed,
                                                 uint32_t from) const {
  const uint32_t count = rowCount(category);
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t row = (from + i) % count;
    if (beginsWith(entry(category, row).name(), typed)) return row;
  }
  return std::nullopt;
}

std::vector<uint32_t> FolderSession::rowsNamed(FolderCategory category,
                                               const std::vector<std::string>& names) const {
  const std::unordered_set<std::string_view> wanted(names.begin(), names.end());
  std::vector<uint32_t> rows;
  for (uint32_t row = 0; row < rowCount(category); ++row) {
    if (wanted.contains(entry(category, row).name())) rows.push_back(row);
  }
  return rows;
}

std::optional<uint32_t> FolderSession::nextOpenRow(FolderCategory category, std::optional<uint32_t> from,
                                                   int direction) const {
  const int64_t count = rowCount(category);
  int64_t row = from ? int64_t{*from} + direction : direction > 0 ? 0 : count - 1;
  for (; row >= 0 && row < count; row += direction) {
    const auto open = static_cast<uint32_t>(row);
    if (mark(category, open) == EntryOperation::none) return open;
  }
  return std::nullopt;
}

std::optional<uint32_t> FolderSession::changedRow(const std::string (&wanted)[2]) const {
  for (uint32_t row = 0; row < rowCount(FolderCategory::changed); ++row) {
    std::string both[2];
    paths(FolderCategory::changed, row, both);
    if (both[0] == wanted[0] && both[1] == wanted[1]) return row;
  }
  return std::nullopt;
}

std::optional<uint32_t> FolderSession::nextChangedFile(uint32_t from, int direction) const {
  const int64_t count = rowCount(FolderCategory::changed);
  for (int64_t row = int64_t{from} + direction; row >= 0 && row < count; row += direction) {
    const auto next = static_cast<uint32_t>(row);
    const bool standsThere = isOpen(mark(FolderCategory::changed, next));
    if (standsThere && !entry(FolderCategory::changed, next).isFolder) return next;
  }
  return std::nullopt;
}

// Comparing.

void FolderSession::describe(const GivenSide& left, const GivenSide& right) {
  given_[0] = left;
  given_[1] = right;
}

void FolderSession::restoreNames() {
  for (const int side : {0, 1}) {
    host_.setName(side, world_.store.GetString(boxTextKey(kFolderBoxNames[side])).value_or(""));
  }
}

void FolderSession::compare() {
  if (isBusy()) return;
  const auto comparison = std::make_shared<Comparison>();
  auto& names = comparison->names;
  constexpr TextId invalid[] = {TextId::oldFolderNameInvalid, TextId::newFolderNameInvalid};
  for (const int side : {0, 1}) {
    names[side] = meantName(host_.name(side));
    if (!canBeFolder(names[side])) return host_.report(text(invalid[side]), ReportKind::error);
    if (names[side].ends_with(':')) names[side] += kPathSeparator;  // the drive, not its current folder
    names[side] = world_.files.absolute(names[side]);
  }
  if (!mayLoseOperations()) {
    for (const int side : {0, 1}) host_.setName(side, sideName(side));
    return;
  }
  for (const int side : {0, 1}) {
    // A box whose text is right already keeps its caret.
    if (host_.name(side) != names[side]) host_.setName(side, names[side]);
    world_.store.SetString(boxTextKey(kFolderBoxNames[side]), names[side]);
  }
  comparison->options = world_.settings.folderOptions();
  const auto work = [comparison, &files = world_.files,
                     resolve = world_.resolveShortcut](const AbortFlag& abort) {
    for (const int side : {0, 1}) comparison->paths[side] = resolve(comparison->names[side]);
    comparison->outcome = compareFolders(files, comparison->paths, comparison->options, &abort,
                                         comparison->result, &comparison->progress);
  };
  const auto whenEnded = [this, comparison](WorkEnd end) {
    switch (end) {
      case WorkEnd::done:
        return onCompared(comparison->outcome, *comparison);
      case WorkEnd::cancelled:
        return onCompared(Result::cancelled, *comparison);
      case WorkEnd::outOfMemory:
        return onCompared(Result::outOfMemory, *comparison);
    }
  };
  host_.startJob(TextId::pleaseWaitComparing, work, whenEnded, [this] { return progressText(); });
  job_ = {comparison, &comparison->progress};
}

void FolderSession::onCompared(Result result, Comparison& comparison) {
  job_.reset();
  const bool succeeded = result == Result::success;
  bool again = succeeded;
  discardOperations();
  result_ = {};
  filterText_.clear();
  shown_ = succeeded;
  fresh_ = fresh_ && !succeeded;
  for (const int side : {0, 1}) {
    again = again && comparison.paths[side] == paths_[side];
    modified_[side] = false;
    paths_[side].clear();
    readOnly_[side] = given_[side].readOnly && given_[side].path == comparison.names[side];
  }
  if (succeeded) {
    result_ = std::move(comparison.result);
    const FolderOptions& options = madeUnder_ = comparison.options;
    if (options.hasIncludeFilter) {
      filterText_ = formatMessage(TextId::filterInForce, {options.includeFilter});
    } else if (options.hasExcludeFilter) {
      filterText_ = formatMessage(TextId::excludeFilterInForce, {options.excludeFilter});
    }
    for (const int side : {0, 1}) {
      paths_[side] = comparison.paths[side];
      world_.settings.folderHistory(side).Add(comparison.names[side]);
    }
  }
  host_.onResult(again);
  if (result == Result::outOfMemory) {
    host_.reportOutOfMemory();
  } else if (!succeeded) {
    host_.report(folderResultMessage(result, comparison.names), ReportKind::error);
  } else if (world_.settings.identicalMessage && result_.isIdentical()) {
    host_.report(text(TextId::foldersIdentical), ReportKind::information);
  }
}

void FolderSession::discardOperations() {
  for (Marks& each : marks_) {
    for (auto& [row, done] : each) operations_.discard(done);
    each.clear();
  }
}

// Commands.

/// Whether the menu of a category has a command that changes no read-only folder.
bool FolderSession::mayDo(FolderCategory category, Command command) const {
  const EntryOperation operation = operationOf(command);
  return offers(category, command) && !(readOnly_[0] && changes(operation, 0)) &&
         !(readOnly_[1] && changes(operation, 1));
}

FolderSession::RowFacts FolderSession::facts(FolderCategory category, const RowSelection& selection) const {
  RowFacts facts = {selection.rows(), false, false, !selection.isMultiple()};
  const Marks& done = marks(category);
  for (const uint32_t row : facts.rows) {
    const auto found = done.find(row);
    if (found == done.end() || isOpen(found->second.operation)) {
      facts.canAct = true;
    } else if (found->second.undoable && category != FolderCategory::same) {
      facts.canUndo = true;
    }
  }
  return facts;
}

std::string FolderSession::undoLabel(FolderCategory category, const RowSelection& selection) const {
  const RowFacts rows = facts(category, selection);
  if (!rows.canUndo || !rows.isSingle) return text(TextId::undoItem);
  return formatMessage(TextId::undoOperation, {operationName(mark(category, rows.rows[0]))});
}

std::vector<RowMenuItem> FolderSession::menu(FolderCategory category, const RowSelection& selection) const {
  const RowFacts rows = facts(category, selection);
  std::vector<RowMenuItem> items;
  const auto separate = [&] {
    if (!items.empty() && items.back().command) items.push_back({});
  };
  if (rows.rows.empty()) return items;
  if (rows.canUndo) items.push_back({Command::undo, undoLabel(category, selection)});
  if (rows.canAct) separate();
  if (rows.canAct) {
    const CategoryMenu& offered = menuOf(category);
    for (const RowCommand& item : offered.items) {
      if (!item.command) {
        separate();
      } else if (mayDo(category, *item.command)) {
        items.push_back({item.command, text(item.label), rows.isSingle && item.command == offered.byDefault});
      }
    }
  }
  separate();
  items.push_back({Command::openInApp, text(TextId::openInAppItem)});
  items.push_back({Command::exploreFolder, text(TextId::exploreFolderItem)});
  items.push_back({Command::showProperties, text(TextId::propertiesItem)});
  return items;
}

bool FolderSession::mayRun(Command command, FolderCategory category, const RowSelection& selection) const {
  const RowFacts rows = facts(category, selection);
  if (command == Command::undo) return rows.canUndo;
  return rows.canAct && mayDo(category, command);
}

std::optional<Command> FolderSession::defaultCommand(FolderCategory category,
                                                     const RowSelection& selection) const {
  const RowFacts rows = facts(category, selection);
  const Command command = menuOf(category).byDefault;
  if (!rows.canAct || !rows.isSingle || !mayDo(category, command)) return std::nullopt;
  return command;
}

std::vector<RowMenuItem> FolderSession::deleteMenu(FolderCategory category,
                                                   const RowSelection& selection) const {
  std::vector<RowMenuItem> deletions;
  for (RowMenuItem& item : menu(category, selection)) {
    if (!item.command) continue;
    const EntryOperation operation = operationOf(*item.command);
    if (operation == EntryOperation::none || isCopy(operation)) continue;
    item.isDefault = false;
    deletions.push_back(std::move(item));
  }
  return deletions;
}

// Closing.

size_t FolderSession::undoableOperations() const {
  size_t count = 0;
  for (const Marks& each : marks_) {
    count += static_cast<size_t>(
        std::count_if(each.begin(), each.end(), [](const auto& mark) { return mark.second.undoable; }));
  }
  return count;
}

bool FolderSession::mayLoseOperations() {
  const auto count = static_cast<int64_t>(undoableOperations());
  if (count == 0 || !world_.settings.askConfirmation) return true;
  const std::string question =
      count == 1 ? text(TextId::oneOperationLost) : formatMessage(TextId::operationsLost, {count});
  return host_.ask({question, false, true, true}) == Answer::yes;
}

bool FolderSession::mayClose() { return !operating_ && mayLoseOperations(); }

}  // namespace merivane
