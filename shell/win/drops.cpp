#include "shell/win/drops.h"

#include "shell/win/shell_utilities.h"

namespace merivane {

std::vector<std::string> takeDrop(HDROP drop) {
  std::vector<std::string> names;
  const UINT count = DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::string name(DragQueryFileA(drop, i, nullptr, 0), '\0');
    DragQueryFileA(drop, i, name.data(), static_cast<UINT>(name.size()) + 1);
    names.push_back(ResolveShortcut(name));
  }
  DragFinish(drop);
  return names;
}

}  // namespace merivane
