#include "shell/win/open_windows.h"

#include <algorithm>
#include <utility>

#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/folder_window.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

WindowId idOf(const TopLevelWindow& window) { return reinterpret_cast<WindowId>(window.handle()); }

}  // namespace

OpenWindows::OpenWindows(Application& application, int showCommand)
    : application_(application), showCommand_(showCommand) {}

OpenWindows::~OpenWindows() = default;

std::unique_ptr<TopLevelWindow> OpenWindows::construct(WindowKind kind) {
  if (kind == WindowKind::text) return std::make_unique<CompareWindow>(application_);
  return std::make_unique<FolderWindow>(application_);
}

TopLevelWindow* OpenWindows::make(WindowKind kind) {
  const WindowPlacement placement = application_.settings.*traitsOf(kind).placement;
  const NewWindowRect place = newWindowRect(placement, count(kind) > 0, monitors());
  auto window = construct(kind);
  List& open = open_[static_cast<int>(kind)];
  open.reserve(open.size() + 1);
  closed_.reserve(closed_.size() + handles().size() + 1);  // closing a window must not need memory
  if (!window->open(place)) return nullptr;
  TopLevelWindow* const made = open.emplace_back(std::move(window)).get();
  made->update();
  ShowWindow(made->handle(), placement.maximized ? SW_SHOWMAXIMIZED : showCommand_);
  showCommand_ = SW_SHOWNORMAL;
  listChanged();
  return made;
}

TopLevelWindow* OpenWindows::compare(WindowKind kind, TopLevelWindow* target, const GivenSide& left,
                                     const GivenSide& right, bool force) {
  std::vector<ListedWindow> listed;
  for (const auto& window : list(kind)) listed.push_back({idOf(*window), window->isFresh()});
  WindowChoice choice;
  if (target != nullptr) choice.target = idOf(*target);
  choice.force = force;
  choice.reuse = application_.settings.*traitsOf(kind).reuse;
  const auto chosen = chooseWindow(kind, listed, choice);
  const auto found = std::find_if(list(kind).begin(), list(kind).end(),
                                  [&](const auto& window) { return idOf(*window) == chosen; });
  TopLevelWindow* const window = found != list(kind).end() ? found->get() : make(kind);
  if (window == nullptr || window->isBusy()) return nullptr;
  window->compare(left, right);
  return window;
}

TopLevelWindow* OpenWindows::openNew(WindowKind kind) {
  TopLevelWindow* const window = make(kind);
  if (window != nullptr) window->focusName(0);
  return window;
}

TopLevelWindow* OpenWindows::openNew(WindowKind kind, const GivenSide& left, const GivenSide& right) {
  TopLevelWindow* const window = make(kind);
  if (window == nullptr) return nullptr;
  window->setSides(left, right);
  window->focusName(right.path.empty() ? 1 : 0);
  return window;
}

void OpenWindows::RemoveWindow(const TopLevelWindow& window) {
  List& open = open_[static_cast<int>(window.kind())];
  const auto found =
      std::find_if(open.begin(), open.end(), [&](const auto& each) { return each.get() == &window; });
  if (found == open.end()) return;
  closed_.push_back(std::move(*found));
  open.erase(found);
  listChanged();
  if (handles().empty()) PostQuitMessage(0);
}

void OpenWindows::forgetClosed() { closed_.clear(); }

void OpenWindows::listChanged() {
  for (const List& open : open_) {
    for (const auto& window : open) window->changed();
  }
}

void OpenWindows::applySettings() {
  for (const List& open : open_) {
    for (const auto& window : open) window->applySettings();
  }
}

/// Folder windows first, as the Window menu has them.
std::vector<HWND> OpenWindows::handles() const {
  std::vector<HWND> handles;
  for (const WindowKind kind : {WindowKind::folder, WindowKind::text}) {
    for (const auto& window : list(kind)) handles.push_back(window->handle());
  }
  return handles;
}

void OpenWindows::closeAll() {
  const std::vector<HWND> all = handles();
  // While one asks, another may go.
  const auto live = [](HWND window) { return static_cast<TopLevelWindow*>(Window::of(window)); };
  for (const HWND each : all) {
    TopLevelWindow* const window = live(each);
    if (window != nullptr && !window->mayClose()) return;
  }
  for (const HWND each : all) {
    if (TopLevelWindow* const window = live(each)) window->close();
  }
}

std::vector<WindowMenuItem> OpenWindows::menuItems(const TopLevelWindow& current) const {
  std::vector<MenuWindow> windows[kWindowKinds];
  for (const WindowKind kind : {WindowKind::folder, WindowKind::text}) {
    for (const auto& window : list(kind)) {
      windows[static_cast<int>(kind)].push_back({window->title(), window.get() == &current});
    }
  }
  return windowMenuItems(windows[static_cast<int>(WindowKind::folder)],
                         windows[static_cast<int>(WindowKind::text)]);
}

void OpenWindows::ActivateListedWindow(Command command) const {
  const auto place = listedPlace(command);
  if (!place || place->index >= list(place->kind).size()) return;
  const TopLevelWindow& window = *list(place->kind)[place->index];
  if (IsIconic(window.handle())) ShowWindow(window.handle(), SW_RESTORE);
  BringWindowToTop(window.handle());
  SetForegroundWindow(window.windowForKeys());
}

void OpenWindows::cascade() const {
  const std::vector<HWND> windows = handles();
  if (windows.empty()) return;
  CascadeWindows(nullptr, 0, nullptr, static_cast<UINT>(windows.size()), windows.data());
}

void OpenWindows::tile(bool horizontally) const {
  const std::vector<HWND> windows = handles();
  if (windows.empty()) return;
  TileWindows(nullptr, horizontally ? MDITILE_HORIZONTAL : MDITILE_VERTICAL, nullptr,
              static_cast<UINT>(windows.size()), windows.data());
}

}  // namespace merivane
