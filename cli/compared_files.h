#pragma once

#include <memory>
#include <string>

#include "base/file_system.h"
#include "output/file_bytes.h"

namespace merivane {

/// The two files of a comparison, for one loadDocuments(): another file system's, with "-" as standard input.
/// Where asked to, notes each file's line ends as they are read, so that what a patch is made of is what was
/// compared, also when the file is a pipe or changes meanwhile.
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

  /// Each side's, the left one being the file that was opened first; empty unless they are noted.
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
