#include "operations/tree_size.h"

#include <algorithm>
#include <map>

#include "base/message_format.h"
#include "base/names.h"
#include "base/paths.h"
#include "base/utf16.h"

namespace merivane {
namespace {

class Measuring {
 public:
  Measuring(FileSystem& files, TreeSize& size, const AbortFlag* abort, FolderProgress* progress)
      : files_(files), size_(size), abort_(abort), progress_(progress) {}

  std::optional<Refusal> entry(const std::string& path, std::string_view name, FileKind kind, bool isLink,
                               uint64_t bytes, size_t above) {
    const size_t length = above + pathLength(name);
    size_.longest = std::max(size_.longest, length);
    if (isLink) return Refusal{TextId::refusedLink, path};
    if (!isTakenLiterally(name)) return Refusal{TextId::refusedName, path};
    switch (kind) {
      case FileKind::file:
        ++size_.files;
        size_.bytes += bytes;
        if (progress_ != nullptr) progress_->addBytes(bytes);
        return std::nullopt;
      case FileKind::folder:
        ++size_.folders;
        return below(path, length + 1);
      case FileKind::none:
      case FileKind::other:
        break;
    }
    return Refusal{TextId::refusedSpecial, path};
  }

 private:
  std::optional<Refusal> below(const std::string& folder, size_t above) {
    FolderListing listing;
    if (progress_ != nullptr) progress_->enter(folder);
    if (files_.list(folder, abort_, listing) != 0) return Refusal{TextId::refusedUnreadable, folder};
    if (progress_ != nullptr) progress_->addEntries(listing.size());
    for (uint32_t i = 0; i < listing.size() && !isRaised(abort_); ++i) {
      const ListedEntry& found = listing.entry(i);
      const std::string path = joinPath(folder, listing.name(i));
      if (found.error != 0 && !found.isLink) return Refusal{TextId::refusedUnreadable, path};
      auto refusal = entry(path, listing.name(i), found.kind, found.isLink, found.size, above);
      if (refusal) return refusal;
    }
    return std::nullopt;
  }

