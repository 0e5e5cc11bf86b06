#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/frame_layout.h"
#include "shell/result_rows.h"
#include "shell/win/control_look.h"
#include "shell/win/file_icons.h"

namespace merivane {

/// Whose results the lists show.
class ResultListsOwner {
 public:
  virtual uint32_t rowCount(int tab) const = 0;
  virtual ResultRow resultRow(int tab, uint32_t row) const = 0;

  /// The first row from `from` on, and then from the first one, that begins with some characters.
  virtual std::optional<uint32_t> rowThatBegins(int tab, std::string_view with, uint32_t from) const = 0;

  /// Fonts and sizes; null while the window is being created. The icons fit them.
  virtual const ControlLook* rowLook() const = 0;
  virtual FileIcons& rowIcons() const = 0;
  virtual MarkColours markColours(uint8_t mark) const = 0;

  /// Which rows are selected, or where the caret is, has changed, or which tab is in front.
  virtual void onSelection() = 0;

  /// Enter or a double click.
  virtual void onRowChosen() = 0;

  virtual void onRowMenu(POINT screen) = 0;

 protected:
  ~ResultListsOwner() = default;
};

/// The contents of a folder window: four tabs and under each the list of its rows, of which any number can be
/// selected. The lists hold no rows: they ask for those they show.
class ResultLists {
 public:
  static constexpr int kTabs = 4;

  explicit ResultLists(ResultListsOwner& owner) : owner_(owner) {}

  /// Creates the controls, in the order of the Tab key. False when they cannot be created.
  bool create(HWND window);

  void layOut(const Area& area);

  /// Takes fonts, sizes and colours anew where they are others.
  void followLook();

  void setTabTexts(const std::array<std::string, kTabs>& texts);

  /// The rows of all tabs are others. None is selected, and the caret is on the first.
  void refill();

  /// Draws the rows of the tab in front again.
  void redraw();

  int tab() const;
  void showTab(int tab);

  /// The list of the tab in front.
  HWND list() const { return lists_[tab()]; }

  // Of the tab in front, in order.
  std::vector<uint32_t> selectedRows() const;
  std::optional<uint32_t> caretRow() const;
  uint32_t topRow() const;

  /// Selects rows of the tab in front, and no others.
  void select(const std::vector<uint32_t>& rows);
  void selectAll();

  /// Puts the caret on a row and brings it into view.
  void goTo(uint32_t row);

  /// Scrolls so that a row is the first to be seen, as far as that goes.
  void setTopRow(uint32_t row);

  /// Where a menu for the row at the caret opens, on the screen.
  POINT menuPlace() const;

  /// Takes the messages that the controls send to their window. None for any other message.
  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  HWND makeList(HWND window, int tab);
  std::optional<int> tabOf(HWND control) const;
  LRESULT onNotify(int tab, NMHDR& header);
  void onDisplay(int tab, LVITEMW& item) const;
  void onMeasure(MEASUREITEMSTRUCT& size) const;
  void onDraw(int tab, const DRAWITEMSTRUCT& row) const;
  void onTabChosen();
  void fitColumns();

  ResultListsOwner& owner_;
  HWND tabs_ = nullptr;
  HWND lists_[kTabs] = {};
  std::array<std::string, kTabs> tabTexts_;
  Area area_;
  std::array<MarkColours, kMarks> markColours_;  // as they are drawn
  bool quiet_ = false;                           // what changes now is told at its end
};

}  // namespace merivane
