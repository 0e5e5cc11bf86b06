#include "shell/window_title.h"

#include "base/message_format.h"
#include "base/paths.h"
#include "base/texts.h"

namespace merivane {
namespace {

std::string titleName(const TitleSide& side) {
  const std::string& name = sideName(side);
  const std::string shown = IsValidFilePath(name) ? FileNamePart(name) : text(TextId::noFile);
  return side.modified ? shown + "*" : shown;
}

}  // namespace

const std::string& sideName(const TitleSide& side) {
  return side.savedPath.empty() ? side.boxText : side.savedPath;
}

std::string promptName(const TitleSide& side) {
  const std::string& name = sideName(side);
  return name.empty() ? text(TextId::noFile) : name;
}

std::string windowTitle(const TitleSide (&sides)[2]) {
  return formatMessage(TextId::windowTitle,
                       {text(TextId::productName), titleName(sides[0]), titleName(sides[1])});
}

}  // namespace merivane
