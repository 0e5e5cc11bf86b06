#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "shell/history_list.h"

namespace merivane {

/// What a box puts into itself while a name is typed: an entry of its history, with the characters after the
/// typed ones selected so that typing on replaces them. They are counted as the edit field does, in UTF-16.
struct Completion {
  int32_t entry = 0;  // index into the history
  size_t selectionBegin = 0;
  size_t selectionEnd = 0;

  bool operator==(const Completion&) const = default;
};

/// When a name box completes. A completed tail that the user deletes must not come back at once, so nothing
/// is completed from a deletion to the next other key.
class NameCompletion {
 public:
  /// Every key before the edit field acts on it; `deletes` for Delete and Backspace.
  void onKey(bool deletes) { lastEditWasDeletion_ = deletes; }

  /// Text is cut, cleared or given back otherwise than by a key.
  void onCut() { lastEditWasDeletion_ = true; }

  /// The edit text became `typed`. Returns none to leave it as it is.
  std::optional<Completion> onEdit(std::string_view typed, const HistoryList& history) const;

 private:
  bool lastEditWasDeletion_ = false;
};

/// Returns a name as it is meant: without the blanks at its ends, and without the quotes round it that
/// copying a path as text leaves.
std::string meantName(std::string_view typed);

/// What may be dropped on a name box; bits.
enum DropKinds : uint32_t { kDropFiles = 1, kDropFolders = 2 };

bool acceptsDrop(FileKind item, uint32_t dropKinds);

/// Returns the folder above a path, with a backslash at its end; none where there is no higher one, as for a
/// drive, a share or a plain name.
std::optional<std::string> upOneFolder(std::string_view path);

/// The folders that two files lie in, without a separator at the end unless it is a drive's; none where one
/// of the names has no folder.
std::optional<std::array<std::string, 2>> parentFolders(const std::string (&files)[2]);

/// Where a file dialog that is asked for from a name begins.
struct BrowseStart {
  std::string folder;  // absolute; empty: wherever the system begins
  std::string file;    // its name in there, or empty

  bool operator==(const BrowseStart&) const = default;
};

/// In the folder that the name is of, or the nearest one above it that is there; at the file.
BrowseStart browseStart(FileSystem& files, const std::string& name);

/// The name of the value that keeps a box's last text, and the base names of each window's two boxes.
std::string boxTextKey(std::string_view baseName);
inline constexpr const char* kFileBoxNames[2] = {"LeftFile", "RightFile"};
inline constexpr const char* kFolderBoxNames[2] = {"LeftFolder", "RightFolder"};

}  // namespace merivane
