#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "base/file_system.h"

namespace merivane {

/// Files and folders that are not on any disk. Paths are plain names: a file needs no folder around it.
class MemoryFiles final : public FileSystem {
 public:
  static constexpr SystemError notFound = 2;
  static constexpr SystemError denied = 13;

  struct File {
    std::string contents;
    bool writable = true;
    bool tellsSize = true;  // a pipe does not
    int64_t modified = 0;   // counts the commits
  };

  std::map<std::string, File> files;
  std::set<std::string> folders;

  FileKind kind(const std::string& path) override;
  bool isWritable(const std::string& path) override;
  FileStamp stamp(const std::string& path) override;
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override;
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override;
};

/// Another file system of which one operation fails: the `failing`-th, from 0, of all that open, read,
/// create, write or commit.
class FailingFiles final : public FileSystem {
 public:
  FailingFiles(FileSystem& files, uint32_t failing, SystemError error)
      : files_(files), left_(failing), error_(error) {}

  /// Whether there have been enough operations for one to fail.
  bool hasFailed() const { return hasFailed_; }

  FileKind kind(const std::string& path) override { return files_.kind(path); }
  bool isWritable(const std::string& path) override { return files_.isWritable(path); }
  FileStamp stamp(const std::string& path) override { return files_.stamp(path); }
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override;
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override;

 private:
  class Input;
  class Output;

  /// 0, or the error when it is this operation's turn.
  SystemError next();

  FileSystem& files_;
  uint32_t left_;
  const SystemError error_;
  bool hasFailed_ = false;
};

}  // namespace merivane
