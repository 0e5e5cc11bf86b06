#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/file_system.h"

namespace merivane {

/// The files of another system; `watch` is told each path before it is opened and after it was listed.
class WatchedFiles final : public FileSystem {
 public:
  WatchedFiles(FileSystem& files, std::function<void(const std::string&)> watch)
      : files_(files), watch_(std::move(watch)) {}

  FileKind kind(const std::string& path) override { return files_.kind(path); }
  bool isWritable(const std::string& path) override { return files_.isWritable(path); }
  FileStamp stamp(const std::string& path) override { return files_.stamp(path); }
  FileIdentity identity(const std::string& path) override { return files_.identity(path); }
  std::string absolute(const std::string& path) override { return files_.absolute(path); }
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    watch_(path);
    return files_.open(path, file);
  }
  SystemError openListed(const std::string& path, std::unique_ptr<InputFile>& file) override {
    watch_(path);
    return files_.openListed(path, file);
  }
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    return files_.create(path, file);
  }
  SystemError list(const std::string& path, const AbortFlag* abort, FolderListing& listing) override {
    const SystemError error = files_.list(path, abort, listing);
    watch_(path);
    return error;
  }

 private:
  FileSystem& files_;
  const std::function<void(const std::string&)> watch_;
};

}  // namespace merivane
