#include "shell/text_session.h"

#include <array>
#include <memory>
#include <utility>

#include "base/message_format.h"
#include "base/names.h"
#include "base/paths.h"
#include "mergeview/edited_file.h"
#include "mergeview/side_commands.h"
#include "output/writers.h"
#include "shell/name_box.h"

namespace merivane {

/// A comparison under way.
struct TextSession::Comparison {
  std::string names[2];  // as the boxes had them
  CompareOptions options;
  // What the job's thread makes of them.
  std::array<std::string, 2> paths;  // shortcuts replaced by their targets
  Outcome outcome;
  FileComparison result;
};

TextSession::TextSession(TextSessionHost& host, const SessionWorld& world, ViewState& view,
                         UndoHistory& history)
    : host_(host), world_(world), view_(view), history_(history) {}

// What the window shows.

std::string TextSession::sideName(int side) const {
  const std::string& path = view_.file(side).path;
  return path.empty() ? host_.name(side) : path;
}

std::string TextSession::title() const {
  std::string names[2];
  for (const int side : {0, 1}) {
    const std::string name = sideName(side);
    names[side] = IsValidFilePath(name) ? FileNamePart(name) : text(TextId::noFile);
    if (history_.isModified(side)) names[side] += '*';
  }
  return formatMessage(TextId::windowTitle, {text(TextId::productName), names[0], names[1]});
}

std::string TextSession::lineEndText() const {
  if (isFresh()) return {};
  const auto kind = [this](int side) { return std::string(lineEndKindName(view_.file(side).lineEndKind)); };
  return kind(0) + ", " + kind(1);
}

std::string TextSession::differencesText() const {
  return isFresh() ? std::string() : summaryText(view_.model());
}

std::string TextSession::caretText() const {
  const uint32_t row = view_.caretRow();
  const uint32_t number = view_.model().lineNumber(view_.activeSide(), row);
  const int64_t line = number == kNoLine ? 0 : int64_t{number} + 1;
  return formatMessage(TextId::caretPosition, {int64_t{row} + 1, line, int64_t{view_.caretColumn()} + 1});
}

// Comparing.

void TextSession::restoreNames() {
  for (const int side : {0, 1}) {
    host_.setName(side, world_.store.GetString(boxTextKey(kFileBoxNames[side])).value_or(""));
  }
}

void TextSession::compare() {
  if (comparing_ || !offerToSave()) return;
  const auto comparison = std::make_shared<Comparison>();
  for (const int side : {0, 1}) {
    comparison->names[side] = host_.name(side);
    world_.store.SetString(boxTextKey(kFileBoxNames[side]), comparison->names[side]);
  }
  comparison->options = world_.settings.compareOptions();
  const auto work = [comparison, &files = world_.files,
                     resolve = world_.resolveShortcut](const AbortFlag& abort) {
    const std::string paths[2] = {resolve(comparison->names[0]), resolve(comparison->names[1])};
    comparison->paths = {paths[0], paths[1]};
    comparison->outcome = compareFiles(files, paths, comparison->options, &abort, comparison->result);
  };
  host_.startJob(work, [this, comparison](WorkEnd end) {
    switch (end) {
      case WorkEnd::done:
        return onCompared(comparison->outcome, *comparison);
      case WorkEnd::cancelled:
        return onCompared({Result::cancelled}, *comparison);
      case WorkEnd::outOfMemory:
        return onCompared({Result::outOfMemory}, *comparison);
    }
  });
  comparing_ = true;
}

void TextSession::onCompared(const Outcome& outcome, Comparison& comparison) {
  comparing_ = false;
  show(outcome, comparison);
  if (!outcome.succeeded()) {
    host_.report(outcomeMessage(outcome), ReportKind::error);
  } else if (world_.settings.identicalMessage && view_.model().differingRows() == 0) {
    host_.report(text(TextId::filesIdentical), ReportKind::information);
  }
}

void TextSession::show(const Outcome& outcome, Comparison& comparison) {
  const bool succeeded = outcome.succeeded();
  FileComparison result;
  std::array<std::string, 2> paths;
  AfterComparison after = AfterComparison::top;
  if (succeeded) {
    result = std::move(comparison.result);
    paths = std::move(comparison.paths);
    const bool again = paths[0] == view_.file(0).path && paths[1] == view_.file(1).path;
    if (again) after = AfterComparison::keepPlace;
    if (world_.settings.scrollToFirst) after = AfterComparison::firstDifference;
  } else {
    result.model.addRow(RowStatus::same, 0, 0);
    result.model.numberLines();
  }
  fresh_ = isFresh() && !succeeded;
  shown_ = succeeded;
  history_.clear();
  for (const int side : {0, 1}) history_.markSaved(side);
  view_.take(std::move(result), std::move(paths), after);
  if (!succeeded) return;
  for (const int side : {0, 1}) world_.settings.fileHistory(side).Add(comparison.names[side]);
}

// Saving.

bool TextSession::save(int side) {
  const std::string path = view_.file(side).path;
  return path.empty() ? saveAs(side) : saveTo(side, path);
}

bool TextSession::saveAs(int side) {
  const TextId title = side == 0 ? TextId::saveLeftFile : TextId::saveRightFile;
  const auto chosen = host_.chooseSaveFile(text(title), sideName(side));
  if (!chosen || !write(side, *chosen)) return false;
  host_.setName(side, *chosen);
  return true;
}

void TextSession::saveAll() {
  for (const int side : {0, 1}) {
    if (history_.isModified(side) && !save(side)) return;
  }
}

bool TextSession::saveTo(int side, const std::string& path) {
  return mayOverwrite(side, path) && write(side, path);
}

bool TextSession::write(int side, const std::string& path) {
  if (!wasSaved(saveFile(world_.files, path, view_.file(side)))) return false;
  history_.markSaved(side);
  view_.changes().everything = true;  // a text that was read-only has another colour now
  return true;
}

/// What somebody else has written must not be lost unnoticed.
bool TextSession::mayOverwrite(int side, const std::string& path) {
  const EditedFile& file = view_.file(side);
  const bool own = path == file.path;
  if (!changedOnDisk(world_.files, path, own ? file.stamp : FileStamp())) return true;
  return warn(own ? TextId::changedOnDisk : TextId::fileExists, path);
}

bool TextSession::wasSaved(SystemError error) {
  if (error == notEnoughStorage()) {
    host_.reportOutOfMemory();
  } else if (error != 0) {
    host_.report(formatMessage(TextId::couldNotSave, {systemErrorText(error)}), ReportKind::error);
  }
  return error == 0;
}

bool TextSession::warn(TextId question, const std::string& path) {
  return host_.ask({formatMessage(question, {path}), false, true}) == Answer::yes;
}

// Whole sides.

void TextSession::replace(int side) {
  if (view_.file(side).readOnly) return;
  if (host_.ask({text(TextId::reallyReplace)}) != Answer::yes) return;
  SideCopy copy;
  if (!copyOtherSide(view_, side, copy)) return host_.reportOutOfMemory();
  const std::string path = sideName(side);
  if (!mayOverwrite(side, path) || !wasSaved(saveFile(world_.files, path, copy.file))) {
    return copyAsEdit(view_, history_, side);
  }
  fresh_ = false;
  shown_ = true;
  takeCopy(view_, history_, side, std::move(copy));
}

void TextSession::switchSides() {
  const std::string names[2] = {host_.name(0), host_.name(1)};
  if (!merivane::switchSides(view_, history_)) return host_.reportOutOfMemory();
  for (const int side : {0, 1}) host_.setName(side, names[1 - side]);
}

// Exporting.

void TextSession::exportResults() {
  Settings& settings = world_.settings;
  const auto choice =
      host_.chooseExport({static_cast<ExportScope>(settings.exportHow), settings.exportResults});
  if (!choice) return;
  settings.exportHow = static_cast<int32_t>(choice->scope);
  settings.exportResults = choice->path;
  const std::string names[2] = {sideName(0), sideName(1)};
  // A page of an earlier export is there to be replaced, a file that is being compared is not.
  const bool overCompared =
      equalNames(choice->path, names[0], false) || equalNames(choice->path, names[1], false);
  if (overCompared && !warn(TextId::fileExists, choice->path)) return;
  WrittenComparison comparison = {view_.model(), {}, settings.compareOptions()};
  for (const int side : {0, 1}) {
    EditedFile& file = view_.file(side);
    comparison.sides[side] = {names[side], file.text.view(0, file.text.size()), file.lineEndKind};
  }
  WriterOptions options = settings.writerOptions();
  options.time = world_.dateAndTime();
  const SystemError error = exportComparison(world_.files, choice->path, writeHtml, comparison, options);
  if (error == 0) return;
  host_.report(formatMessage(TextId::couldNotExport, {systemErrorText(error)}), ReportKind::error);
}

// Closing.

bool TextSession::mayClose() { return !world_.settings.askConfirmation || offerToSave(); }

bool TextSession::offerToSave() {
  for (const int side : {0, 1}) {
    if (!history_.isModified(side)) continue;
    const std::string name = sideName(side);
    const std::string shown = name.empty() ? text(TextId::noFile) : name;
    const Answer answer = host_.ask({formatMessage(TextId::saveChangesTo, {shown}), true});
    if (answer == Answer::cancel) return false;
    if (answer == Answer::no) continue;
    if (!(IsValidFilePath(name) ? saveTo(side, name) : saveAs(side))) return false;
  }
  return true;
}

}  // namespace merivane
