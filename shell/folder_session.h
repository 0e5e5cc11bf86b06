#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_system.h"
#include "folders/folder_comparison.h"
#include "operations/folder_operations.h"
#include "shell/commands.h"
#include "shell/given_side.h"
#include "shell/session_host.h"
#include "shell/settings.h"
#include "shell/text_session.h"

namespace merivane {

/// What a comparison of two folders needs of its window besides.
class FolderSessionHost : public virtual SessionHost {
 public:
  /// The lists hold another result; `again` when it is of the same folders, so that the tab, the selection
  /// and the place can be kept.
  virtual void onResult(bool again) = 0;

  /// Rows of a category have other marks, so that it has another count, and the window another title.
  virtual void onMarks(FolderCategory category) = 0;

  /// Compares two files in a text window, or two folders in a folder window of their own; `several` when
  /// this is one of several calls, each of which is to get a window.
  virtual void openComparison(const GivenSide (&sides)[2], bool folders, bool several) = 0;
};

/// The rows of a list that a command is about: those that are selected, or without any the one with the
/// caret.
struct RowSelection {
  std::vector<uint32_t> selected;  // ascending
  std::optional<uint32_t> caret;

  std::vector<uint32_t> rows() const;
  /// More than one row is selected, or another one than that with the caret.
  bool isMultiple() const;
};

/// An item of the menu of rows.
struct RowMenuItem {
  std::optional<Command> command;  // none: a separator
  std::string label;
  bool isDefault = false;  // done by Enter and a double click too, shown bold
};

/// The tabs, in their order.
inline constexpr FolderCategory kFolderTabs[] = {FolderCategory::changed, FolderCategory::onlyOld,
                                                 FolderCategory::onlyNew, FolderCategory::same};

/// The comparison of two folders: it compares, has the result as four lists of rows, copies and deletes
/// entries and takes that back, and decides what is asked before something would be lost. Rows are numbered
/// from 0 in each category. For an operation all rows are looked at first, as a job, and all is asked at
/// once.
///
/// What fails is reported to the user and leaves everything as it was, unless it says otherwise. Where memory
/// runs out that is either reported or thrown as std::bad_alloc. Destroying the session removes its journals.
/// folder_session_commands.cpp holds what its commands do.
class FolderSession {
 public:
  FolderSession(FolderSessionHost& host, const SessionWorld& world, std::shared_ptr<TreeOperations> trees);
  ~FolderSession();
  FolderSession(const FolderSession&) = delete;
  FolderSession& operator=(const FolderSession&) = delete;

  // What the window shows.

  /// "Merivane - [old, new*]": the folders' names, a star after one that an operation has changed, "<no
  /// folder>" for a name that can be none. A folder that was described has its title there.
  std::string title() const;

  /// The folder that a side shows, else the name in its box; may be empty.
  std::string sideName(int side) const;

  bool isFresh() const { return fresh_; }
  bool showsComparison() const { return shown_; }

  /// A comparison or a command is under way. Until it has ended nothing else is begun, and the window stays:
  /// the shell takes messages while it copies and deletes.
  bool isBusy() const { return job_ != nullptr || operating_; }

  /// The options are no longer those that the shown comparison was made under.
  bool optionsChanged() const { return shown_ && world_.settings.folderOptions() != madeUnder_; }

  /// "Changed (3)": with the number of entries on which nothing was done yet.
  std::string tabLabel(FolderCategory category) const;

  /// For the status bar. What is selected: "3 entries, 1234 bytes" (the bytes of files; of the category's new
  /// side where it has one); empty for nothing. The filter of the result: "Filter: *.txt"; empty without.
  /// What the result was: "Changed: 3, Old: 1, New: 2, Same: 40", and the number of those that could not be
  /// compared, if any; empty while no result is shown.
  std::string selectionText(FolderCategory category, const RowSelection& selection) const;
  const std::string& filterText() const { return filterText_; }
  std::string countsText() const;
  /// "2 could not be compared"; empty when all were.
  std::string troubleText() const;

  /// How far the comparison or the look under way is: entries, bytes, folder. For the window's own thread, at
  /// any time.
  std::string progressText() const;

  // The rows.

  uint32_t rowCount(FolderCategory category) const;
  const FolderEntry& entry(FolderCategory category, uint32_t row) const;

  /// Its name and, of a changed one, the description of its differences, or why it could not be compared.
  std::string rowName(FolderCategory category, uint32_t row) const;
  std::string rowDescription(FolderCategory category, uint32_t row) const;
  EntryOperation mark(FolderCategory category, uint32_t row) const;
  /// The mark in words, for screen readers; empty for none.
  std::string markText(FolderCategory category, uint32_t row) const;

  /// The path of a row for programs: on the old side for Old, else on the new one.
  std::string path(FolderCategory category, uint32_t row) const;
  /// The paths on both sides. Where a side does not have the entry, where it would be.
  void paths(FolderCategory category, uint32_t row, std::string (&paths)[2]) const;

