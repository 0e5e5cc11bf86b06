#pragma once

#include <windows.h>

#include <string>

namespace merivane {

/// The user's manual, in the system's help viewer or in the browser. It belongs to the installed program:
/// without an installation it lies in the program's own folder. What cannot be shown gives no message.
class Help {
 public:
  Help() = default;
  Help(const Help&) = delete;
  Help& operator=(const Help&) = delete;

  /// Opens a page, the start page without a name. Where the viewer cannot show it, because the manual is on
  /// another machine or came from the web, the browser does.
  void show(const std::string& page = {});

  /// Closes what the viewer has open.
  void close();

 private:
  using HtmlHelp = HWND(WINAPI*)(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);

  bool showInViewer(const std::string& file, const std::string& topic);

  bool loaded_ = false;  // or tried to be
  HtmlHelp htmlHelp_ = nullptr;
};

}  // namespace merivane
