#include "shell/command_table.h"

#include <algorithm>

#include "base/texts.h"

namespace merivane {
namespace {

using enum Command;

constexpr bool later = false;

constexpr CommandRow rows[] = {
    {newTextWindow, "Ctrl+N"},
    {newFolderWindow, "Ctrl+D", later},
    {exportResults},
    {pageSetup, "", later},
    {printPreview, "", later},
    {print, "Ctrl+P", later},
    {compareParents, "", later},
    {close, "Ctrl+W"},
    {Command::exit, "Ctrl+Q"},
    {undo, "Ctrl+Z"},
    {redo, "Ctrl+Y"},
    {cut, "Ctrl+X"},
    {copy, "Ctrl+C"},
    {paste, "Ctrl+V"},
    {deleteText, "Del"},
    {selectAll, "Ctrl+A"},
    {find, "Ctrl+F"},
    {findNext, "F3"},
    {findPrev, "Ctrl+F3"},
    {replaceLeft},
    {replaceRight},
    {viewToolBar},
    {viewStatusBar},
    {viewSummary},
    {showWhiteSpace},
    {syncScrolling},
    {switchPane, "F4"},
    {lineNumbersVirtual},
    {lineNumbersReal},
    {lineNumbersNone},
    {prevDiff, "F7"},
    {nextDiff, "F8"},
    {refresh, "F5"},
    {switchSides},
    {options, "", later},
    {cascade},
    {tileHorizontally},
    {tileVertically},
    {browseLeftFile},
    {browseRightFile},
    {browseOldFolder, "", later},
    {browseNewFolder, "", later},
    {upOneFolderLeft},
    {upOneFolderRight},
    {save, "Ctrl+S"},
    {saveAs, "F12"},
    {saveAll},
    {copyLineLeft},
    {copyLineRight},
    {deleteLine},
    {copyDiffLeft, "Ctrl+["},
    {copyDiffRight, "Ctrl+]"},
    {deleteDiff, "Ctrl+Del"},
    {lineToClipboard},
    {blockToClipboard},
    {openInApp},
    {exploreFolder},
    {showProperties},
    {compareEntries, "", later},
    {copyToOld, "", later},
    {copyToNew, "", later},
    {deleteOld, "", later},
    {deleteNew, "", later},
    {deleteBoth, "", later},
    {usersManual, "F1", later},
    {quickTour, "", later},
    {visitWebsite, "", later},
    {customerSupport, "", later},
    {about, "", later},
    {sendEmail, "", later},
    {tipOfTheDay, "", later},
};

}  // namespace

std::span<const CommandRow> commandRows() { return rows; }

const CommandRow* findCommand(Command id) {
  const auto found = std::lower_bound(std::begin(rows), std::end(rows), id,
                                      [](const CommandRow& row, Command wanted) { return row.id < wanted; });
  return found != std::end(rows) && found->id == id ? found : nullptr;
}

const char* commandHelp(Command id) {
  // A command's help is the text with the command's number.
  return findCommand(id) != nullptr ? text(static_cast<TextId>(id)) : "";
}

std::string commandTip(Command id) {
  const CommandRow* row = findCommand(id);
  std::string tip = commandHelp(id);
  if (row != nullptr && row->keys[0] != '\0') tip = tip + " (" + row->keys + ")";
  return tip;
}

}  // namespace merivane
