#include "shell/window_list.h"

#include "base/texts.h"

namespace merivane {
namespace {

std::optional<WindowId> first(std::span<const ListedWindow> windows) {
  if (windows.empty()) return std::nullopt;
  return windows.front().id;
}

std::optional<WindowId> firstFresh(std::span<const ListedWindow> windows) {
  for (const ListedWindow& window : windows) {
    if (window.fresh) return window.id;
  }
  return std::nullopt;
}

std::string menuText(const std::string& title) {
  std::string result;
  for (const char c : title) result.append(c == '&' ? 2 : 1, c);
  return result;
}

void addWindows(std::vector<WindowMenuItem>& items, std::span<const MenuWindow> windows, Command firstCommand,
                TextId whenNone) {
  if (windows.empty()) items.push_back({WindowMenuItem::Kind::placeholder, {}, text(whenNone), false});
  for (size_t i = 0; i < windows.size() && i < kListedWindows; ++i) {
    const auto command = static_cast<Command>(static_cast<size_t>(firstCommand) + i);
    items.push_back({WindowMenuItem::Kind::command, command, menuText(windows[i].title), windows[i].current});
  }
}

}  // namespace

std::optional<WindowId> chooseWindow(WindowKind kind, std::span<const ListedWindow> windows,
                                     const WindowChoice& choice) {
  if (kind == WindowKind::folder && choice.force) return std::nullopt;
  if (choice.target) return choice.target;
  return choice.force || !choice.reuse ? firstFresh(windows) : first(windows);
}

std::vector<WindowMenuItem> windowMenuItems(std::span<const MenuWindow> folderWindows,
                                            std::span<const MenuWindow> textWindows) {
  std::vector<WindowMenuItem> items;
  addWindows(items, folderWindows, traitsOf(WindowKind::folder).firstListed, TextId::noFolderWindows);
  items.push_back({});
  addWindows(items, textWindows, traitsOf(WindowKind::text).firstListed, TextId::noTextWindows);
  return items;
}

std::optional<ListedPlace> listedPlace(Command command) {
  constexpr auto folders = static_cast<size_t>(Command::firstFolderWindow);
  constexpr auto texts = static_cast<size_t>(Command::firstTextWindow);
  const auto number = static_cast<size_t>(command);
  if (number < folders || number >= texts + kListedWindows) return std::nullopt;
  if (number < texts) return ListedPlace{WindowKind::folder, number - folders};
  return ListedPlace{WindowKind::text, number - texts};
}

std::optional<WindowKind> comparedByDrop(std::span<const FileKind> items) {
  if (items.size() != 2 || items[0] != items[1]) return std::nullopt;
  switch (items[0]) {
    case FileKind::file:
      return WindowKind::text;
    case FileKind::folder:
      return WindowKind::folder;
    default:
      return std::nullopt;
  }
}

}  // namespace merivane
