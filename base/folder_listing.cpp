#include "base/folder_listing.h"

#include <limits>
#include <new>

namespace merivane {

void FolderListing::add(std::string_view name, const ListedEntry& entry) {
  if (names_.size() + name.size() > std::numeric_limits<uint32_t>::max()) throw std::bad_alloc();
  names_ += name;
  begins_.push_back(static_cast<uint32_t>(names_.size()));
  entries_.push_back(entry);
}

void FolderListing::clear() {
  names_.clear();
  begins_.assign(1, 0);
  entries_.clear();
}

void FolderListing::fit() {
  names_.shrink_to_fit();
  begins_.shrink_to_fit();
  entries_.shrink_to_fit();
}

}  // namespace merivane
