#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "base/file_system.h"
#include "base/paths.h"

namespace merivane {

/// A path with "/" as this platform has it.
inline std::string inFolder(std::string path) {
  std::replace(path.begin(), path.end(), '/', kPathSeparator);
  return path;
}

/// Files and folders that are not on any disk. Paths are plain names: a file needs no folder around it. What
/// is neither a file nor a folder is a pipe, which does not tell its size.
class MemoryFiles final : public FileSystem {
 public:
  static constexpr SystemError notFound = 2;
  static constexpr SystemError denied = 13;

  struct File {
    std::string contents;
    bool writable = true;
    FileKind kind = FileKind::file;
    int64_t modified = 0;   // counts the commits
    uint64_t toldSize = 0;  // what an opened file says its size is, if it is not 0
    bool hidden = false;
    bool link = false;
    SystemError error = 0;  // what opening or listing it comes to

    bool operator==(const File&) const = default;
  };

  std::map<std::string, File> files;
  std::function<void()> onRead;  // called before every read if there is one
  std::map<std::string, std::string>
      otherNames;  // of files, to the name in `files`; known to identity() alone

  std::string folder;  // the current one, with its backslash

  FileKind kind(const std::string& path) override {
    return files.contains(path) ? files[path].kind : FileKind::none;
  }
  bool isWritable(const std::string& path) override { return files.contains(path) && files[path].writable; }
  FileStamp stamp(const std::string& path) override {
    if (!files.contains(path)) return {};
    return {files[path].contents.size(), files[path].modified, true};
  }
  /// Each name is a file of its own, save those in `otherNames`, which are further names of one.
  FileIdentity identity(const std::string& path) override {
    const auto other = otherNames.find(path);
    const std::string& name = other == otherNames.end() ? path : other->second;
    if (!files.contains(name)) return {};
    return {1, static_cast<uint64_t>(std::distance(files.begin(), files.find(name)))};
  }
  /// Plain names are completed by the current folder.
  std::string absolute(const std::string& path) override {
    return path.empty() || path.find('\\') != std::string::npos ? path : folder + path;
  }
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    if (const SystemError error = next()) return error;
    if (!files.contains(path)) return notFound;
    if (files.at(path).error != 0) return files.at(path).error;
    if (kind(path) == FileKind::folder) return denied;
    ++opened;
    file = std::make_unique<Input>(*this, files[path]);
    return 0;
  }
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    if (const SystemError error = next()) return error;
    if (files.contains(path) && !isWritable(path)) return denied;
    file = std::make_unique<Output>(*this, path);
    return 0;
  }

  /// In the order of the names. What is only part of other names is no folder yet.
  SystemError list(const std::string& path, const AbortFlag*, FolderListing& listing) override {
    listing.clear();
    if (const SystemError error = next()) return error;
    const auto found = files.find(path);
    if (found == files.end() || found->second.kind != FileKind::folder) return notFound;
    if (found->second.error != 0) return found->second.error;
    const std::string start = path + kPathSeparator;
    for (auto at = files.lower_bound(start); at != files.end() && at->first.starts_with(start); ++at) {
      const std::string name = at->first.substr(start.size());
      if (name.find(kPathSeparator) != std::string::npos) continue;
      const File& file = at->second;
      ListedEntry entry;
      entry.kind = file.kind;
      if (file.kind == FileKind::file) entry.size = file.contents.size();
      entry.modified = file.modified;
      entry.isHidden = file.hidden;
      entry.isLink = file.link;
      entry.isReadOnly = !file.writable;
      listing.add(name, entry);
    }
    return 0;
  }

  std::atomic<int> opened = 0;  // how many files were opened so far

  /// One step fails, the `failing`-th from 0 of all that open, list, read, create, write or commit, or that
  /// ask next() because they change the files themselves.
  void failStep(uint32_t failing, SystemError error) {
    stepsLeft_ = failing;
    error_ = error;
  }
  /// Lets all steps succeed again, and tells whether one has failed.
  bool endFailing() { return std::exchange(error_, 0) == 0; }

  /// 0, or the error when it is this step's turn.
  SystemError next() {
    const std::lock_guard lock(mutex_);
    return error_ == 0 || stepsLeft_-- > 0 ? 0 : std::exchange(error_, 0);
  }

 private:
  class Input final : public InputFile {
   public:
    Input(MemoryFiles& owner, const File& file) : owner_(owner), file_(file) {}
    SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
      got = 0;
      if (owner_.onRead) owner_.onRead();
      if (const SystemError error = owner_.next()) return error;
      got = static_cast<uint32_t>(file_.contents.copy(bytes, wanted, at_));
      at_ += got;
      return 0;
    }
    uint64_t size() const override {
      if (file_.toldSize != 0) return file_.toldSize;
      return file_.kind == FileKind::file ? file_.contents.size() : 0;
    }

   private:
    MemoryFiles& owner_;
    const File file_;
    size_t at_ = 0;
  };

  class Output final : public OutputFile {
   public:
    Output(MemoryFiles& owner, std::string path) : owner_(owner), path_(std::move(path)) {}
    SystemError write(std::string_view bytes) override {
      if (const SystemError error = owner_.next()) return error;
      contents_ += bytes;
      return 0;
    }
    SystemError commit() override {
      if (const SystemError error = owner_.next()) return error;
      File& file = owner_.files[path_];
      file.contents.swap(contents_);
      ++file.modified;
      return 0;
    }

   private:
    MemoryFiles& owner_;
    const std::string path_;
    std::string contents_;
  };

  std::mutex mutex_;
  uint32_t stepsLeft_ = 0;
  SystemError error_ = 0;  // while a step is still to fail
};

/// Runs `operation` over and over, each time with the next of its steps failing, until it gets by without
/// that one; `check` looks at what each failing run returned. Returns how many steps there were.
template <typename Operation, typename Check>
uint32_t failEachStep(MemoryFiles& files, SystemError error, Operation operation, Check check) {
  for (uint32_t failing = 0;; ++failing) {
    files.failStep(failing, error);
    const auto returned = operation();
    if (!files.endFailing()) return failing;
    check(returned);
  }
}

}  // namespace merivane
