#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "folders/folder_options.h"

namespace merivane {

/// The patterns of a filter text: its pieces between semicolons without the white space around them; empty
/// pieces are none.
std::vector<std::string> parseFilter(std::string_view text);

/// Which entries of every folder take part in a comparison, by their names alone; files and folders alike. An
/// include filter beats an exclude filter; without either all do.
class NameFilter {
 public:
  explicit NameFilter(const FolderOptions& options);

  bool keepsAll() const { return !includes_ && patterns_.empty(); }
  bool keeps(std::string_view name) const;

 private:
  bool includes_;
  bool caseSensitive_;
  std::vector<std::string> patterns_;
};

}  // namespace merivane
