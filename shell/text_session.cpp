#include "shell/text_session.h"

#include <array>
#include <memory>
#include <utility>

#include "base/message_format.h"
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
  return path.empty() ? meantName(host_.name(side)) : path;
}

/// A file that is there has a valid name, also where the platform's rules are wider than ours.
bool TextSession::canBeFile(const std::string& name) const {
  return IsValidFilePath(name) || world_.files.kind(name) == FileKind::file;
}

/// How a question names a side.
std::string TextSession::shownName(int side) const {
  const std::string name = sideName(side);
  return name.empty() ? text(TextId::noFile) : name;
}

std::array<std::string, 2> TextSession::shownNames() const {
  std::array<std::string, 2> names;
  for (const int side : {0, 1}) {
    const std::string name = sideName(side);
    names[side] = IsValidFilePath(name) ? FileNamePart(name) : text(TextId::noFile);
    if (!given_[side].title.empty() && name == given_[side].path) names[side] = given_[side].title;
    if (history_.isModified(side)) names[side] += '*';
  }
  return names;
}

std::string TextSession::title() const {
  const auto names = shownNames();
  return formatMessage(TextId::windowTitle, {text(TextId::productName), names[0], names[1]});
}

std::string TextSession::lineEndText() const {
  if (!showsComparison()) return {};
  const auto kind = [this](int side) -> std::string {
    const EditedFile& file = view_.file(side);
    const char* const name = lineEndKindName(file.lineEndKind);
    return withEncoding(file.mixedLineEnds ? formatMessage(TextId::mixedLineEnds, {name}) : name,
                        file.encoding);
  };
  return kind(0) + ", " + kind(1);
}

std::string TextSession::differencesText() const {
  return showsComparison() ? summaryText(view_.model()) : std::string();
}

std::string TextSession::caretText() const {
  const uint32_t row = view_.caretRow();
  const uint32_t number = view_.model().lineNumber(view_.activeSide(), row);
  const int64_t line = number == kNoLine ? 0 : int64_t{number} + 1;
  return formatMessage(TextId::caretPosition, {int64_t{row} + 1, line, int64_t{view_.caretColumn()} + 1});
}

// Comparing.

void TextSession::describe(const GivenSide& left, const GivenSide& right) {
  given_[0] = left;
  given_[1] = right;
}

void TextSession::restoreNames() {
  for (const int side : {0, 1}) {
    host_.setName(side, world_.store.GetString(boxTextKey(kFileBoxNames[side])).value_or(""));
  }
}

