#pragma once

#include <string_view>

#include "base/byte_array.h"
#include "engine/diff_model.h"

namespace merivane {

enum class Panes { left = 0, right = 1, both = 2 };

/// What the view needs of the window it is shown in. Nothing here calls back into the view.
class ViewHost {
 public:
  virtual ~ViewHost() = default;

  /// These rows look different now. They may reach beyond the visible ones.
  virtual void invalidateRows(RowRange rows, Panes panes) = 0;

  /// Everything may have changed: both panes, the summary bar, the status texts and the scroll bars.
  virtual void refreshAll() = 0;

  /// The panes show other rows or columns, or have other edges: repaint them, move the caret, and set the
  /// scroll bars and what else lies along them.
  virtual void panesMoved() = 0;

  /// How far one can scroll may have changed.
  virtual void updateScrollBars() = 0;

  /// The caret stands elsewhere or has the other shape, for overwriting: place it, tell the status bar and
  /// mark it in the summary bar.
  virtual void caretMoved() = 0;

  virtual void beep() = 0;

  /// Puts plain text, with CR LF line ends, on the clipboard. False when that fails, of which the host tells
  /// the user.
  virtual bool setClipboardText(std::string_view text) = 0;

  /// Fetches the clipboard's plain text. False when there is none, and when fetching it fails, of which the
  /// host tells the user.
  virtual bool clipboardText(ByteArray& text) = 0;

  /// An action was given up as there was no memory for it.
  virtual void reportOutOfMemory() = 0;
};

}  // namespace merivane
