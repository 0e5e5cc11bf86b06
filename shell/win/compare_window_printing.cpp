// How a text window prints.

#include <utility>

#include "base/win/messages.h"
#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/page_setup_dialog.h"
#include "shell/win/preview_dialog.h"
#include "shell/win/system_facts.h"

namespace merivane {

/// The comparison on a printer's pages as the settings are now. The same file names tell nothing apart: then
/// the folders are named too.
std::unique_ptr<Printout> CompareWindow::makePrintout(const PrinterDc& dc) const {
  const Settings& settings = application().settings;
  PrintStyle style;
  style.options = paperOptions(settings.viewOptions(), application().printer.inColour(dc));
  style.fontFace = settings.fontFace;
  style.points = settings.fontSize;
  style.scale = settings.printScale;
  style.scope = static_cast<ExportScope>(settings.printHow);
  style.names = session_.shownNames();
  if (style.names[0] == style.names[1]) style.names = {session_.sideName(0), session_.sideName(1)};
  style.time = dateAndTime();
  return std::make_unique<Printout>(dc, view_, std::move(style));
}

/// Null without a printer: one that was added since the start is looked for, too.
std::unique_ptr<Printout> CompareWindow::makePrintout() const {
  PrinterSetup& printer = application().printer;
  if (!printer.information()) printer.takeDefault(application().settings.printPortrait);
  const PrinterDc dc = printer.information();
  return dc ? makePrintout(dc) : nullptr;
}

void CompareWindow::print() {
  PrinterSetup& printer = application().printer;
  const auto foreseen = makePrintout();
  if (foreseen == nullptr) return sayNoPrinter();
  auto request = printer.choosePrint(handle(), foreseen->pages());
  keepOrientation(printer, application().settings);
  if (!request || handle() == nullptr) return;
  auto printout = makePrintout(request->dc);
  const uint32_t pages = printout->pages();
  const PageRange range = clippedRange(request->range.value_or(PageRange{1, pages}), pages);
  printJob_.start(handle(), std::move(*request), std::move(printout), range);
}

void CompareWindow::preview() {
  if (makePrintout() == nullptr) return sayNoPrinter();
  PreviewDialog dialog(application().settings, application().printer, [this] { return makePrintout(); });
  if (dialog.run(handle()) && handle() != nullptr) print();
}

void CompareWindow::sayNoPrinter() { showMessage(handle(), TextId::noPrinter, MB_OK | MB_ICONERROR); }

void CompareWindow::setUpPage() {
  PageSetupDialog(application().settings, application().printer).run(handle());
}

}  // namespace merivane
