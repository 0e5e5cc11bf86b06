#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/byte_array.h"
#include "base/file_system.h"

namespace merivane {

/// The two files of a comparison, for one loadDocuments(): another file system's, with "-" as standard input.
/// Where asked to it keeps each file's own bytes as they are read, so that what a patch is made of is what
/// was compared, also when the file is a pipe or changes meanwhile.
class ComparedFiles final : public FileSystem {
 public:
  ComparedFiles(FileSystem& files, InputFile& standardInput, bool keepsBytes)
      : files_(files), standardInput_(standardInput), keepsBytes_(keepsBytes) {}

  FileKind kind(const std::string& path) override;
  bool isWritable(const std::string& path) override;
  FileStamp stamp(const std::string& path) override;
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override;
  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override;

  /// What was read of a side, the left one being the file that was opened first; empty unless bytes are kept.
  std::string_view bytes(int side) const { return kept_[side].view(); }

 private:
  FileSystem& files_;
  InputFile& standardInput_;
  const bool keepsBytes_;
  int opened_ = 0;
  ByteArray kept_[2];
};

}  // namespace merivane
