#include "shell/win/preview_dialog.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "base/win/messages.h"
#include "printing/page_geometry.h"
#include "shell/win/page_setup_dialog.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1149;
constexpr int printButton = 100;
constexpr int setupButton = 101;
constexpr int backButton = 102;
constexpr int onButton = 103;
constexpr int pageText = 104;
constexpr int scaleBox = 105;
constexpr int zoomBox = 106;

// The zoom box has these two before the percentages.
constexpr int wholePage = 0;
constexpr int pageWidth = 1;
constexpr int firstPercentage = 2;

constexpr RECT unitsAbovePane = {0, 0, 466, 22};

int selected(HWND box) { return static_cast<int>(SendMessageW(box, CB_GETCURSEL, 0, 0)); }
void select(HWND box, int item) { SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0); }

/// Which item of the zoom box stands for a zoom; -1 for none.
int zoomItem(const Zoom& zoom) {
  if (zoom.kind == ZoomKind::page) return wholePage;
  if (zoom.kind == ZoomKind::width) return pageWidth;
  const auto all = zoomPercentages();
  const auto found = std::find(all.begin(), all.end(), zoom.percent);
  return found == all.end() ? -1 : firstPercentage + static_cast<int>(found - all.begin());
}

}  // namespace

bool PreviewDialog::run(HWND owner) { return Dialog::run(dialogNumber, owner) == printButton; }

LRESULT PreviewDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_SIZE: return onSize(LOWORD(lParam), HIWORD(lParam));
    case WM_GETMINMAXINFO: {
      const RECT min = inPixels({0, 0, 472, 160});
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {min.right, min.bottom};
      return TRUE;
    }
    case WM_MOUSEWHEEL: return returns(SendMessageW(pane_.handle(), message, wParam, lParam));
    case WM_COMMAND: return onCommand(LOWORD(wParam), HIWORD(wParam));
    default: return FALSE;
  }
}

/// The pane has the keyboard.
BOOL PreviewDialog::onInitDialog() {
  if (!pane_.create(handle())) return EndDialog(handle(), IDCANCEL);
  fillScales();
  const HWND zooms = item(zoomBox);
  sendText(zooms, CB_ADDSTRING, 0, loadText(TextId::fitPage));
  sendText(zooms, CB_ADDSTRING, 0, loadText(TextId::fitWidth));
  for (const int32_t percent : zoomPercentages()) {
    sendText(zooms, CB_ADDSTRING, 0, loadMessage(TextId::zoomPercent, {int64_t{percent}}));
  }
  place();
  pane_.show(layOut_());
  SetFocus(pane_.handle());
  return FALSE;
}

/// Where it stood the last time.
void PreviewDialog::place() {
  const WindowPlacement& placement = settings_.previewWindow;
  if (!placement.valid) {
    centre();
  } else {
    const NewWindowRect at = newWindowRect(placement, false, monitors());
    SetWindowPos(handle(), nullptr, at.x, at.y, at.width, at.height, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (placement.maximized) ShowWindow(handle(), SW_SHOWMAXIMIZED);
  RECT client = {};
  GetClientRect(handle(), &client);
  onSize(client.right, client.bottom);
}

/// Besides the offered ones the scale that is set.
void PreviewDialog::fillScales() {
  const HWND box = item(scaleBox);
  SendMessageW(box, CB_RESETCONTENT, 0, 0);
  std::vector<int32_t> scales(std::begin(kOfferedScales), std::end(kOfferedScales));
  if (std::find(scales.begin(), scales.end(), settings_.printScale) == scales.end()) {
    scales.push_back(settings_.printScale);
    std::sort(scales.rbegin(), scales.rend());
  }
  for (const int32_t scale : scales) sendText(box, CB_ADDSTRING, 0, std::to_string(scale));
  const auto set = std::find(scales.begin(), scales.end(), settings_.printScale);
  select(box, static_cast<int>(set - scales.begin()));
}

BOOL PreviewDialog::onCommand(int id, int code) {
  switch (id) {
    case printButton: return end(printButton);
    case setupButton: return onSetup();
    case backButton: return turnTo(int64_t{pane_.view().page()} - 1);
    case onButton: return turnTo(int64_t{pane_.view().page()} + 1);
    case scaleBox: return code == CBN_SELCHANGE && onScale();
    case zoomBox: return code == CBN_SELCHANGE && onZoom();
    case IDCANCEL: return end(IDCANCEL);
    default: return FALSE;
  }
}

BOOL PreviewDialog::end(int result) {
  capturePlacement(windowStance(handle()), settings_.previewWindow);
  return EndDialog(handle(), result);
}

BOOL PreviewDialog::onSize(int width, int height) {
  const RECT row = inPixels(unitsAbovePane);
  MoveWindow(pane_.handle(), 0, row.bottom, width, std::max<int>(height - row.bottom, 0), TRUE);
  return TRUE;
}

BOOL PreviewDialog::onSetup() {
  if (choosePrinterSetup(handle(), printer_, settings_)) pane_.show(layOut_());
  SetFocus(pane_.handle());
  return TRUE;
}

BOOL PreviewDialog::onScale() {
  wchar_t text[16] = L"";
  SendMessageW(item(scaleBox), CB_GETLBTEXT, static_cast<WPARAM>(selected(item(scaleBox))),
               reinterpret_cast<LPARAM>(text));
  settings_.printScale = _wtoi(text);
  pane_.show(layOut_());
  return TRUE;
}

BOOL PreviewDialog::onZoom() {
  const int chosen = selected(item(zoomBox));
  if (chosen == wholePage) {
    pane_.setZoom({ZoomKind::page});
  } else if (chosen == pageWidth) {
    pane_.setZoom({ZoomKind::width});
  } else if (chosen >= firstPercentage) {
    pane_.setZoom({ZoomKind::percent, zoomPercentages()[static_cast<size_t>(chosen - firstPercentage)]});
  }
  return TRUE;
}

/// The keys are the pane's again: a button may have been greyed under them.
BOOL PreviewDialog::turnTo(int64_t page) {
  pane_.goTo(page);
  SetFocus(pane_.handle());
  return TRUE;
}

void PreviewDialog::enable(int button, bool enabled) {
  if ((IsWindowEnabled(item(button)) != FALSE) != enabled) EnableWindow(item(button), enabled);
}

void PreviewDialog::showState() {
  const PreviewView& view = pane_.view();
  enable(backButton, view.canGoBack());
  enable(onButton, view.canGoOn());
  const std::string page = loadMessage(TextId::pageOf, {int64_t{view.page()}, int64_t{view.pages()}});
  if (windowText(item(pageText)) != page) setWindowText(item(pageText), page);
  if (selected(item(zoomBox)) != zoomItem(view.zoom())) select(item(zoomBox), zoomItem(view.zoom()));
}

}  // namespace merivane
