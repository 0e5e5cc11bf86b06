#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/names.h"
#include "base/paths.h"
#include "operations/tree_operations.h"
#include "operations/tree_size.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"

namespace merivane {

/// Copies and deletes among files in memory. Each file and folder is a step of theirs that may fail, as is
/// everything that changes them. What is neither asked to keep a time nor to bring it along gets a new one.
class MemoryTrees final : public TreeOperations {
 public:
  explicit MemoryTrees(MemoryFiles& files) : files_(files) {
    files_.files[temporaryFolder()].kind = FileKind::folder;
  }

  /// What the program's end is while it works.
  struct Killed {};

  bool ignoresCase = false;
  bool recyclesPartly = false;  // a deletion may stop midway
  bool hasBin = true;
  std::optional<uint64_t> room;
  std::map<std::string, MemoryFiles::File> bin;
  std::optional<uint32_t> killAt;  // from which change on the program is gone

  bool copyInto(const std::string& path, const std::string& folder, TextId) override {
    return copy(path, joinPath(folder, nameOf(path)));
  }

  bool recycle(const std::string& path) override {
    if (!recyclesPartly && change() != 0) return false;
    for (const std::string& each : below(path)) {
      if (recyclesPartly && change() != 0) return false;
      bin[each] = files_.files[each];
      files_.files.erase(each);
    }
    return true;
  }

  SystemError makeFolder(const std::string& path) override {
    if (const SystemError error = change()) return error;
    if (find(path).exists() || !find(folderOf(path)).exists()) return MemoryFiles::denied;
    files_.files[path].kind = FileKind::folder;
    files_.files[path].modified = ++now_;
    return 0;
  }
  SystemError removeFolder(const std::string& path) override {
    if (const SystemError error = change()) return error;
    if (find(path).kind != FileKind::folder || below(path).size() != 1) return MemoryFiles::denied;
    files_.files.erase(path);
    return 0;
  }
  SystemError removeFile(const std::string& path) override {
    if (const SystemError error = change()) return error;
    return files_.files.erase(path) == 1 ? 0 : MemoryFiles::notFound;
  }
  SystemError move(const std::string& from, const std::string& to) override {
    if (const SystemError error = change()) return error;
    if (!find(from).exists() || find(to).exists() || !find(folderOf(to)).exists()) return MemoryFiles::denied;
    for (const std::string& each : below(from)) {
      files_.files[to + each.substr(from.size())] = files_.files[each];
      files_.files.erase(each);
    }
    return 0;
  }
  void copyFacts(const std::string& from, const std::string& to) override {
    MemoryFiles::File& file = files_.files.at(to);
    const MemoryFiles::File& original = files_.files.at(from);
    file.modified = original.modified;
    file.hidden = original.hidden;
    file.writable = original.writable;
  }

  FoundEntry find(const std::string& path) override {
    auto found = files_.files.find(path);
    if (found == files_.files.end() && ignoresCase) {
      for (found = files_.files.begin(); found != files_.files.end(); ++found) {
        if (equalNames(found->first, path, false)) break;
      }
    }
    if (found == files_.files.end()) return {};
    const MemoryFiles::File& file = found->second;
    return {file.kind, file.link, nameOf(found->first), file.contents.size(), file.modified};
  }
  bool hasRecycleBin(const std::string&) override { return hasBin; }
  std::optional<uint64_t> freeSpace(const std::string&) override { return room; }
  std::string temporaryFolder() override { return "T"; }
  uint32_t random() override { return random_.below(100'000); }

  SystemError createJournal(const std::string& path, std::unique_ptr<JournalFile>& file) override {
    if (const SystemError error = change()) return error;
    files_.files[path] = {};
    file = std::make_unique<Open>(*this, path);
    return 0;
  }
  SystemError openJournal(const std::string& path, std::unique_ptr<JournalFile>& file,
                          std::string& contents) override {
    if (!files_.files.contains(path)) return MemoryFiles::notFound;
    if (open_.contains(path)) return MemoryFiles::denied;
    contents = files_.files[path].contents;
    file = std::make_unique<Open>(*this, path);
    return 0;
  }

  /// All that is at and below a path, with the path itself first.
  std::vector<std::string> below(const std::string& path) const {
    std::vector<std::string> found;
    for (const auto& [name, file] : files_.files) {
      if (name == path || name.starts_with(path + kPathSeparator)) found.push_back(name);
    }
    return found;
  }

 private:
  class Open final : public JournalFile {
   public:
    Open(MemoryTrees& owner, std::string path) : owner_(owner), path_(std::move(path)) {
      owner_.open_.insert(path_);
    }
    ~Open() override { owner_.open_.erase(path_); }
    SystemError append(std::string_view text) override {
      if (const SystemError error = owner_.change()) return error;
      owner_.files_.files[path_].contents += text;
      return 0;
    }

   private:
    MemoryTrees& owner_;
    const std::string path_;
  };

  SystemError change() {
    if (killAt && (*killAt)-- == 0) {
      killAt = 0;
      throw Killed();
    }
    return files_.next();
  }

  bool copy(const std::string& from, const std::string& to) {
    if (change() != 0) return false;
    MemoryFiles::File& made = files_.files[to];
    if (files_.files.at(from).kind != FileKind::folder) {
      made = files_.files.at(from);
    } else if (made.kind != FileKind::folder) {
      made.kind = FileKind::folder;
      made.modified = ++now_;
    }
    for (const std::string& each : below(from)) {
      if (folderOf(each) == from && !copy(each, joinPath(to, nameOf(each)))) return false;
    }
    return true;
  }

  MemoryFiles& files_;
  std::set<std::string> open_;
  int64_t now_ = 1'000'000;
  Random random_{1};
};

}  // namespace merivane
