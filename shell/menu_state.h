#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/diff_model.h"
#include "shell/commands.h"
#include "shell/settings.h"

namespace merivane {

/// What of a window, and of the program around it, decides about its commands.
struct WindowFacts {
  int32_t textWindows = 0;  // open ones, this one included
  int32_t folderWindows = 0;

  int activeSide = 0;
  bool modified[2] = {false, false};
  bool readOnly[2] = {false, false};
  bool canUndo = false;
  bool canRedo = false;
  bool hasSelection = false;
  bool clipboardHasText = false;
  bool busy = false;             // the user waits for a comparison, or what is printed, to end
  bool showsComparison = false;  // and not just what a failed one leaves
  bool hasDifferences = false;
  bool hasFile = false;      // the active side, or the selected entry, has a name that can be a file's
  bool hasFileList = false;  // a folder window has others to compare
  bool hasParents = false;   // both files have a folder
  std::optional<RowStatus> caretRow;  // none: the caret stands outside the rows

  // Of a folder window.
  int tab = 0;
  std::vector<Command> offered;  // what can be done with the selected rows

  /// The name box that has the keyboard, if one has: what edits text is then about the name in it.
  struct NameBox {
    bool canUndo = false;
    bool hasSelection = false;
  };
  std::optional<NameBox> nameBox;

  bool mayUndo() const { return nameBox ? nameBox->canUndo : canUndo; }
  bool mayRedo() const { return !nameBox && canRedo; }
  bool mayCopy() const { return nameBox ? nameBox->hasSelection : hasSelection; }
  bool mayEdit() const { return nameBox.has_value() || !readOnly[activeSide]; }
  bool mayCopyTo(int side) const;  // the line or difference at the caret
  bool mayDelete() const;          // it, on the active side
  bool offers(Command command) const;
};

/// How a command shows in menus and tool bar.
struct CommandState {
  bool enabled = true;
  bool checked = false;
  bool radio = false;  // the mark, if any, is a bullet instead of a tick

  bool operator==(const CommandState&) const = default;
};

/// The state of a command as its row in resources/commands.inc says; disabled for a number that is no
/// command. While the window is busy only what closes the window or all of them is enabled. A window
/// disables besides what it does not do itself.
CommandState commandState(Command id, const WindowFacts& window, const Settings& settings);

/// Whether a command edits text, so that a name box that has the keyboard does it in itself.
bool editsText(Command id);

/// Whether a command's keys are a name box's own while it has the keyboard.
bool leavesKeysToNameBox(Command id);

/// Whether a new window of a kind may be opened by command: not a second one where windows are reused.
constexpr bool mayOpenNewWindow(bool reuse, int32_t open) { return !reuse || open == 0; }

/// The menus that a right click in a pane opens, by their numbers in the resources.
enum class PaneMenu : int { copyRight = 1122, copyLeft = 1123, deleteOnly = 1124, plain = 1125 };

/// The menu for a click left (0) or right (1) of the split, with the caret on a row of this status.
PaneMenu paneMenu(RowStatus row, int side);

}  // namespace merivane
