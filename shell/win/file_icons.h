#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

namespace merivane {

/// The icons of files and folders, as the system shows them, in the sizes of its large and small icons at one
/// resolution. They are asked for once a type, or once a file that carries its own. Belongs to the user
/// interface's thread.
class FileIcons {
 public:
  explicit FileIcons(int dpi);

  /// The icon of a file: of its own or of its type; -1 for a name without a type, or when there is none.
  int IconForFile(const std::string& path);

  /// An icon by the number that the shell has for it; -1 when it cannot be had.
  int StockIcon(int number);

  static constexpr int kDocument = 0;
  static constexpr int kClosedFolder = 3;

  HIMAGELIST smallIcons() const { return small_.get(); }
  int smallSize() const { return smallSize_; }  // in pixels

 private:
  struct Cached {
    std::string key;  // of a file
    int stock = -1;   // or the number of a stock icon
    int index = -1;
  };
  struct Destroy {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
  };
  using List = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, Destroy>;

  int lookUp(const std::string& path, const std::string& extension);
  int add(HICON large, HICON small);
  int extract(const std::string& location);
  int extract(const std::wstring& file, int number);

  int smallSize_;
  List large_;
  List small_;
  int genericFile_ = -1;  // the system's number of the icon for a file of no type
  std::vector<Cached> cache_;
};

}  // namespace merivane