  FileSystem& files_;
  TreeSize& size_;
  const AbortFlag* const abort_;
  FolderProgress* const progress_;
};

bool isSameFile(const ListedEntry& a, const ListedEntry& b) {
  constexpr int64_t coarsest = 2;  // seconds
  const int64_t apart = a.modified < b.modified ? b.modified - a.modified : a.modified - b.modified;
  return a.size == b.size && apart <= coarsest;
}

bool hasAllOf(FileSystem& files, const std::string& original, const std::string& copy) {
  FolderListing listings[2];
  if (files.list(original, nullptr, listings[0]) != 0 || files.list(copy, nullptr, listings[1]) != 0) {
    return false;
  }
  std::map<std::string_view, uint32_t> copies;
  for (uint32_t i = 0; i < listings[1].size(); ++i) copies.emplace(listings[1].name(i), i);
  for (uint32_t i = 0; i < listings[0].size(); ++i) {
    const ListedEntry& entry = listings[0].entry(i);
    const auto found = copies.find(listings[0].name(i));
    if (found == copies.end() || listings[1].entry(found->second).kind != entry.kind) return false;
    if (entry.kind == FileKind::folder) {
      const std::string name(found->first);
      if (!hasAllOf(files, joinPath(original, name), joinPath(copy, name))) return false;
    } else if (!isSameFile(entry, listings[1].entry(found->second))) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string Refusal::message() const { return formatMessage(reason, {path}); }

TreeSize& TreeSize::operator+=(const TreeSize& other) {
  files += other.files;
  folders += other.folders;
  bytes += other.bytes;
  longest = std::max(longest, other.longest);
  return *this;
}

bool isTakenLiterally(std::string_view name) {
  if (name.empty() || name.back() == ' ' || name.back() == '.') return false;
  for (const char c : name) {
    if (static_cast<unsigned char>(c) < ' ' || std::string_view("?*<>|\":/").find(c) != std::string::npos) {
      return false;
    }
  }
  std::string_view start = name.substr(0, name.find('.'));
  while (!start.empty() && start.back() == ' ') start.remove_suffix(1);
  for (const std::string_view device : {"con", "prn", "aux", "nul", "conin$", "conout$"}) {
    if (equalNames(start, device, false)) return false;
  }
  const std::string_view port = start.substr(0, 3);
  const bool numbered =
      start.size() > 3 && (equalNames(port, "com", false) || equalNames(port, "lpt", false));
  // The digits above 1, 2 and 3 count too: two bytes each in UTF-8.
  return !numbered || (start.size() == 4 ? start[3] < '0' || start[3] > '9'
                                         : start != std::string(port) + "\xC2\xB9" &&
                                               start != std::string(port) + "\xC2\xB2" &&
                                               start != std::string(port) + "\xC2\xB3");
}

std::string folderOf(const std::string& path) {
  const size_t end = path.rfind(kPathSeparator);
  if (end == std::string::npos || end + 1 == path.size()) return {};
  const bool isTop = end == 0 || path[end - 1] == ':';
  return path.substr(0, isTop ? end + 1 : end);
}

std::string nameOf(const std::string& path) { return path.substr(path.rfind(kPathSeparator) + 1); }

std::string folded(std::string path) {
  for (char& c : path) c = lowerCase(c);
  return path;
}

size_t pathLength(std::string_view path) {
  // What is no character is a unit of its own.
  return utf16FromUtf8<char16_t>(path).size();
}

std::optional<Refusal> measureTree(FileSystem& files, TreeOperations& trees, const std::string& path,
                                   TreeSize& size, const AbortFlag* abort, FolderProgress* progress) {
  const FoundEntry found = trees.find(path);
  if (!found.exists()) return Refusal{TextId::refusedMissing, path};
  return Measuring(files, size, abort, progress)
      .entry(path, found.name, found.kind, found.isLink, found.size, 0);
}

bool isCopied(FileSystem& files, TreeOperations& trees, const std::string& original,
              const std::string& copy) {
  const FoundEntry entries[2] = {trees.find(original), trees.find(copy)};
  if (entries[0].kind != entries[1].kind) return false;
  if (entries[0].kind == FileKind::folder) return hasAllOf(files, original, copy);
  ListedEntry facts[2];
  for (const int i : {0, 1}) {
    facts[i].size = entries[i].size;
    facts[i].modified = entries[i].modified;
  }
  return isSameFile(facts[0], facts[1]);
}

bool copyFolderFacts(FileSystem& files, TreeOperations& trees, const std::string& original,
                     const std::string& copy) {
  FolderListing listing;
  if (files.list(original, nullptr, listing) != 0) return false;
  for (uint32_t i = 0; i < listing.size(); ++i) {
    const std::string name(listing.name(i));
    if (listing.entry(i).kind != FileKind::folder || listing.entry(i).isLink) continue;
    if (!copyFolderFacts(files, trees, joinPath(original, name), joinPath(copy, name))) return false;
  }
  // Last, as what is done below may count as a change.
  trees.copyFacts(original, copy);
  return true;
}

SystemError removeTree(FileSystem& files, TreeOperations& trees, const std::string& path) {
  const FoundEntry found = trees.find(path);
  if (!found.exists()) return 0;
  if (found.kind != FileKind::folder) return trees.removeFile(path);
  if (!found.isLink) {
    FolderListing listing;
    if (const SystemError error = files.list(path, nullptr, listing)) return error;
    for (uint32_t i = 0; i < listing.size(); ++i) {
      if (!isTakenLiterally(listing.name(i))) return errorInWords(text(TextId::notTakenLiterally));
      if (const SystemError error = removeTree(files, trees, joinPath(path, listing.name(i)))) return error;
    }
  }
  return trees.removeFolder(path);
}

}  // namespace merivane
