#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "printing/win/printer_setup.h"
#include "shell/settings.h"
#include "shell/text_session.h"
#include "shell/win/file_icons.h"
#include "shell/win/find_dialog.h"
#include "shell/win/help.h"
#include "shell/win/open_windows.h"
#include "shell/win/options_dialog.h"
#include "shell/win/registry_store.h"
#include "shell/win/tip_dialog.h"

namespace merivane {

/// The program: what lasts from its start to its end, and the one message loop of all its windows.
class Application {
  RegistryKey key_{HKEY_CURRENT_USER, kSettingsKey};
  SettingsStore store_{key_};

 public:
  explicit Application(int showCommand);

  /// Loads the settings and opens what the command line asks for. False: there is nothing to run for, but
  /// the exit steps are due all the same.
  bool InitApplication(const std::vector<std::string>& arguments);

  /// Shows the tip of the day, if it is wanted, and serves messages until WM_QUIT.
  void run();

  /// Serves the messages that are waiting, in the middle of something long.
  void serveMessages();

  /// The exit steps.
  void end();

  /// Writes the settings.
  void keepSettings();

  /// What the windows' sessions share.
  SessionWorld sessionWorld();

  /// The icons of the folder windows' rows at a resolution, until the program ends.
  FileIcons& icons(int dpi) { return icons_.try_emplace(dpi, dpi).first->second; }

  Settings settings;
  PrinterSetup printer;
  OpenWindows windows;
  FindDialog findDialog{settings};
  Help help;
  TipDialog tipDialog{store_};
  OptionsDialog optionsDialog;
  std::string startFolder;  // current when the program started; empty if there was no telling

 private:
  void route(MSG& message);

  std::map<int, FileIcons> icons_;
  bool oleStarted_ = false;
  bool altMeantKey_ = false;  // the Alt key that is held was part of a command's key
};

}  // namespace merivane
