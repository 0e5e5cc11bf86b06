#include "shell/window_kind.h"

#include "shell/frame_layout.h"
#include "shell/name_box.h"

namespace merivane {

const WindowTraits& traitsOf(WindowKind kind) {
  static constexpr WindowTraits text = {"CompareWindow",
                                        1121,
                                        1110,
                                        &Settings::compareWindow,
                                        &Settings::reUseFileWindow,
                                        Command::firstTextWindow,
                                        statusPartEdges,
                                        {kDropFiles,
                                         {&Settings::leftFileHistory, &Settings::rightFileHistory},
                                         {Command::browseLeftFile, Command::browseRightFile},
                                         {TextId::chooseLeftFile, TextId::chooseRightFile},
                                         {TextId::leftFileLabel, TextId::rightFileLabel}}};
  static constexpr WindowTraits folder = {"SessionWindow",
                                          1120,
                                          1111,
                                          &Settings::sessionWindow,
                                          &Settings::reUseFolderWindow,
                                          Command::firstFolderWindow,
                                          folderStatusPartEdges,
                                          {kDropFolders,
                                           {&Settings::leftFolderHistory, &Settings::rightFolderHistory},
                                           {Command::browseOldFolder, Command::browseNewFolder},
                                           {TextId::chooseOldFolder, TextId::chooseNewFolder},
                                           {TextId::oldFolderLabel, TextId::newFolderLabel}}};
  return kind == WindowKind::text ? text : folder;
}

}  // namespace merivane
