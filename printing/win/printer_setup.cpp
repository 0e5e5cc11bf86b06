#include "printing/win/printer_setup.h"

#include <cderr.h>

#include <algorithm>
#include <utility>

#include "base/win/messages.h"

namespace merivane {
namespace {

/// Movable memory as the print dialogs have it, held in place for as long as this lives; null for none.
template <typename Record>
class Locked {
 public:
  explicit Locked(HGLOBAL memory)
      : memory_(memory), record_(memory != nullptr ? static_cast<Record*>(GlobalLock(memory)) : nullptr) {}
  ~Locked() {
    if (record_ != nullptr) GlobalUnlock(memory_);
  }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

  Record* get() const { return record_; }
  Record* operator->() const { return record_; }
  explicit operator bool() const { return record_ != nullptr; }

 private:
  HGLOBAL memory_;
  Record* record_;
};

constexpr WORD kMaxPage = 65535;  // that the dialog takes

}  // namespace

void PrinterSetup::forget() {
  for (HGLOBAL* const memory : {&mode_, &names_}) {
    if (*memory != nullptr) GlobalFree(*memory);
    *memory = nullptr;
  }
}

void PrinterSetup::takeDefault(bool portrait) {
  PRINTDLGW dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.Flags = PD_RETURNDEFAULT | PD_NOWARNING;
  if (!PrintDlgW(&dialog)) return;
  forget();
  mode_ = dialog.hDevMode;
  names_ = dialog.hDevNames;
  const Locked<DEVMODEW> mode(mode_);
  if (!mode) return;
  mode->dmFields |= DM_ORIENTATION;
  mode->dmOrientation = portrait ? DMORIENT_PORTRAIT : DMORIENT_LANDSCAPE;
}

/// Shows a dialog, starting from the printer that is kept; from the default one where that has gone. The
/// dialog may put other memory in the place of what it was given, also when it is cancelled.
bool PrinterSetup::show(HWND owner, PRINTDLGW& dialog) {
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.Flags |= PD_NOWARNING;  // the reason is told below
  bool chosen = false;
  DWORD error = 0;
  for (const bool again : {false, true}) {
    dialog.hDevMode = mode_;
    dialog.hDevNames = names_;
    chosen = PrintDlgW(&dialog) != FALSE;
    error = chosen ? 0 : CommDlgExtendedError();
    mode_ = dialog.hDevMode;
    names_ = dialog.hDevNames;
    const bool gone = error == PDERR_PRINTERNOTFOUND || error == PDERR_DNDMMISMATCH ||
                      error == PDERR_DEFAULTDIFFERENT || error == PDERR_INITFAILURE;
    if (!gone || again || names_ == nullptr) break;
    forget();
  }
  if (error == PDERR_NODEFAULTPRN || error == PDERR_NODEVICES) {
    showMessage(owner, TextId::noPrinter, MB_OK | MB_ICONERROR);
  } else if (error != 0) {
    showMessage(owner, loadMessage(TextId::dialogFailed, {int64_t{error}}), MB_OK | MB_ICONERROR);
  }
  return chosen;
}

std::optional<PrintRequest> PrinterSetup::choosePrint(HWND owner, uint32_t pages) {
  PRINTDLGW dialog = {};
  dialog.Flags = PD_RETURNDC | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
  dialog.nMinPage = dialog.nFromPage = 1;
  dialog.nMaxPage = kMaxPage;
  dialog.nToPage = static_cast<WORD>(std::min<uint32_t>(pages, kMaxPage));
  dialog.nCopies = 1;
  if (!show(owner, dialog)) return std::nullopt;
  PrintRequest request;
  request.dc = PrinterDc(dialog.hDC);
  if (!request.dc) {
    showMessage(owner, TextId::printerUnavailable, MB_OK | MB_ICONERROR);
    return std::nullopt;
  }
  request.toFile = (dialog.Flags & PD_PRINTTOFILE) != 0;
  if (dialog.Flags & PD_PAGENUMS) request.range = PageRange{dialog.nFromPage, dialog.nToPage};
  return request;
}

bool PrinterSetup::chooseSetup(HWND owner) {
  PRINTDLGW dialog = {};
  dialog.Flags = PD_PRINTSETUP;
  return show(owner, dialog);
}

PrinterDc PrinterSetup::information() const {
  const Locked<DEVNAMES> names(names_);
  const Locked<DEVMODEW> mode(mode_);
  if (!names) return PrinterDc();
  const auto* const texts = reinterpret_cast<const wchar_t*>(names.get());
  return PrinterDc(
      CreateICW(texts + names->wDriverOffset, texts + names->wDeviceOffset, nullptr, mode.get()));
}

std::optional<bool> PrinterSetup::portrait() const {
  const Locked<DEVMODEW> mode(mode_);
  if (!mode || (mode->dmFields & DM_ORIENTATION) == 0) return std::nullopt;
  return mode->dmOrientation == DMORIENT_PORTRAIT;
}

bool PrinterSetup::inColour(const PrinterDc& dc) const {
  const Locked<DEVMODEW> mode(mode_);
  const bool greys = mode && (mode->dmFields & DM_COLOR) != 0 && mode->dmColor == DMCOLOR_MONOCHROME;
  return dc.hasColours() && !greys;
}

}  // namespace merivane
