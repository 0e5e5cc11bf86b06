#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>

#include "shell/icon_drawing.h"

namespace merivane {

struct IconDeleter {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};
using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

/// The icons of a window's buttons, in the size that its resolution asks for.
class ButtonIcons {
 public:
  explicit ButtonIcons(int dpi);

  /// By their IconId; in colour, and greyed.
  HIMAGELIST list() const { return list_.get(); }
  HIMAGELIST greyedList() const { return greyedList_.get(); }

  /// One icon by itself.
  Icon icon(IconId icon) const {
    return Icon(ImageList_GetIcon(list_.get(), static_cast<int>(icon), ILD_NORMAL));
  }

 private:
  struct Destroy {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
  };
  std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, Destroy> list_;
  std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, Destroy> greyedList_;
};

}  // namespace merivane
