#include "shell/win/options_page.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <utility>

#include "base/win/dpi.h"
#include "base/win/wide.h"
#include "shell/win/font_list.h"

namespace merivane {
namespace {

constexpr int kLongestFilter = 260;
constexpr int kLongestSize = 10;

constexpr UINT dpiChangedAfterParent = 0x02E3;  // Windows 10; the headers have it from there on

// In pixels at 96 to the inch.
constexpr int kFontItemHeight = 16;
constexpr SIZE kColourArea = {24, 12};

template <typename Kind>
bool is(const OptionRow& option) {
  return std::holds_alternative<Kind>(option.kind);
}

/// The text of the item that is chosen in a list, which its edit field has only later.
std::string chosenText(HWND comboBox) {
  const WPARAM index = static_cast<WPARAM>(SendMessageW(comboBox, CB_GETCURSEL, 0, 0));
  const LRESULT length = SendMessageW(comboBox, CB_GETLBTEXTLEN, index, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<size_t>(length), L'\0');
  SendMessageW(comboBox, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
  return utf8(text);
}

/// A patch of colour with an edge, as a button shows it beside its text.
Bitmap colourPatch(Colour colour, int dpi) {
  const WindowDc screen(nullptr);
  const HDC dc = CreateCompatibleDC(screen);
  RECT area = {0, 0, scaled(kColourArea.cx, dpi), scaled(kColourArea.cy, dpi)};
  Bitmap bitmap(CreateCompatibleBitmap(screen, area.right, area.bottom));
  {
    const SelectedObject selected(dc, bitmap.get());
    const Brush inside(CreateSolidBrush(colour));
    FillRect(dc, &area, inside.get());
    FrameRect(dc, &area, GetSysColorBrush(COLOR_BTNTEXT));
  }
  DeleteDC(dc);
  return bitmap;
}

}  // namespace

OptionsPage::OptionsPage(const OptionsPageRow& page, Settings& settings, const std::function<void()>& changed)
    : page_(page), settings_(settings), changed_(changed) {}

LRESULT OptionsPage::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: onInitDialog(); return FALSE;  // the keyboard stays in the list of pages
    case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_DRAWITEM: drawFontItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case dpiChangedAfterParent:
      patches_.clear();
      sizeItems();
      show();
      return TRUE;
    default: return FALSE;
  }
}

void OptionsPage::onInitDialog() {
  for (const OptionRow& option : page_.options) setUp(option, control(option));
  sizeItems();
  show();
}

void OptionsPage::setUp(const OptionRow& option, HWND control) {
  if (const auto* filter = std::get_if<FilterOption>(&option.kind)) {
    filters_[option.control].adopt(control, 0, settings_.*filter->history, kLongestFilter);
  } else if (is<FontFaceOption>(option)) {
    fillFontList(control);
  } else if (is<FontSizeOption>(option)) {
    SendMessageW(control, CB_LIMITTEXT, kLongestSize, 0);
  }
  for (const std::string& choice : optionChoices(option)) sendText(control, CB_ADDSTRING, 0, choice);
}

/// Lists that are drawn here have lines of a height of their own.
void OptionsPage::sizeItems() {
  const int height = scaled(kFontItemHeight, dpiOf(handle()));
  for (const OptionRow& option : page_.options) {
    if (!is<FontFaceOption>(option)) continue;
    for (const int part : {-1, 0}) {
      SendMessageW(control(option), CB_SETITEMHEIGHT, static_cast<WPARAM>(part), height);
    }
  }
}

// Showing the settings.

void OptionsPage::show() {
  const bool before = std::exchange(showing_, true);
  for (const OptionRow& option : page_.options) show(option, control(option));
  showing_ = before;
}

void OptionsPage::show(const OptionRow& option, HWND control) {
  const OptionState state = optionState(option, settings_);
  if ((IsWindowEnabled(control) != 0) != state.enabled) EnableWindow(control, state.enabled);
  if (is<ColourOption>(option)) {
    showColour(option.control, control, state.colour);
  } else if (is<FontFaceOption>(option) || is<TabSizeOption>(option)) {
    const auto none = static_cast<WPARAM>(-1);
    const LRESULT index = sendText(control, CB_FINDSTRINGEXACT, none, state.text);
    if (SendMessageW(control, CB_GETCURSEL, 0, 0) == index) return;
    SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  } else if (is<FontSizeOption>(option) || is<FilterOption>(option)) {
    // Nobody's typing is replaced.
    if (IsChild(control, GetFocus()) || windowText(control) == state.text) return;
    setWindowText(control, state.text);
  } else {
    CheckDlgButton(handle(), option.control, state.checked ? BST_CHECKED : BST_UNCHECKED);
  }
}

void OptionsPage::showColour(int id, HWND control, Colour colour) {
  const auto shown = patches_.find(id);
  if (shown != patches_.end() && shown->second.colour == colour) return;
  Patch patch = {colour, colourPatch(colour, dpiOf(handle()))};
  SendMessageW(control, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(patch.picture.get()));
  patches_[id] = std::move(patch);  // the one that was there is free now
}

// Following the controls.

void OptionsPage::onCommand(int id, int code) {
  if (id == IDOK) return takeTyped();  // Enter
  const OptionRow* const option = findOption(id);
  if (option == nullptr || showing_) return;
  const HWND control = this->control(*option);
  if (is<FilterOption>(*option)) {
    NameBox& box = filters_[id];
    switch (code) {
      case CBN_EDITCHANGE: return box.onEdit();
      // The edit field has what was chosen when this is over.
      case CBN_CLOSEUP: PostMessageW(handle(), WM_COMMAND, MAKEWPARAM(id, kNameBoxEnter), 0); return;
      case kNameBoxEnter:
      case CBN_KILLFOCUS: return change(*option, {.text = box.text()});
    }
  } else if (is<FontSizeOption>(*option) && code == CBN_EDITCHANGE) {
    change(*option, {.text = windowText(control)});
  } else if (is<FontSizeOption>(*option) && code == CBN_KILLFOCUS) {
    show();
  } else if (is<FontFaceOption>(*option) || is<FontSizeOption>(*option) || is<TabSizeOption>(*option)) {
    if (code == CBN_SELCHANGE) change(*option, {.text = chosenText(control)});
  } else if (code == BN_CLICKED) {
    if (is<ColourOption>(*option)) return pickColour(*option);
    change(*option, {.checked = IsDlgButtonChecked(handle(), id) == BST_CHECKED});
  }
}

void OptionsPage::takeTyped() {
  for (auto& [id, box] : filters_) {
    if (box.hasFocus()) change(*findOption(id), {.text = box.text()});
  }
}

void OptionsPage::change(const OptionRow& option, const OptionState& shown) {
  changeOption(option, shown, settings_);
  show();
  changed_();
}

void OptionsPage::pickColour(const OptionRow& option) {
  const HWND page = handle();
  static_assert(sizeof(COLORREF) == sizeof(Colour));
  std::array<COLORREF, 16> customColours;
  std::ranges::copy(settings_.customColors, customColours.begin());
  CHOOSECOLORW choice = {};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = GetParent(page);
  choice.rgbResult = optionState(option, settings_).colour;
  choice.lpCustColors = customColours.data();
  choice.Flags = CC_RGBINIT | CC_ANYCOLOR;
  // With the window below the page may go while the picker is open.
  if (!ChooseColorW(&choice) || of(page) != this) return;
  std::ranges::copy(customColours, settings_.customColors.begin());
  change(option, {.colour = choice.rgbResult});
}

}  // namespace merivane