void TextSession::compare() {
  if (comparing_) return;
  const auto comparison = std::make_shared<Comparison>();
  auto& names = comparison->names;
  for (const int side : {0, 1}) {
    names[side] = meantName(host_.name(side));
    if (IsValidFilePath(names[side])) names[side] = world_.files.absolute(names[side]);
  }
  if (!areThere(names)) return;
  if (!offerToSave(TextId::saveBeforeComparing)) return showNames();
  for (const int side : {0, 1}) {
    // A box whose text is right already keeps its caret.
    if (host_.name(side) != names[side]) host_.setName(side, names[side]);
    world_.store.SetString(boxTextKey(kFileBoxNames[side]), names[side]);
  }
  comparison->options = world_.settings.compareOptions();
  const auto work = [comparison, &files = world_.files,
                     resolve = world_.resolveShortcut](const AbortFlag& abort) {
    const std::string paths[2] = {resolve(comparison->names[0]), resolve(comparison->names[1])};
    comparison->paths = {paths[0], paths[1]};
    comparison->outcome = compareFiles(files, paths, comparison->options, &abort, comparison->result);
  };
  host_.startJob(TextId::pleaseWaitComparing, work, [this, comparison](WorkEnd end) {
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

/// Looks, before anything is dropped, for what would end the comparison at once.
bool TextSession::areThere(const std::string (&names)[2]) {
  constexpr TextId invalid[] = {TextId::leftFileNameInvalid, TextId::rightFileNameInvalid};
  constexpr TextId unreadable[] = {TextId::cannotLoadLeftFile, TextId::cannotLoadRightFile};
  for (const int side : {0, 1}) {
    if (canBeFile(names[side])) continue;
    host_.report(text(invalid[side]), ReportKind::error);
    return false;
  }
  for (const int side : {0, 1}) {
    if (world_.files.kind(names[side]) != FileKind::none) continue;
    std::unique_ptr<InputFile> file;
    const SystemError error = world_.files.open(names[side], file);
    if (error == 0) continue;
    reportError(unreadable[side], error);
    return false;
  }
  return true;
}

/// Makes the boxes name what is shown.
void TextSession::showNames() {
  for (const int side : {0, 1}) {
    const std::string& path = view_.file(side).path;
    if (!path.empty()) host_.setName(side, path);
  }
}

void TextSession::onCompared(const Outcome& outcome, Comparison& comparison) {
  comparing_ = false;
  show(outcome, comparison);
  if (!outcome.succeeded()) {
    host_.report(outcomeMessage(outcome), ReportKind::error);
  } else if (world_.settings.identicalMessage && view_.model().differingRows() == 0) {
    const TextEncoding encodings[] = {view_.file(0).encoding, view_.file(1).encoding};
    host_.report(encodings[0] == encodings[1]
                     ? text(TextId::filesIdentical)
                     : formatMessage(TextId::filesDifferInEncoding,
                                     {encodingName(encodings[0]), encodingName(encodings[1])}),
                 ReportKind::information);
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
  madeUnder_ = comparison.options;
  view_.setCompareOptions(madeUnder_);
  view_.take(std::move(result), std::move(paths), after);
  view_.setCompareOptions(world_.settings.compareOptions());  // which may be others by now
  if (!succeeded) return;
  for (const int side : {0, 1}) {
    if (given_[side].readOnly && given_[side].path == comparison.names[side])
      view_.file(side).readOnly = true;
    world_.settings.fileHistory(side).Add(comparison.names[side]);
  }
}

// Saving.

void TextSession::save() {
  const int active = view_.activeSide();
  const int side = history_.isModified(active) ? active : 1 - active;
  if (history_.isModified(side)) {
    save(side);
  } else {
    host_.showStatus(text(TextId::nothingToSave));
  }
}

bool TextSession::save(int side) {
  const std::string path = view_.file(side).path;
  return path.empty() ? saveAs(side) : saveTo(side, path);
}

bool TextSession::saveAs(int side) {
  const TextId title = side == 0 ? TextId::saveLeftFile : TextId::saveRightFile;
  const auto chosen = host_.chooseSaveFile(text(title), sideName(side));
  if (!chosen) return false;
  const std::string path = world_.files.absolute(*chosen);
  if (!write(side, path)) return false;
  host_.setName(side, path);
  world_.settings.fileHistory(side).Add(path);
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
  host_.showStatus(formatMessage(TextId::saved, {path}));
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
    reportError(TextId::couldNotSave, error);
  }
  return error == 0;
}

bool TextSession::warn(TextId question, const std::string& path) {
  return host_.ask({formatMessage(question, {path}), false, true, true}) == Answer::yes;
}

void TextSession::reportError(TextId message, SystemError error) {
  host_.report(formatMessage(message, {systemErrorText(error)}), ReportKind::error);
}

// Whole sides.

void TextSession::replace(int side) {
  if (view_.file(side).readOnly) return;
  const std::string name = sideName(side);
  if (!canBeFile(name)) return host_.report(text(TextId::fileNameInvalid), ReportKind::error);
  const std::string path = world_.files.absolute(name);
  const Question question = {formatMessage(TextId::reallyReplace, {path}), false, false, true};
  if (host_.ask(question) != Answer::yes || !mayOverwrite(side, path)) return;
  SideCopy copy;
  if (!copyOtherSide(view_, side, copy)) return host_.reportOutOfMemory();
  if (!wasSaved(saveFile(world_.files, path, copy.file))) return copyAsEdit(view_, history_, side);
  fresh_ = false;
  shown_ = true;
  madeUnder_ = world_.settings.compareOptions();
  takeCopy(view_, history_, side, std::move(copy));
  host_.showStatus(formatMessage(TextId::saved, {path}));
}

void TextSession::switchSides() {
  const std::string names[2] = {host_.name(0), host_.name(1)};
  if (!merivane::switchSides(view_, history_)) return host_.reportOutOfMemory();
  std::swap(given_[0], given_[1]);
  for (const int side : {0, 1}) host_.setName(side, names[1 - side]);
}

// Exporting.

void TextSession::exportResults() {
  Settings& settings = world_.settings;
  const auto choice =
      host_.chooseExport({static_cast<ExportScope>(settings.exportHow), settings.exportResults});
  if (!choice) return;
  const std::string name = meantName(choice->path);
  if (!canBeFile(name)) return host_.report(text(TextId::fileNameInvalid), ReportKind::error);
  const std::string path = world_.files.absolute(name);
  settings.exportHow = static_cast<int32_t>(choice->scope);
  settings.exportResults = path;
  if (!mayExportTo(path)) return;
  const std::string names[2] = {sideName(0), sideName(1)};
  WrittenComparison comparison = {view_.model(), {}, settings.compareOptions()};
  for (const int side : {0, 1}) {
    EditedFile& file = view_.file(side);
    comparison.sides[side] = {names[side], file.text.view(0, file.text.size()), file.lineEndKind,
                              file.encoding};
  }
  WriterOptions options = settings.writerOptions();
  options.time = world_.dateAndTime();
  const SystemError error = exportComparison(world_.files, path, writeHtml, comparison, options);
  if (error != 0) return reportError(TextId::couldNotExport, error);
  exportedTo_ = path;
}

/// A page of an earlier export is there to be replaced, a file that is being compared is not.
bool TextSession::mayExportTo(const std::string& path) {
  if (world_.files.kind(path) != FileKind::file) return true;
  const auto isTarget = [&](const std::string& other) {
    return !other.empty() && sameFile(world_.files, path, other);
  };
  const bool compared = isTarget(view_.file(0).path) || isTarget(view_.file(1).path);
  return (isTarget(exportedTo_) && !compared) || warn(TextId::fileExists, path);
}

// Closing.

bool TextSession::mayClose() { return !world_.settings.askConfirmation || offerToSave(); }

bool TextSession::offerToSave(TextId question) {
  for (const int side : {0, 1}) {
    if (!history_.isModified(side)) continue;
    const Answer answer = host_.ask({formatMessage(question, {shownName(side)}), true});
    if (answer == Answer::cancel) return false;
    if (answer == Answer::no) continue;
    const std::string name = sideName(side);
    if (!(canBeFile(name) ? saveTo(side, world_.files.absolute(name)) : saveAs(side))) return false;
  }
  return true;
}

}  // namespace merivane
