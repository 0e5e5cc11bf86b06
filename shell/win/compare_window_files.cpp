// Comparing, saving and closing a text window's files.

#include <array>
#include <utility>

#include "base/paths.h"
#include "base/win/messages.h"
#include "mergeview/edited_file.h"
#include "output/writers.h"
#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/export_dialog.h"
#include "shell/win/file_dialogs.h"
#include "shell/win/shell_utilities.h"
#include "shell/win/system_facts.h"

namespace merivane {

// Comparing.

void CompareWindow::compare(const std::string& left, const std::string& right) {
  setName(0, left);
  setName(1, right);
  lastFocus_ = frame_.view.handle();
  SetForegroundWindow(handle());
  SetFocus(handle());
  UpdateWindow(handle());
  SendMessageA(handle(), WM_COMMAND, static_cast<WPARAM>(Command::refresh), 0);
}

/// One comparison: what it is of and what it leaves.
struct CompareWindow::Run {
  std::string paths[2];  // shortcuts replaced by their targets
  CompareOptions options;
  Outcome outcome;
  FileComparison comparison;
};

void CompareWindow::startComparison() {
  // The files are read anew, so that what was not saved would go: unlike closing, this is asked whatever the
  // settings, as nobody expects it of a refresh.
  if (waitDialog_.isBusy() || !merivane::mayClose(*this, true)) return;
  const auto run = std::make_shared<Run>();
  for (const int side : {0, 1}) run->paths[side] = frame_.nameBoxes[side].text();
  run->options = application_.settings.compareOptions();
  application_.keepBoxTexts(run->paths);
  const auto work = [run](const AbortFlag& abort) {
    for (std::string& path : run->paths) path = ResolveShortcut(path);
    run->outcome = compareFiles(systemFiles(), run->paths, run->options, &abort, run->comparison);
  };
  waitDialog_.start(handle(), work, [this, run](WorkEnd end) {
    switch (end) {
      case WorkEnd::done: return onCompared(run->outcome, *run);
      case WorkEnd::cancelled: return onCompared({Result::cancelled}, *run);
      case WorkEnd::outOfMemory: return onCompared({Result::outOfMemory}, *run);
    }
  });
}

void CompareWindow::onCompared(const Outcome& outcome, Run& run) {
  showComparison(outcome, run);
  if (!outcome.succeeded()) {
    showMessage(handle(), outcomeMessage(outcome), MB_OK | MB_ICONERROR);
  } else if (application_.settings.identicalMessage && view_.model().differingRows() == 0) {
    showMessage(handle(), TextId::filesIdentical, MB_OK | MB_ICONINFORMATION);
  }
}

void CompareWindow::showComparison(const Outcome& outcome, Run& run) {
  const bool succeeded = outcome.succeeded();
  history_.clear();
  for (const int side : {0, 1}) history_.markSaved(side);
  FileComparison comparison;
  std::array<std::string, 2> paths;
  AfterComparison after = AfterComparison::top;
  if (succeeded) {
    comparison = std::move(run.comparison);
    paths = {run.paths[0], run.paths[1]};
    const bool again = paths[0] == view_.file(0).path && paths[1] == view_.file(1).path;
    if (again) after = AfterComparison::keepPlace;
    if (application_.settings.scrollToFirst) after = AfterComparison::firstDifference;
    fresh_ = false;
  } else {
    comparison.model.addRow(RowStatus::same, 0, 0);
    comparison.model.numberLines();
  }
  for (const int side : {0, 1}) {
    if (succeeded) application_.settings.fileHistory(side).Add(frame_.nameBoxes[side].text());
  }
  frame_.summary.setBlank(!succeeded);
  view_.take(std::move(comparison), std::move(paths), after);
  frame_.view.applyChanges();
}

// Names.

std::string CompareWindow::nameOf(int side) const { return sideName(titleSide(side)); }

TitleSide CompareWindow::titleSide(int side) const {
  return {view_.file(side).path, frame_.nameBoxes[side].text(), history_.isModified(side)};
}

// Saving.

// A name that was only typed into a box may be that of a file which this text did not come from.
bool CompareWindow::saveSide(int side) {
  return view_.file(side).path.empty() ? saveAs(side) : save(side, view_.file(side).path);
}

void CompareWindow::saveAll() {
  for (const int side : {0, 1}) {
    if (titleSide(side).modified && !saveSide(side)) return;
  }
}

bool CompareWindow::save(int side, const std::string& path) {
  return mayOverwrite(side, path) && write(side, path);
}

// What somebody else has written is not to be lost unnoticed.
bool CompareWindow::mayOverwrite(int side, const std::string& path) {
  const bool own = path == view_.file(side).path;
  const FileStamp known = own ? view_.file(side).stamp : FileStamp();
  if (!changedOnDisk(systemFiles(), path, known)) return true;
  return warn(own ? TextId::changedOnDisk : TextId::fileExists, path);
}

/// Asks whether to go on, the answer at hand being No.
bool CompareWindow::warn(TextId question, const std::string& path) const {
  return showMessage(handle(), loadMessage(question, {path}), MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) ==
         IDYES;
}

bool CompareWindow::write(int side, const std::string& path) {
  if (!reportSaved(saveFile(systemFiles(), path, view_.file(side)))) return false;
  history_.markSaved(side);
  showSaved();
  return true;
}

void CompareWindow::showSaved() {
  InvalidateRect(frame_.view.handle(), nullptr, FALSE);  // read-only text has another colour
  refresh();
}

bool CompareWindow::reportSaved(SystemError error) const {
  if (error == notEnoughStorage()) {
    reportOutOfMemory();
  } else if (error != 0) {
    showSystemError(handle(), TextId::couldNotSave, error);
  }
  return error == 0;
}

bool CompareWindow::saveAs(int side) {
  return saveAs(side, loadText(side == 0 ? TextId::saveLeftFile : TextId::saveRightFile).c_str());
}

bool CompareWindow::saveAs(int side, const char* title) {
  const auto chosen = chooseSaveFile(handle(), title, nameOf(side));
  if (!chosen || !write(side, *chosen)) return false;
  setName(side, *chosen);
  return true;
}

// Replacing a side, and its file at once.

bool CompareWindow::mayReplace() {
  return showMessage(handle(), TextId::reallyReplace, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

bool CompareWindow::saveText(int side, const TextBuffer& text, LineEndKind kind) {
  const std::string path = nameOf(side);
  if (!mayOverwrite(side, path)) return false;
  if (!reportSaved(merivane::saveText(systemFiles(), path, text, kind))) return false;
  view_.file(side).path = path;
  return true;
}

void CompareWindow::onSideSaved(int side) {
  EditedFile& file = view_.file(side);
  file.stamp = systemFiles().stamp(file.path);
  file.readOnly = false;
  showSaved();
}

// Exporting.

void CompareWindow::exportResults() {
  ExportDialog dialog(application_.settings);
  if (!dialog.run(handle())) return;
  const Settings& settings = application_.settings;
  const std::string names[2] = {nameOf(0), nameOf(1)};
  // A page of an earlier export is there to be replaced, a file that is being compared is not.
  const auto isTarget = [&](const std::string& name) {
    return lstrcmpiA(name.c_str(), settings.exportResults.c_str()) == 0;
  };
  const bool overCompared = isTarget(names[0]) || isTarget(names[1]);
  if (overCompared && !warn(TextId::fileExists, settings.exportResults)) return;
  WrittenComparison comparison = {view_.model(), {}, settings.compareOptions()};
  for (const int side : {0, 1}) {
    EditedFile& file = view_.file(side);
    comparison.sides[side] = {names[side], file.text.view(0, file.text.size()), file.lineEndKind};
  }
  WriterOptions options = settings.writerOptions();
  options.time = dateAndTime();
  const SystemError error =
      exportComparison(systemFiles(), settings.exportResults, writeHtml, comparison, options);
  if (error != 0) showSystemError(handle(), TextId::couldNotExport, error);
}

// Closing.

CloseAnswer CompareWindow::ask(const std::string& question) {
  switch (showMessage(handle(), question, MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES: return CloseAnswer::yes;
    case IDNO: return CloseAnswer::no;
    default: return CloseAnswer::cancel;
  }
}

bool CompareWindow::mayClose() { return merivane::mayClose(*this, application_.settings.askConfirmation); }

void CompareWindow::onClose() {
  if (!mayClose()) return;
  waitDialog_.abandon();
  DestroyWindow(handle());
}

// Logging off is not closing this window: what was not saved is asked about whatever the settings.
bool CompareWindow::onQueryEndSession() { return merivane::mayClose(*this, true); }

// The program is ended without further notice when the user logs off.
void CompareWindow::onEndSession(bool ending) {
  if (ending) application_.keepSettings();
}

}  // namespace merivane
