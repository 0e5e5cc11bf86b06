#include "shell/win/tip_dialog.h"

#include <string_view>

#include "base/win/dpi.h"
#include "base/win/messages.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 25000;
constexpr int tipsNumber = 25002;
constexpr int pictureControl = 25006;
constexpr int headerControl = 25007;
constexpr int tipControl = 25008;
constexpr int startupBox = 25009;
constexpr int nextButton = 25010;

constexpr RECT paper = {7, 7, 263, 112};  // in dialog units, under all that belongs to the tip
constexpr int pictureScale = 3;           // against the pictures of buttons

std::string_view tipsOfProgram() {
  const HRSRC found = FindResourceW(programInstance(), MAKEINTRESOURCEW(tipsNumber), L"TIPS");
  if (found == nullptr) return {};
  const HGLOBAL resource = LoadResource(programInstance(), found);
  const auto* const text = static_cast<const char*>(LockResource(resource));
  return text != nullptr ? std::string_view(text, SizeofResource(programInstance(), found))
                         : std::string_view();
}

}  // namespace

void TipDialog::show(HWND owner) {
  if (handle() != nullptr) {
    SetForegroundWindow(handle());
    return;
  }
  tips_.emplace(tipsOfProgram(), store_);
  run(dialogNumber, owner);
}

LRESULT TipDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_COMMAND: return onCommand(LOWORD(wParam));
    case WM_ERASEBKGND: return onEraseBackground(reinterpret_cast<HDC>(wParam));
    case WM_DRAWITEM: return onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    case WM_CTLCOLORSTATIC: return onColour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    default: return FALSE;
  }
}

BOOL TipDialog::onInitDialog() {
  headerFont_ = largerFont(160);
  pictures_.emplace(dpiOf(handle()) * pictureScale);
  SendDlgItemMessageW(handle(), headerControl, WM_SETFONT, reinterpret_cast<WPARAM>(headerFont_.get()),
                      FALSE);
  setWindowText(GetDlgItem(handle(), headerControl), loadText(TextId::didYouKnow));
  CheckDlgButton(handle(), startupBox, showsTipOnStartup(store_) ? BST_CHECKED : BST_UNCHECKED);
  centre();
  showNext();
  return TRUE;
}

BOOL TipDialog::onCommand(int id) {
  switch (id) {
    case nextButton: showNext(); return TRUE;
    case startupBox:
      setShowTipOnStartup(store_, IsDlgButtonChecked(handle(), startupBox) == BST_CHECKED);
      return TRUE;
    case IDCANCEL: EndDialog(handle(), IDCANCEL); return TRUE;
    default: return FALSE;
  }
}

void TipDialog::showNext() {
  const std::optional<Tip> tip = tips_->next();
  EnableWindow(GetDlgItem(handle(), nextButton), tip.has_value());
  if (!tip) return;
  picture_ = tipPicture(tip->picture);
  setWindowText(GetDlgItem(handle(), tipControl), tip->text);
  InvalidateRect(GetDlgItem(handle(), pictureControl), nullptr, TRUE);
}

BOOL TipDialog::onEraseBackground(HDC dc) {
  RECT client = {};
  GetClientRect(handle(), &client);
  FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
  RECT sheet = inPixels(paper);
  FillRect(dc, &sheet, GetSysColorBrush(COLOR_WINDOW));
  DrawEdge(dc, &sheet, BDR_SUNKENOUTER, BF_RECT);
  return returns(TRUE);
}

BOOL TipDialog::onDrawItem(const DRAWITEMSTRUCT& item) {
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_WINDOW));
  ImageList_Draw(pictures_->list(), static_cast<int>(picture_), item.hDC, item.rcItem.left, item.rcItem.top,
                 ILD_NORMAL);
  return TRUE;
}

LRESULT TipDialog::onColour(HDC dc, HWND control) {
  const int id = GetDlgCtrlID(control);
  if (id != headerControl && id != tipControl) return FALSE;
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  SetBkColor(dc, GetSysColor(COLOR_WINDOW));
  return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace merivane
