#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/file_system.h"
#include "base/texts.h"
#include "display/sections.h"
#include "engine/comparison.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"
#include "shell/given_side.h"
#include "shell/session_host.h"
#include "shell/settings.h"
#include "shell/settings_store.h"

namespace merivane {

/// What to export, and into which file.
struct ExportChoice {
  ExportScope scope = ExportScope::everything;
  std::string path;
};

/// What a comparison of two files needs of its window besides.
class TextSessionHost : public virtual SessionHost {
 public:
  /// Asks where to save, starting from `name`, and before an existing file is written over. None when
  /// cancelled.
  virtual std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& name) = 0;

  /// Asks what to export, starting from `choice`. None when cancelled.
  virtual std::optional<ExportChoice> chooseExport(const ExportChoice& choice) = 0;
};

/// What sessions share with the rest of the program.
struct SessionWorld {
  FileSystem& files;
  Settings& settings;
  SettingsStore& store;                                     // keeps the names in the boxes for the next run
  std::string (*resolveShortcut)(const std::string& path);  // called on a job's thread
  std::string (*dateAndTime)();
};

/// The comparison of two files: it compares, saves, replaces and exchanges sides, exports, and decides what
/// is asked before something would be lost. The view shows its texts; the history has what was done to them.
///
/// What fails is reported to the user and leaves everything as it was, unless it says otherwise. Where memory
/// runs out that is either reported or thrown as std::bad_alloc.
class TextSession {
 public:
  TextSession(TextSessionHost& host, const SessionWorld& world, ViewState& view, UndoHistory& history);

  // What the window shows.

  /// "Merivane - [a.txt, b.txt*]": the file names without their folders, a star after one with unsaved
  /// changes, "<no file>" for a name that is no path of a file. A file that was described has its title
  /// there.
  std::string title() const;

  /// The names as the title has them.
  std::array<std::string, 2> shownNames() const;

  /// The path that a side was loaded from or saved to, else the name in its box; may be empty.
  std::string sideName(int side) const;

  /// Whether that name can be a file's, so that the system can open it.
  bool hasFile(int side) const { return canBeFile(sideName(side)); }

  /// No comparison has been shown yet, and nothing has been typed.
  bool isFresh() const { return fresh_ && !isEdited(); }

  /// The panes hold texts that were compared, and not just what a failed comparison leaves.
  bool showsComparison() const { return shown_ || isEdited(); }

  /// The options are no longer those that the shown comparison was made under.
  bool optionsChanged() const { return shown_ && world_.settings.compareOptions() != madeUnder_; }

  /// "DOS mixed, UNIX UTF-8", where saving the left file makes all its line ends the same, and
  /// "Diffs: 4, Lines: 11"; empty while no comparison is shown.
  std::string lineEndText() const;
  std::string differencesText() const;

  /// Where the caret stands: "Virt 1, Ln 1, Col 1", the line number 0 in a filler.
  std::string caretText() const;

  // Comparing.

  /// What is said of two files that are to be compared; it holds for them as long as the session does, until
  /// two others are described.
  void describe(const GivenSide& left, const GivenSide& right);

  /// Puts the names of the last comparison into the boxes.
  void restoreNames();

  /// Compares the files that the boxes name, whose names become absolute. What cannot be a file or is not
  /// there is refused. As the files are read anew, unsaved changes are offered to be saved first whatever the
  /// settings; when the user cancels that, the boxes name again what is shown. In the end the result is
  /// shown, or two empty texts and what went wrong. Files that are compared again keep their place.
  void compare();

  // Saving. A name that was only typed may be that of a file which the text did not come from, so that a side
  // without a path is saved under a name that the user chooses.

  /// Saves the active side if it has unsaved changes, else the other one if that has.
  void save();

  /// Saves the active side, changed or not, under another name.
  void saveAs() { saveAs(view_.activeSide()); }

  /// Saves the sides with unsaved changes, the left one first, up to one that was not written.
  void saveAll();

  // Whole sides.

  /// Makes a side a copy of the other and writes its file at once, after a question as that cannot be undone.
  /// A copy that cannot be written becomes an edit like any other.
  void replace(int side);

  /// Exchanges the sides with all that belongs to them.
  void switchSides();

  /// Exports to a file of the user's choice, after a question if it exists: unless this session wrote it and
  /// it is none of the compared ones.
  void exportResults();

  // Closing.

  /// Whether the window may close: unsaved changes are offered to be saved if the settings want that, and are
  /// lost otherwise.
  bool mayClose();

  /// Offers to save each side with unsaved changes, the left one first, with a question about its name. False
  /// when the user cancels, or wants a side saved and it cannot be.
  bool offerToSave(TextId question = TextId::saveChangesTo);

 private:
  struct Comparison;

  bool isEdited() const { return history_.canUndo() || history_.canRedo(); }
  void onCompared(const Outcome& outcome, Comparison& comparison);
  void show(const Outcome& outcome, Comparison& comparison);
  bool canBeFile(const std::string& name) const;
  std::string shownName(int side) const;
  bool areThere(const std::string (&names)[2]);
  void showNames();
  bool save(int side);
  bool saveAs(int side);
  bool saveTo(int side, const std::string& path);
  bool write(int side, const std::string& path);
  bool mayOverwrite(int side, const std::string& path);
  bool wasSaved(SystemError error);
  bool mayExportTo(const std::string& path);
  bool warn(TextId question, const std::string& path);
  void reportError(TextId message, SystemError error);

  TextSessionHost& host_;
  const SessionWorld world_;
  ViewState& view_;
  UndoHistory& history_;
  bool fresh_ = true;
  bool shown_ = false;
  CompareOptions madeUnder_;  // of what is shown
  bool comparing_ = false;
  GivenSide given_[2];
  std::string exportedTo_;  // the last time
};

}  // namespace merivane
