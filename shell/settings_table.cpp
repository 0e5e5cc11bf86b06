#include "shell/settings_table.h"

namespace merivane {
namespace {

using S = Settings;

constexpr int32_t kMostNames = 40;
constexpr int32_t kMostFilters = 20;
constexpr size_t kLongestFindText = 255;

const SettingsRow rows[] = {
    {"TextColor", ColourSetting{&S::textColor}},
    {"ReadOnlyColor", ColourSetting{&S::readOnlyColor}},
    {"SameBkColor", ColourSetting{&S::sameBkColor}},
    {"EmptyBkColor", ColourSetting{&S::emptyBkColor}},
    {"LeftBkColor", ColourSetting{&S::leftBkColor}},
    {"RightBkColor", ColourSetting{&S::rightBkColor}},
    {"ChangeBkColor", ColourSetting{&S::changeBkColor}},
    {"CustomColor", CustomColourSetting{&S::customColors}},
    {"IgnoreCase", BoolSetting{&S::ignoreCase}},
    {"WordWrap", BoolSetting{&S::wordWrap}},
    {"ShowWhiteSpace", BoolSetting{&S::showWhiteSpace}},
    {"SyncScroll", BoolSetting{&S::syncScroll}},
    {"WrapAround", BoolSetting{&S::wrapAround}},
    {"CompareChanges", BoolSetting{&S::compareChanges}},
    {"HighlightChanges", BoolSetting{&S::highlightChanges}},
    {"IgnoreBlanks2", NumberSetting{&S::ignoreBlanks2}},
    {"TabStop", NumberSetting{&S::tabStop, kMinTabStop, kMaxTabStop}},
    {"ShowLineNumbers", NumberSetting{&S::showLineNumbers, 0, 2}},
    {"ViewSummary", BoolSetting{&S::viewSummary}},
    {"ViewToolBar", BoolSetting{&S::viewToolBar}},
    {"ViewStatusBar", BoolSetting{&S::viewStatusBar}},
    {"DrawCaretBox", BoolSetting{&S::drawCaretBox}},
    {"DrawArrows", BoolSetting{&S::drawArrows}},
    {"IdenticalMessage", BoolSetting{&S::identicalMessage}},
    {"ScrollToFirst", BoolSetting{&S::scrollToFirst}},
    {"AskConfirmation", BoolSetting{&S::askConfirmation}},
    {"ReUseFileWindow", BoolSetting{&S::reUseFileWindow}},
    {"ReUseFolderWindow", BoolSetting{&S::reUseFolderWindow}},
    {"EscQuitsApp", BoolSetting{&S::escQuitsApp}},
    {"FolderUndo", BoolSetting{&S::folderUndo}},
    {"IgnoreNameCase", BoolSetting{&S::ignoreNameCase}},
    {"CompareSubfolders", BoolSetting{&S::compareSubfolders}},
    {"CompareAttribs", BoolSetting{&S::compareAttribs}},
    {"CompareFolderAttribs", BoolSetting{&S::compareFolderAttribs}},
    {"CompareDate", BoolSetting{&S::compareDate}},
    {"CompareFolderDate", BoolSetting{&S::compareFolderDate}},
    {"CompareSize", BoolSetting{&S::compareSize}},
    {"CompareQuick", BoolSetting{&S::compareQuick}},
    {"CompareFull", BoolSetting{&S::compareFull}},
    {"HaveIncludeFilter", BoolSetting{&S::haveIncludeFilter}},
    {"HaveExcludeFilter", BoolSetting{&S::haveExcludeFilter}},
    {"FontFace", TextSetting{&S::fontFace}},
    {"FontSize", NumberSetting{&S::fontSize, 1, 200}},
    {"LeftFileHistory", HistorySetting{&S::leftFileHistory, kMostNames}},
    {"RightFileHistory", HistorySetting{&S::rightFileHistory, kMostNames}},
    {"LeftFolderHistory", HistorySetting{&S::leftFolderHistory, kMostNames}},
    {"RightFolderHistory", HistorySetting{&S::rightFolderHistory, kMostNames}},
    {"IncludeFilterHistory", HistorySetting{&S::includeFilterHistory, kMostFilters, true}},
    {"ExcludeFilterHistory", HistorySetting{&S::excludeFilterHistory, kMostFilters, true}},
    {"FindText", TextSetting{&S::findText, kLongestFindText}},
    {"FindMatchCase", BoolSetting{&S::findMatchCase}},
    {"FindWholeWord", BoolSetting{&S::findWholeWord}},
    {"FindDownwards", BoolSetting{&S::findDownwards}},
    {"ExportResults", TextSetting{&S::exportResults}},
    {"ExportHow", NumberSetting{&S::exportHow, 0, 2}},
    {"CompareWindow", PlacementSetting{&S::compareWindow}},
    {"SessionWindow", PlacementSetting{&S::sessionWindow}},
    {"PreviewWindow", PlacementSetting{&S::previewWindow}},
    {"PrintScale", NumberSetting{&S::printScale, 25, 100}},
    {"PrintHow", NumberSetting{&S::printHow, 0, 2}},
    {"PrintPortrait", BoolSetting{&S::printPortrait}},
};

}  // namespace

std::span<const SettingsRow> settingsRows() { return rows; }

}  // namespace merivane
