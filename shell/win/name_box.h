#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>

#include "shell/menu_state.h"
#include "shell/name_box.h"

namespace merivane {

/// What a name box sends to its parent as the code of a command message besides the combo box's own.
inline constexpr UINT kNameBoxEnter = 200;    // Enter was pressed with the list closed
inline constexpr UINT kNameBoxDropped = 202;  // a dropped file or folder was put in

/// A combo box for the name of a file or folder: shows a history, completes what is typed from it and takes
/// drops. It outlives its window.
class NameBox final : public HistoryView {
 public:
  NameBox() = default;
  ~NameBox() override;
  NameBox(const NameBox&) = delete;
  NameBox& operator=(const NameBox&) = delete;

  /// `history` must outlive the box.
  void create(HWND parent, int id, uint32_t dropKinds, HistoryList& history);

  /// Makes a name box of a combo box with an edit field, as a dialog has one. `longest` in characters.
  void adopt(HWND comboBox, uint32_t dropKinds, HistoryList& history, int longest = kLongestName);

  HWND handle() const { return handle_; }

  std::string text() const;
  void setText(const std::string& text);

  bool hasFocus() const { return GetFocus() == edit_; }
  bool isListOpen() const { return SendMessageW(handle_, CB_GETDROPPEDSTATE, 0, 0) != 0; }
  WindowFacts::NameBox facts() const;

  /// Does in the edit field what a command does that edits text.
  void edit(Command command);

  /// Takes the keyboard, with the whole text selected, or with the caret at its end.
  void focusAll();
  void focusEnd();

  /// The parent passes on that the edit text changed. What the program itself puts there completes nothing.
  void onEdit();

  /// Takes one dropped item, if it is of a kind that the box accepts.
  void drop(const std::string& name);

  void refill(const HistoryList& list) override;

 private:
  static LRESULT CALLBACK subclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR box);
  bool onKeyDown(WPARAM key);
  void onDropFiles(HDROP drop);
  void notifyParent(UINT code);

  static constexpr int kLongestName = 32767;

  HWND handle_ = nullptr;
  HWND edit_ = nullptr;
  HistoryList* history_ = nullptr;
  uint32_t dropKinds_ = 0;
  NameCompletion completion_;
  bool settingText_ = false;
};

}  // namespace merivane
