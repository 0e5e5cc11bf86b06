#include "cli/compared_files.h"

#include <new>
#include <utility>

namespace merivane {
namespace {

bool isStandardInput(const std::string& path) { return path == "-"; }

/// Reads another file, which may be its own, and notes its line ends where `lineEnds` is not null.
class Reader final : public InputFile {
 public:
  Reader(std::unique_ptr<InputFile> own, InputFile& from, LineEndRecord* lineEnds)
      : own_(std::move(own)), from_(from), lineEnds_(lineEnds) {}

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    const SystemError error = from_.read(bytes, wanted, got);
    if (error != 0 || lineEnds_ == nullptr) return error;
    try {
      lineEnds_->note({bytes, got});
      return 0;
    } catch (const std::bad_alloc&) {
      return notEnoughStorage();
    }
  }

  uint64_t size() const override { return from_.size(); }

 private:
  std::unique_ptr<InputFile> own_;
  InputFile& from_;
  LineEndRecord* lineEnds_;
};

}  // namespace

FileKind ComparedFiles::kind(const std::string& path) {
  return isStandardInput(path) ? FileKind::other : files_.kind(path);
}

bool ComparedFiles::isWritable(const std::string& path) {
  return !isStandardInput(path) && files_.isWritable(path);
}

FileStamp ComparedFiles::stamp(const std::string& path) {
  return isStandardInput(path) ? FileStamp() : files_.stamp(path);
}

FileIdentity ComparedFiles::identity(const std::string& path) {
  return isStandardInput(path) ? FileIdentity() : files_.identity(path);
}

std::string ComparedFiles::absolute(const std::string& path) {
  return isStandardInput(path) ? path : files_.absolute(path);
}

SystemError ComparedFiles::open(const std::string& path, std::unique_ptr<InputFile>& file) {
  std::unique_ptr<InputFile> own;
  if (!isStandardInput(path)) {
    const SystemError error = files_.open(path, own);
    if (error != 0) return error;
  }
  InputFile& from = own ? *own : standardInput_;
  LineEndRecord* const lineEnds = notesLineEnds_ && opened_ < 2 ? &lineEnds_[opened_] : nullptr;
  ++opened_;
  file = std::make_unique<Reader>(std::move(own), from, lineEnds);
  return 0;
}

SystemError ComparedFiles::create(const std::string& path, std::unique_ptr<OutputFile>& file) {
  return files_.create(path, file);
}

SystemError ComparedFiles::list(const std::string& path, const AbortFlag* abort, FolderListing& listing) {
  return files_.list(path, abort, listing);
}

}  // namespace merivane
