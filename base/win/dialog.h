#pragma once

#include "base/win/gdi.h"
#include "base/win/window.h"

namespace merivane {

/// A dialog of the resources together with its object; the promises of Window hold for it too. onMessage()
/// returns, as a dialog procedure does, whether it handled the message.
class Dialog : public Window {
 protected:
  /// Opens it without a message loop of its own. Returns false when it cannot be created.
  bool open(int resource, HWND owner);

  /// Opens it and handles its messages until EndDialog(). Returns what that was given, or 0 when the dialog
  /// cannot be created.
  INT_PTR run(int resource, HWND owner);

  /// Moves it over the middle of its owner; of the work area where it has none or a minimized one.
  void centre();

  /// A larger version of its font.
  Font largerFont(int percent) const;

  /// A rectangle of the dialog's own units in pixels.
  RECT inPixels(RECT units) const;

  /// Returns a value for a message, where the procedure only says that it was handled.
  BOOL returns(LRESULT result) const;

 private:
  static INT_PTR CALLBACK dialogProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
};

}  // namespace merivane
