#pragma once

#include <memory>
#include <string>

#include "base/file_system.h"
#include "output/file_bytes.h"

namespace merivane {

/// A file system for one loadDocuments(): another one, in which "-" is standard input. On request it notes
/// each file's line ends while they are read, so that a patch is made of the very bytes that were compared,
/// also when the file is a pipe or changes meanwhile.
class ComparedFiles final : public FileSystem {
 public:
  ComparedFiles(FileSystem& files, InputFile& standardInput, bool notesLineEnds)
      : files_(files), standardInput_(standardInput), notesLineEnds_(notesLineEnds) {}

  FileKind kind(const std::string& path) override;
  bool isWritable(const std::string& path) override;
  FileStamp stamp(const std::string& path) override;
  FileIdentity identity(const std::string& path) override;
  std::string absolute(const std::string& path) override;
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override;
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override;
  SystemError list(const std::string& path, const AbortFlag* abort, FolderListing& listing) override;

  /// The line ends of each side, the left one being the file that was opened first; empty unless noted.
  using LineEnds = LineEndRecord[2];
  const LineEnds& lineEnds() const { return lineEnds_; }

 private:
  FileSystem& files_;
  InputFile& standardInput_;
  const bool notesLineEnds_;
  int opened_ = 0;
  LineEnds lineEnds_;
};

}  // namespace merivane
