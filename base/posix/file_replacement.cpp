#include "base/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "base/posix/descriptor.h"

namespace merivane {
namespace {

/// Gives a file the extended attributes of another one, access control lists among them; false when one
/// cannot be given.
bool copyAttributes([[maybe_unused]] const std::string& from, [[maybe_unused]] int to) {
#ifdef __linux__
  // One that the folder gave it.
  ::fremovexattr(to, "system.posix_acl_access");
  const ssize_t room = ::listxattr(from.c_str(), nullptr, 0);
  if (room <= 0) return room == 0 || errno == ENOTSUP;
  std::vector<char> names(static_cast<size_t>(room));
  const ssize_t length = ::listxattr(from.c_str(), names.data(), names.size());
  if (length < 0) return false;
  std::vector<char> value(1 << 16);  // the longest there can be
  const char* const end = names.data() + length;
  for (const char* name = names.data(); name < end; name += std::string_view(name).size() + 1) {
    const ssize_t size = ::getxattr(from.c_str(), name, value.data(), value.size());
    if (size < 0 || ::fsetxattr(to, name, value.data(), static_cast<size_t>(size), 0) != 0) return false;
  }
#endif
  return true;
}

class PosixWrittenFile final : public WrittenFile {
 public:
  /// One that ends where it was written to, and is on a disk.
  enum Kind { plain, device };

  explicit PosixWrittenFile(Kind kind) : kind_(kind) {}

  SystemError open(const std::string& path, int flags, mode_t mode) {
    return file_.take(::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, mode)) ? 0 : lastError();
  }
  SystemError duplicate(int descriptor) {
    return file_.take(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)) ? 0 : lastError();
  }

  SystemError write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return lastError();
      bytes.remove_prefix(static_cast<size_t>(count));
    }
    return 0;
  }

  SystemError takeAfter(const std::string& path) override {
    struct stat there, here;
    if (::stat(path.c_str(), &there) != 0 || ::fstat(file_.get(), &here) != 0) return lastError();
    const bool same = there.st_uid == here.st_uid && there.st_gid == here.st_gid;
    if (!same && ::fchown(file_.get(), there.st_uid, there.st_gid) != 0) return lastError();
    if (!copyAttributes(path, file_.get())) return lastError();
    // Last, as a change of owner cuts it down.
    return ::fchmod(file_.get(), there.st_mode & 07777) == 0 ? 0 : lastError();
  }

  SystemError finish() override {
    if (kind_ == plain) {
      if (::ftruncate(file_.get(), ::lseek(file_.get(), 0, SEEK_CUR)) != 0) return lastError();
      // Some file systems cannot flush and say so; that is not a failed write.
      if (::fsync(file_.get()) != 0 && errno != EINVAL && errno != ENOTSUP) return lastError();
    }
    return file_.close() ? 0 : lastError();
  }

 private:
  Descriptor file_;
  const Kind kind_;
};

class PosixSteps final : public ReplacementSteps {
 public:
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    return systemFiles().open(path, file);
  }

  SystemError make(const std::string& path, bool secret, std::unique_ptr<WrittenFile>& file) override {
    return opened(path, O_CREAT | O_EXCL | O_NOFOLLOW, secret ? 0600 : 0666, file);
  }

  SystemError openInPlace(const std::string& path, std::unique_ptr<WrittenFile>& file) override {
    return opened(path, 0, 0, file);
  }

  SystemError replace(const std::string& target, const std::string& fresh, const std::string&) override {
    return move(fresh, target);
  }

  SystemError move(const std::string& from, const std::string& to) override {
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : lastError();
  }

  SystemError remove(const std::string& path) override {
    return ::unlink(path.c_str()) == 0 || errno == ENOENT ? 0 : lastError();
  }

  bool exists(const std::string& path) override {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
  }

  void wait(uint32_t milliseconds) override {
    timespec pause = {static_cast<time_t>(milliseconds / 1000),
                      static_cast<long>(milliseconds % 1000) * 1000000};
    ::nanosleep(&pause, nullptr);
  }

  std::string temporaryFolder() override {
    const char* const given = std::getenv("TMPDIR");
    return std::string(given != nullptr && *given == '/' ? given : "/tmp") + "/";
  }

  bool isTaken(SystemError error) const override { return error == EEXIST; }
  bool isMomentary(SystemError) const override { return false; }

 private:
  static SystemError opened(const std::string& path, int flags, mode_t mode,
                            std::unique_ptr<WrittenFile>& file) {
    // The object exists before the file, so that running out of memory leaves nothing behind.
    auto made = std::make_unique<PosixWrittenFile>(PosixWrittenFile::plain);
    const SystemError error = made->open(path, flags, mode);
    if (error == 0) file = std::move(made);
    return error;
  }
};

/// The number of the open file that a name such as "/dev/stdout" stands for; -1 for any other name. Opened by
/// that name it would be written from its start, and replaced it would be another file.
int namedDescriptor(const std::string& path) {
  if (path == "/dev/stdout") return STDOUT_FILENO;
  if (path == "/dev/stderr") return STDERR_FILENO;
  for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
    if (path.size() <= folder.size() || path.compare(0, folder.size(), folder) != 0) continue;
    const char* const digits = path.c_str() + folder.size();
    char* end = nullptr;
    const unsigned long number = std::strtoul(digits, &end, 10);
    if (*digits >= '0' && *digits <= '9' && *end == '\0' && number < 1 << 20) return static_cast<int>(number);
  }
  return -1;
}

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

/// What a symbolic link says, completed; empty for anything else.
std::string linkTarget(const std::string& path) {
  std::vector<char> text(4096);
  const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
  if (length <= 0 || static_cast<size_t>(length) == text.size()) return {};
  const std::string target(text.data(), static_cast<size_t>(length));
  return target[0] == '/' ? target : folderOf(path) + target;
}

SystemError openDirect(const std::string& path, int descriptor, std::unique_ptr<OutputFile>& file) {
  auto made = std::make_unique<PosixWrittenFile>(PosixWrittenFile::device);
  const SystemError error = descriptor >= 0 ? made->duplicate(descriptor) : made->open(path, 0, 0);
  if (error == 0) file = directOutput(std::move(made));
  return error;
}

}  // namespace

SystemError createSystemFile(const std::string& path, std::unique_ptr<OutputFile>& file) {
  ReplacementTarget target;
  target.path = systemFiles().absolute(path);
  int descriptor = namedDescriptor(target.path);
  struct stat status;
  const bool there = ::stat(target.path.c_str(), &status) == 0;
  if (!there && errno != ENOENT) return lastError();
  if (there && S_ISDIR(status.st_mode)) return EISDIR;
  // A link keeps pointing at the file it names, which may still have to be made.
  for (std::string next = linkTarget(target.path); descriptor < 0 && !next.empty(); next = linkTarget(next)) {
    target.path = next;
    descriptor = namedDescriptor(next);
  }
  if (descriptor >= 0 || (there && !S_ISREG(status.st_mode)))
    return openDirect(target.path, descriptor, file);
  if (there && ::access(path.c_str(), W_OK) != 0) return lastError();
  target.folder = folderOf(target.path);
  target.exists = there;
  target.inPlace = there && status.st_nlink > 1;
  static PosixSteps steps;
  return createReplacement(steps, std::move(target), file);
}

}  // namespace merivane
