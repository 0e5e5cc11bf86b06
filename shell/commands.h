#pragma once

#include <cstdint>

namespace merivane {

/// Every command, by the number that menus, accelerators and the tool bar send.
enum class Command : uint16_t {
  // File
  newTextWindow = 20000,
  newFolderWindow = 20001,
  exportResults = 20003,
  pageSetup = 20004,
  printPreview = 20005,
  print = 20006,
  compareParents = 20007,
  close = 20008,
  exit = 20009,

  // Edit
  undo = 20100,
  redo = 20101,
  cut = 20102,
  copy = 20103,
  paste = 20104,
  deleteText = 20105,
  selectAll = 20106,
  find = 20107,
  findNext = 20108,
  findPrev = 20109,
  replaceLeft = 20110,   // the left side becomes a copy of the right
  replaceRight = 20111,  // the right side becomes a copy of the left

  // View
  viewToolBar = 20200,
  viewStatusBar = 20201,
  viewSummary = 20202,
  showWhiteSpace = 20203,
  syncScrolling = 20205,
  switchPane = 20206,
  lineNumbersVirtual = 20207,
  lineNumbersReal = 20208,
  lineNumbersNone = 20209,
  prevDiff = 20210,
  nextDiff = 20211,
  refresh = 20212,
  switchSides = 20213,
  options = 20214,

  // Window
  cascade = 20300,
  tileHorizontally = 20301,
  tileVertically = 20302,

  // Buttons beside the name boxes
  browseLeftFile = 20404,
  browseRightFile = 20405,
  browseOldFolder = 20406,
  browseNewFolder = 20407,
  upOneFolderLeft = 20408,
  upOneFolderRight = 20409,

  // Files and differences
  save = 20501,
  saveAs = 20502,
  saveAll = 20503,
  copyLineLeft = 20504,
  copyLineRight = 20505,
  deleteLine = 20506,
  copyDiffLeft = 20507,
  copyDiffRight = 20508,
  deleteDiff = 20509,
  lineToClipboard = 20510,
  blockToClipboard = 20511,
  openInApp = 20512,
  exploreFolder = 20513,
  showProperties = 20514,

  // Entries of a folder comparison
  compareEntries = 20600,
  copyToOld = 20601,
  copyToNew = 20602,
  deleteOld = 20603,
  deleteNew = 20604,
  deleteBoth = 20605,

  // Help
  usersManual = 20700,
  quickTour = 20701,
  visitWebsite = 20702,
  customerSupport = 20704,
  about = 20705,
  sendEmail = 20709,
  tipOfTheDay = 25003,

  // Entry i of the Window menu's two lists
  firstFolderWindow = 59000,
  firstTextWindow = 59500,
};

/// How many windows each list of the Window menu has numbers for.
inline constexpr int kListedWindows = 500;

}  // namespace merivane
