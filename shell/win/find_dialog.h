#pragma once

#include <windows.h>

#include <commdlg.h>

#include <string>

#include "shell/settings.h"

namespace merivane {

/// What the Find dialog sends to its owner.
extern const UINT findReplaceMessage;

/// The system's Find dialog, one for the whole program. What is searched for is kept in the settings.
class FindDialog {
 public:
  explicit FindDialog(Settings& settings) : settings_(settings) {}
  FindDialog(const FindDialog&) = delete;
  FindDialog& operator=(const FindDialog&) = delete;

  /// Opens it over a window with `text` to search for, or gives it the focus where it is open over that
  /// window; from any other it comes over. What is entered comes to its owner as findReplaceMessage.
  void open(HWND owner, const std::string& text);

  /// Null while it is closed.
  HWND handle() const { return IsWindow(dialog_) ? dialog_ : nullptr; }

  /// Takes a findReplaceMessage in. True when a search was asked for: the settings say for what, and the
  /// dialog is closed.
  bool takeRequest(const FINDREPLACEW& request);

 private:
  void close();

  Settings& settings_;
  HWND dialog_ = nullptr;
  FINDREPLACEW description_ = {};  // the dialog's while it is open
  wchar_t text_[256] = L"";
};

}  // namespace merivane
