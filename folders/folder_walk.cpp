#include "folders/folder_walk.h"

#include <algorithm>

#include "base/paths.h"
#include "folders/entry_comparison.h"
#include "folders/name_filter.h"

namespace merivane {
namespace {

class Walk {
 public:
  Walk(FileSystem& files, const std::string& top, int side, const FolderOptions& options,
       std::vector<FolderTrouble>& troubles)
      : files_(files), top_(top), side_(side), filter_(options), troubles_(troubles) {}

  void visitFolder(const std::string& name) {
    FolderListing listing;
    const SystemError error = files_.list(joinPath(top_, name), nullptr, listing);
    if (error != 0) add(name, reasonFor(error), error);
    for (uint32_t i = 0; i < listing.size(); ++i) {
      if (filter_.keeps(listing.name(i))) visit(joinPath(name, listing.name(i)), listing.entry(i));
    }
  }

  std::vector<std::string> found;

 private:
  void visit(const std::string& name, const ListedEntry& entry) {
    if (entry.kind == FileKind::file) {
      found.push_back(name);
    } else if (entry.kind != FileKind::folder) {
      add(name, entry.error != 0 ? NotCompared::brokenLink : NotCompared::special, entry.error);
    } else if (entry.isLink && leadsBack(name)) {
      add(name, NotCompared::loop, 0);
    } else {
      visitFolder(name);
    }
  }

  bool leadsBack(const std::string& name) {
    const FileIdentity target = files_.identity(joinPath(top_, name));
    for (std::string above = name; target.known() && !above.empty();) {
      const size_t end = above.rfind(kPathSeparator);
      above.resize(end == std::string::npos ? 0 : end);
      if (files_.identity(joinPath(top_, above)) == target) return true;
    }
    return false;
  }

  void add(const std::string& name, NotCompared reason, SystemError error) {
    troubles_.push_back({name, side_, reason, error});
  }

  FileSystem& files_;
  const std::string& top_;
  const int side_;
  const NameFilter filter_;
  std::vector<FolderTrouble>& troubles_;
};

}  // namespace

std::vector<std::string> listFilesOf(FileSystem& files, const std::string& top, const std::string& name,
                                     int side, const FolderOptions& options,
                                     std::vector<FolderTrouble>& troubles) {
  if (files.kind(joinPath(top, name)) != FileKind::folder) return {name};
  Walk walk(files, top, side, options, troubles);
  walk.visitFolder(name);
  std::sort(walk.found.begin(), walk.found.end());
  return std::move(walk.found);
}

}  // namespace merivane
