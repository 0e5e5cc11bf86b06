#include "base/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace merivane {
namespace {

SystemError lastError() { return static_cast<SystemError>(errno); }

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return number_; }
  bool close() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_;
};

class PosixInputFile final : public InputFile {
 public:
  PosixInputFile(int descriptor, uint64_t size) : descriptor_(descriptor), size_(size) {}

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    // Above this a single read may be refused.
    constexpr uint32_t atOnce = 1u << 30;
    got = 0;
    while (got < wanted) {
      const ssize_t count = ::read(descriptor_.get(), bytes + got, std::min(wanted - got, atOnce));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return lastError();
      if (count == 0) break;
      got += static_cast<uint32_t>(count);
    }
    return 0;
  }

  uint64_t size() const override { return size_; }

 private:
  Descriptor descriptor_;
  uint64_t size_;
};

SystemError writeAll(int descriptor, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t count = ::write(descriptor, contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return lastError();
    contents.remove_prefix(static_cast<size_t>(count));
  }
  return 0;
}

class DeviceOutput final : public OutputFile {
 public:
  explicit DeviceOutput(int descriptor) : file_(descriptor) {}

  SystemError write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }
  SystemError commit() override { return file_.close() ? 0 : lastError(); }

 private:
  Descriptor file_;
};

class ReplacingOutput final : public OutputFile {
 public:
  ReplacingOutput(int descriptor, std::string beside, std::string target, mode_t mode)
      : file_(descriptor), beside_(std::move(beside)), target_(std::move(target)), mode_(mode) {}

  ~ReplacingOutput() override {
    if (!beside_.empty()) ::unlink(beside_.c_str());
  }

  SystemError write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

  SystemError commit() override {
    if (::fchmod(file_.get(), mode_) != 0) return lastError();
    // Some file systems cannot flush and say so; that is not a failed write.
    if (::fsync(file_.get()) != 0 && errno != EINVAL) return lastError();
    if (!file_.close()) return lastError();
    if (::rename(beside_.c_str(), target_.c_str()) != 0) return lastError();
    beside_.clear();
    return 0;
  }

 private:
  Descriptor file_;
  std::string beside_;
  std::string target_;
  mode_t mode_;
};

class PosixFileSystem final : public FileSystem {
 public:
  FileKind kind(const std::string& path) override {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return FileKind::none;
    if (S_ISREG(status.st_mode)) return FileKind::file;
    return S_ISDIR(status.st_mode) ? FileKind::folder : FileKind::other;
  }

  bool isWritable(const std::string& path) override { return ::access(path.c_str(), W_OK) == 0; }

  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return lastError();
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
      const SystemError error = S_ISDIR(status.st_mode) ? EISDIR : lastError();
      ::close(descriptor);
      return error;
    }
    const uint64_t size = S_ISREG(status.st_mode) ? static_cast<uint64_t>(status.st_size) : 0;
    file = std::make_unique<PosixInputFile>(descriptor, size);
    return 0;
  }

  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    struct stat status;
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) return EISDIR;
    if (exists && !S_ISREG(status.st_mode)) {
      const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
      if (descriptor < 0) return lastError();
      file = std::make_unique<DeviceOutput>(descriptor);
      return 0;
    }
    std::string target = path;
    mode_t mode = 0;
    if (exists) {
      if (::access(path.c_str(), W_OK) != 0) return lastError();
      mode = status.st_mode & 07777;
      // A link keeps pointing at the file it names; the file behind it is what is replaced.
      const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path.c_str(), nullptr), ::free);
      if (!resolved) return lastError();
      target = resolved.get();
    } else {
      const mode_t mask = ::umask(0);
      ::umask(mask);
      mode = 0666 & ~mask;
    }
    std::string beside = target + ".XXXXXX";
    const int descriptor = ::mkstemp(beside.data());
    if (descriptor < 0) return lastError();
    file = std::make_unique<ReplacingOutput>(descriptor, std::move(beside), std::move(target), mode);
    return 0;
  }
};

}  // namespace

FileSystem& systemFiles() {
  static PosixFileSystem files;
  return files;
}

SystemError notEnoughStorage() { return ENOMEM; }

std::string systemErrorText(SystemError error) { return std::strerror(static_cast<int>(error)); }

}  // namespace merivane
