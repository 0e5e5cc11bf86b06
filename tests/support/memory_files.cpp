#include "tests/support/memory_files.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace merivane {
namespace {

class MemoryInput final : public InputFile {
 public:
  explicit MemoryInput(const MemoryFiles::File& file) : file_(file) {}

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    got = static_cast<uint32_t>(std::min<size_t>(wanted, file_.contents.size() - at_));
    std::memcpy(bytes, file_.contents.data() + at_, got);
    at_ += got;
    return 0;
  }

  uint64_t size() const override { return file_.tellsSize ? file_.contents.size() : 0; }

 private:
  const MemoryFiles::File file_;
  size_t at_ = 0;
};

class MemoryOutput final : public OutputFile {
 public:
  MemoryOutput(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  SystemError write(std::string_view bytes) override {
    contents_ += bytes;
    return 0;
  }

  SystemError commit() override {
    MemoryFiles::File& file = files_.files[path_];
    file.contents.swap(contents_);
    ++file.modified;
    return 0;
  }

 private:
  MemoryFiles& files_;
  const std::string path_;
  std::string contents_;
};

}  // namespace

FileKind MemoryFiles::kind(const std::string& path) {
  if (folders.contains(path)) return FileKind::folder;
  return files.contains(path) ? FileKind::file : FileKind::none;
}

bool MemoryFiles::isWritable(const std::string& path) {
  const auto found = files.find(path);
  return found != files.end() && found->second.writable;
}

FileStamp MemoryFiles::stamp(const std::string& path) {
  const auto found = files.find(path);
  if (found == files.end()) return {};
  return {found->second.contents.size(), found->second.modified, true};
}

SystemError MemoryFiles::open(const std::string& path, std::unique_ptr<InputFile>& file) {
  if (folders.contains(path)) return denied;
  const auto found = files.find(path);
  if (found == files.end()) return notFound;
  file = std::make_unique<MemoryInput>(found->second);
  return 0;
}

SystemError MemoryFiles::create(const std::string& path, std::unique_ptr<OutputFile>& file) {
  if (folders.contains(path) || (files.contains(path) && !isWritable(path))) return denied;
  file = std::make_unique<MemoryOutput>(*this, path);
  return 0;
}

class FailingFiles::Input final : public InputFile {
 public:
  Input(FailingFiles& owner, std::unique_ptr<InputFile> file) : owner_(owner), file_(std::move(file)) {}

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    got = 0;
    const SystemError error = owner_.next();
    return error != 0 ? error : file_->read(bytes, wanted, got);
  }

  uint64_t size() const override { return file_->size(); }

 private:
  FailingFiles& owner_;
  const std::unique_ptr<InputFile> file_;
};

class FailingFiles::Output final : public OutputFile {
 public:
  Output(FailingFiles& owner, std::unique_ptr<OutputFile> file) : owner_(owner), file_(std::move(file)) {}

  SystemError write(std::string_view bytes) override {
    const SystemError error = owner_.next();
    return error != 0 ? error : file_->write(bytes);
  }

  SystemError commit() override {
    const SystemError error = owner_.next();
    return error != 0 ? error : file_->commit();
  }

 private:
  FailingFiles& owner_;
  const std::unique_ptr<OutputFile> file_;
};

SystemError FailingFiles::open(const std::string& path, std::unique_ptr<InputFile>& file) {
  std::unique_ptr<InputFile> opened;
  SystemError error = next();
  if (error == 0) error = files_.open(path, opened);
  if (error == 0) file = std::make_unique<Input>(*this, std::move(opened));
  return error;
}

SystemError FailingFiles::create(const std::string& path, std::unique_ptr<OutputFile>& file) {
  std::unique_ptr<OutputFile> created;
  SystemError error = next();
  if (error == 0) error = files_.create(path, created);
  if (error == 0) file = std::make_unique<Output>(*this, std::move(created));
  return error;
}

SystemError FailingFiles::next() {
  if (hasFailed_ || left_-- > 0) return 0;
  hasFailed_ = true;
  return error_;
}

}  // namespace merivane
