#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "display/row_look.h"
#include "engine/compare_options.h"
#include "folders/folder_options.h"
#include "mergeview/view_options.h"
#include "output/writers.h"
#include "shell/history_list.h"
#include "shell/settings_store.h"
#include "shell/window_placement.h"

namespace merivane {

/// Everything the program remembers from one run to the next; one record for the whole process. What a
/// fresh record holds is the default of every setting. Members bear the names of their keys.
struct Settings {
  Settings();

  Colour textColor = 0x000000;
  Colour readOnlyColor = 0x606060;
  Colour sameBkColor = RowColours().same;
  Colour emptyBkColor = RowColours().empty;
  Colour leftBkColor = RowColours().left;
  Colour rightBkColor = RowColours().right;
  Colour changeBkColor = RowColours().changed;
  /// The colour picker's own; the first seven are the defaults of the colours above.
  std::array<Colour, 16> customColors = {0x000000, 0x606060, 0xFFFFFF, 0xF4F4F4, 0xC0DCC0, 0xF0CAA6,
                                         0xA6CAF0, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
                                         0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};

  // Comparing and viewing texts.
  bool ignoreCase = false;
  bool wordWrap = false;
  bool showWhiteSpace = false;
  bool syncScroll = true;
  bool wrapAround = true;
  bool compareChanges = true;
  bool highlightChanges = true;
  int32_t ignoreBlanks2 = 0;  // IgnoreBlanks bits
  int32_t tabStop = kDefaultTabStop;
  int32_t showLineNumbers = 2;  // a LineNumbers
  bool viewSummary = true;
  bool viewToolBar = true;
  bool viewStatusBar = true;
  bool drawCaretBox = true;
  bool drawArrows = true;
  bool identicalMessage = false;
  bool scrollToFirst = false;
  bool askConfirmation = false;
  bool reUseFileWindow = false;
  bool reUseFolderWindow = true;
  bool escQuitsApp = true;

  // Comparing folders.
  bool folderUndo = true;
  bool ignoreNameCase = true;
  bool compareSubfolders = true;
  bool compareAttribs = false;
  bool compareFolderAttribs = false;
  bool compareDate = true;
  bool compareFolderDate = false;
  bool compareSize = true;
  bool compareQuick = false;
  bool compareFull = false;
  bool haveIncludeFilter = false;
  bool haveExcludeFilter = false;

  std::string fontFace;  // empty until loaded: the default depends on the fonts there are
  int32_t fontSize = 8;  // points, 1 to 200

  HistoryList leftFileHistory;
  HistoryList rightFileHistory;
  HistoryList leftFolderHistory;
  HistoryList rightFolderHistory;
  HistoryList includeFilterHistory;
  HistoryList excludeFilterHistory;

  std::string findText;  // at most 255 characters
  bool findMatchCase = false;
  bool findWholeWord = false;
  bool findDownwards = true;

  std::string exportResults;
  int32_t exportHow = 0;  // an ExportScope

  WindowPlacement compareWindow;
  WindowPlacement sessionWindow = {{50, 50, 500, 600}, true, false};
  WindowPlacement previewWindow;

  int32_t printScale = 100;  // percent, 25 to 100
  int32_t printHow = 0;      // an ExportScope
  bool printPortrait = true;

  HistoryList& fileHistory(int side) { return side == 0 ? leftFileHistory : rightFileHistory; }
  HistoryList& folderHistory(int side) { return side == 0 ? leftFolderHistory : rightFolderHistory; }

  /// What comparisons look at. Two that are equal give the same result; what another setting makes void is
  /// left at its default.
  CompareOptions compareOptions() const;
  FolderOptions folderOptions() const;

  RowLook look() const;
  ViewOptions viewOptions() const;
  WriterOptions writerOptions() const;  // but the time
  LineNumbers lineNumbers() const { return static_cast<LineNumbers>(showLineNumbers); }
};

/// What loading has to know of the system.
struct SystemFacts {
  Monitors monitors;
  std::function<bool(const char* face)>
      fontExists;  // a screen font family of that name, in any character set
};

/// Fills a fresh record; what is absent or out of its range gets its default. Run once, before the first
/// window. Nothing is written.
void LoadSettings(const SettingsStore& store, const SystemFacts& facts, Settings& settings);

/// Writes every setting. Run once, after the message loop. Failures are ignored.
void SaveSettings(SettingsStore& store, const Settings& settings);

}  // namespace merivane
