#include "shell/win/application.h"

#include <ole2.h>

#include <utility>

#include "base/texts.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "base/win/window.h"
#include "operations/win/shell_trees.h"
#include "shell/command_line.h"
#include "shell/interrupted_operations.h"
#include "shell/tips.h"
#include "shell/win/question_box.h"
#include "shell/win/shell_utilities.h"
#include "shell/win/system_facts.h"
#include "shell/win/top_level_window.h"

namespace merivane {
namespace {

std::string currentFolder() {
  wchar_t folder[MAX_PATH];
  const DWORD length = GetCurrentDirectoryW(MAX_PATH, folder);
  return length < MAX_PATH ? utf8({folder, length}) : std::string();
}

/// Asks before there is a window.
class BoxesWithoutWindow final : public UserBoxes {
 public:
  Answer ask(const Question& question) override { return askInBox(nullptr, question); }
  void report(const std::string& message, ReportKind kind) override { reportInBox(nullptr, message, kind); }
};

}  // namespace

Application::Application(int showCommand)
    : windows(*this, showCommand),
      optionsDialog(
          settings, store_, [this] { windows.applySettings(); },
          [this](const char* page) { help.show(page); }) {}

bool Application::InitApplication(const std::vector<std::string>& arguments) {
  LoadSettings(store_, systemFacts(), settings);
  printer.takeDefault(settings.printPortrait);
  // What needs it, shortcuts and drags, fails by itself without; comparing does not.
  oleStarted_ = SUCCEEDED(OleInitialize(nullptr));
  startFolder = currentFolder();

  BoxesWithoutWindow boxes;
  offerInterruptedOperations(boxes, systemFiles(), *makeShellTrees(nullptr));

  const StartAction action = readArguments(arguments, systemFiles());
  switch (action.kind) {
    case StartAction::Kind::help:
      showMessage(nullptr, action.message, MB_OK | MB_ICONINFORMATION);
      return false;
    case StartAction::Kind::refusal: showMessage(nullptr, action.message, MB_OK | MB_ICONERROR); return false;
    case StartAction::Kind::notFound: {
      const TopLevelWindow* const window = windows.openNew(action.window, action.sides[0], action.sides[1]);
      if (window != nullptr) showMessage(window->handle(), action.message, MB_OK | MB_ICONERROR);
      return window != nullptr;
    }
    case StartAction::Kind::twoPaths:
      return windows.compare(action.window, nullptr, action.sides[0], action.sides[1], false) != nullptr;
    case StartAction::Kind::onePath:
      return windows.openNew(action.window, action.sides[0], action.sides[1]) != nullptr;
    case StartAction::Kind::emptyTextWindow: return windows.openNew(WindowKind::text) != nullptr;
  }
  return false;
}

void Application::run() {
  // Active may be the box of a comparison under way, which is soon gone.
  if (showsTipOnStartup(store_)) tipDialog.show(GetAncestor(GetActiveWindow(), GA_ROOTOWNER));
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) != 0) {
    route(message);
    windows.forgetClosed();
  }
}

/// Windows that are closed are still needed by whoever called this: they are forgotten by run().
void Application::serveMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
    route(message);
  }
}

void Application::route(MSG& message) {
  if (findDialog.handle() != nullptr && IsDialogMessageW(findDialog.handle(), &message)) return;
  if (optionsDialog.takes(message)) return;
  if (message.hwnd != nullptr) {
    HWND top = message.hwnd;
    while (const HWND parent = GetParent(top)) top = parent;
    if (Window* const window = Window::of(top)) {
      if (window->PreTranslateMessage(message)) return;
      const HACCEL accelerators = window->accelerators();
      const bool alt = message.message == WM_SYSKEYDOWN;
      if (accelerators != nullptr && TranslateAcceleratorW(top, accelerators, &message)) {
        altMeantKey_ = altMeantKey_ || alt;
        return;
      }
      // Letting Alt go after a key of ours must not open the menu.
      if (message.wParam == VK_MENU && (message.message == WM_SYSKEYUP || message.message == WM_KEYUP) &&
          std::exchange(altMeantKey_, false)) {
        return;
      }
    }
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

SessionWorld Application::sessionWorld() {
  return {systemFiles(), settings, store_, ResolveShortcut, dateAndTime};
}

void Application::keepSettings() {
  optionsDialog.close();
  SaveSettings(store_, settings);
}

void Application::end() {
  icons_.clear();
  keepSettings();
  help.close();
  if (oleStarted_) OleUninitialize();
}

}  // namespace merivane
