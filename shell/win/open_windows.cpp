#include "shell/win/open_windows.h"

#include <algorithm>
#include <utility>

#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

constexpr int fixedMenuItems = 4;

WindowId idOf(const CompareWindow& window) { return reinterpret_cast<WindowId>(window.handle()); }

}  // namespace

OpenWindows::OpenWindows(Application& application, int showCommand)
    : application_(application), showCommand_(showCommand) {}

OpenWindows::~OpenWindows() = default;

CompareWindow* OpenWindows::find(WindowId id) const {
  for (const auto& window : open_) {
    if (idOf(*window) == id) return window.get();
  }
  return nullptr;
}

CompareWindow* OpenWindows::make() {
  const NewWindowRect place = newWindowRect(application_.settings.compareWindow, !open_.empty(), workArea());
  auto window = std::make_unique<CompareWindow>(application_);
  const int show = application_.settings.compareWindow.maximized ? SW_SHOWMAXIMIZED : showCommand_;
  open_.reserve(open_.size() + 1);
  closed_.reserve(closed_.size() + open_.size() + 1);  // closing a window must not need memory
  if (!window->open(place)) return nullptr;
  open_.push_back(std::move(window));
  ShowWindow(open_.back()->handle(), show);
  showCommand_ = SW_SHOWNORMAL;
  refreshAll();
  return open_.back().get();
}

bool OpenWindows::OpenFilesInTextWindow(CompareWindow* target, const std::string& left,
                                        const std::string& right, bool force) {
  std::vector<ListedWindow> listed;
  for (const auto& window : open_) listed.push_back({idOf(*window), window->isFresh()});
  WindowChoice choice;
  if (target != nullptr) choice.target = idOf(*target);
  choice.force = force;
  choice.reuse = application_.settings.reUseFileWindow;
  const auto chosen = chooseTextWindow(listed, choice);
  CompareWindow* const window = chosen ? find(*chosen) : make();
  if (window == nullptr) return false;
  window->compare(left, right);
  return true;
}

bool OpenWindows::NewTextWindow(const std::string& left) {
  CompareWindow* const window = make();
  if (window != nullptr && !left.empty()) window->setName(0, left);
  return window != nullptr;
}

void OpenWindows::RemoveWindow(const CompareWindow& window) {
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const auto& each) { return each.get() == &window; });
  if (found == open_.end()) return;
  closed_.push_back(std::move(*found));
  open_.erase(found);
  if (open_.empty()) {
    PostQuitMessage(0);
  } else {
    refreshAll();
  }
}

void OpenWindows::forgetClosed() { closed_.clear(); }

std::vector<HWND> OpenWindows::handles() const {
  std::vector<HWND> handles;
  for (const auto& window : open_) handles.push_back(window->handle());
  return handles;
}

void OpenWindows::closeAll() {
  for (const HWND window : handles()) {
    SendMessageA(window, WM_CLOSE, 0, 0);
    if (IsWindow(window)) return;
  }
}

void OpenWindows::BuildWindowMenu(const CompareWindow& current, HMENU menu) const {
  while (DeleteMenu(menu, fixedMenuItems, MF_BYPOSITION)) continue;
  std::vector<MenuWindow> windows;
  for (const auto& window : open_) windows.push_back({window->title(), window.get() == &current});
  for (const WindowMenuItem& item : windowMenuItems({}, windows)) {
    UINT flags = MF_STRING;
    if (item.kind == WindowMenuItem::Kind::separator) flags = MF_SEPARATOR;
    if (item.kind == WindowMenuItem::Kind::placeholder) flags |= MF_GRAYED;
    if (item.checked) flags |= MF_CHECKED;
    AppendMenuA(menu, flags, static_cast<UINT_PTR>(item.command), item.text.c_str());
  }
}

void OpenWindows::ActivateListedWindow(Command command) const {
  const auto place = listedPlace(command);
  if (!place || !place->textWindow || place->index >= open_.size()) return;
  const HWND window = open_[place->index]->handle();
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  BringWindowToTop(window);
  SetForegroundWindow(window);
}

void OpenWindows::cascade() const {
  const std::vector<HWND> windows = handles();
  if (!windows.empty())
    CascadeWindows(nullptr, 0, nullptr, static_cast<UINT>(windows.size()), windows.data());
}

void OpenWindows::tile(bool horizontally) const {
  const std::vector<HWND> windows = handles();
  if (windows.empty()) return;
  TileWindows(nullptr, horizontally ? MDITILE_HORIZONTAL : MDITILE_VERTICAL, nullptr,
              static_cast<UINT>(windows.size()), windows.data());
}

void OpenWindows::refreshAll() {
  for (const auto& window : open_) window->refresh();
}

void OpenWindows::applySettings() {
  for (const auto& window : open_) window->applySettings();
}

}  // namespace merivane
