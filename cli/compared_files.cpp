#include "cli/compared_files.h"

#include <cstring>
#include <utility>

namespace merivane {
namespace {

bool isStandardInput(const std::string& path) { return path == "-"; }

/// Reads another file, which may be its own, and keeps what it reads where `kept` is not null.
class Reader final : public InputFile {
 public:
  Reader(std::unique_ptr<InputFile> own, InputFile& from, ByteArray* kept)
      : own_(std::move(own)), from_(from), kept_(kept) {}

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    const SystemError error = from_.read(bytes, wanted, got);
    if (error != 0 || kept_ == nullptr || got == 0) return error;
    const uint32_t before = kept_->size();
    if (!kept_->resize(uint64_t{before} + got)) return notEnoughStorage();
    std::memcpy(kept_->data() + before, bytes, got);
    return 0;
  }

  uint64_t size() const override { return from_.size(); }

 private:
  std::unique_ptr<InputFile> own_;
  InputFile& from_;
  ByteArray* kept_;
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

SystemError ComparedFiles::open(const std::string& path, std::unique_ptr<InputFile>& file) {
  std::unique_ptr<InputFile> own;
  if (!isStandardInput(path)) {
    const SystemError error = files_.open(path, own);
    if (error != 0) return error;
  }
  InputFile& from = own ? *own : standardInput_;
  ByteArray* const kept = keepsBytes_ && opened_ < 2 ? &kept_[opened_] : nullptr;
  ++opened_;
  file = std::make_unique<Reader>(std::move(own), from, kept);
  return 0;
}

SystemError ComparedFiles::create(const std::string& path, std::unique_ptr<OutputFile>& file) {
  return files_.create(path, file);
}

}  // namespace merivane
