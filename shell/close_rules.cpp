#include "shell/close_rules.h"

#include "base/message_format.h"
#include "base/paths.h"
#include "base/texts.h"

namespace merivane {
namespace {

bool saveSide(ClosingWindow& window, int side, const std::string& name) {
  if (IsValidFilePath(name)) return window.save(side, name);
  return window.saveAs(side, text(side == 0 ? TextId::saveLeftFile : TextId::saveRightFile));
}

}  // namespace

bool mayClose(ClosingWindow& window, bool askConfirmation) {
  if (!askConfirmation) return true;
  for (int side = 0; side < 2; ++side) {
    const TitleSide state = window.side(side);
    if (!state.modified) continue;
    const CloseAnswer answer = window.ask(formatMessage(TextId::saveChangesTo, {promptName(state)}));
    if (answer == CloseAnswer::cancel) return false;
    if (answer == CloseAnswer::yes && !saveSide(window, side, sideName(state))) return false;
  }
  return true;
}

}  // namespace merivane