  /// A row as two sides to compare, read-only as their folders are.
  void sides(FolderCategory category, uint32_t row, GivenSide (&sides)[2]) const;

  /// The paths of the rows, a line each, for the clipboard.
  std::string pathsText(FolderCategory category, const RowSelection& selection) const;

  /// The first row from `from` on, and then from the top, whose name begins with what was typed, without
  /// regard to case.
  std::optional<uint32_t> findTyped(FolderCategory category, std::string_view typed, uint32_t from) const;

  /// The rows with these names, ascending.
  std::vector<uint32_t> rowsNamed(FolderCategory category, const std::vector<std::string>& names) const;

  /// The next row in a direction (1 or -1) on which nothing was done yet; from outside with none.
  std::optional<uint32_t> nextOpenRow(FolderCategory category, std::optional<uint32_t> from,
                                      int direction) const;

  /// The changed row of two files that are compared in a text window; the next one that is a file.
  std::optional<uint32_t> changedRow(const std::string (&paths)[2]) const;
  std::optional<uint32_t> nextChangedFile(uint32_t from, int direction) const;

  // Comparing.

  /// What is said of two folders that are to be compared; it holds for them as long as the session does,
  /// until two others are described. No command that would change a read-only one is offered.
  void describe(const GivenSide& left, const GivenSide& right);

  /// Puts the names of the last comparison into the boxes.
  void restoreNames();

  /// Compares the folders that the boxes name, whose names become absolute. What cannot be a folder is
  /// refused. Operations can be undone no longer then, which is asked about if the settings want that. In the
  /// end the result is shown, or empty lists and what went wrong.
  void compare();

  // Commands.

  /// The menu of the rows.
  std::vector<RowMenuItem> menu(FolderCategory category, const RowSelection& selection) const;

  /// Whether the menu of the rows has a command.
  bool mayRun(Command command, FolderCategory category, const RowSelection& selection) const;

  /// What Enter does; none for several rows.
  std::optional<Command> defaultCommand(FolderCategory category, const RowSelection& selection) const;

  /// The commands among which the Delete key is to choose: one, or all three where both sides have it.
  std::vector<RowMenuItem> deleteMenu(FolderCategory category, const RowSelection& selection) const;

  /// The label of Undo for the rows; "&Undo" where nothing can be undone.
  std::string undoLabel(FolderCategory category, const RowSelection& selection) const;

  /// Does Undo, Compare, or one of the copies and deletions with the rows. What does not apply says so in the
  /// status bar.
  void run(Command command, FolderCategory category, const RowSelection& selection);

  /// Marks a row as compared, as Compare does.
  void markCompared(FolderCategory category, uint32_t row);

  // Closing.

  /// Whether the window may close: asks, if the settings want that, when operations could still be undone.
  bool mayClose();

 private:
  struct Comparison;
  struct Look;
  using Marks = std::map<uint32_t, DoneOperation>;

  /// What decides about the commands for some rows.
  struct RowFacts {
    std::vector<uint32_t> rows;
    bool canAct = false;  // on one at least
    bool canUndo = false;
    bool isSingle = false;
  };

  const Marks& marks(FolderCategory category) const { return marks_[static_cast<size_t>(category)]; }
  Marks& marks(FolderCategory category) { return marks_[static_cast<size_t>(category)]; }
  const std::vector<FolderEntry>& entries(FolderCategory category) const {
    return result_.category(category);
  }
  bool mayDo(FolderCategory category, Command command) const;
  RowFacts facts(FolderCategory category, const RowSelection& selection) const;
  bool canBeFolder(const std::string& name) const;
  void onCompared(Result result, Comparison& comparison);
  void discardOperations();
  size_t undoableOperations() const;
  bool mayLoseOperations();
  void compareRows(FolderCategory category, const RowFacts& facts);
  void lookAt(std::vector<uint32_t> rows, std::vector<Examination> plans,
              std::function<void(const Look& look)> then);
  void examine(EntryOperation operation, FolderCategory category, const RowFacts& facts);
  void operate(FolderCategory category, const Look& look);
  void examineUndo(FolderCategory category, std::vector<uint32_t> rows, int64_t undone);
  void undo(FolderCategory category, const Look& look, int64_t undone);
  bool mayChange(FolderCategory category, const Look& look, std::span<const Examination> examinations);
  bool mayLose(std::span<const Examination> examinations);
  void reportFailure(const std::string& message);

  FolderSessionHost& host_;
  const SessionWorld world_;
  const std::shared_ptr<TreeOperations> trees_;  // also of a look that is still under way when this is gone
  FolderOperations operations_;
  bool fresh_ = true;
  bool shown_ = false;
  bool operating_ = false;
  FolderOptions madeUnder_;  // of what is shown
  bool modified_[2] = {false, false};
  std::string paths_[2];  // the compared folders
  bool readOnly_[2] = {false, false};
  GivenSide given_[2];
  FolderComparison result_;
  std::string filterText_;
  Marks marks_[kFolderCategories];
  std::shared_ptr<const FolderProgress> job_;  // of the comparison or the look under way
};

}  // namespace merivane
