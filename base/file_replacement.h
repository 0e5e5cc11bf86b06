#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/file_system.h"

namespace merivane {

/// A file that is being written, from its start on. Closes itself.
class WrittenFile {
 public:
  virtual ~WrittenFile() = default;

  virtual SystemError write(std::string_view bytes) = 0;

  /// Gives the file the owner, rights and extended attributes of another one, as far as
  /// ReplacementSteps::replace() does not do that.
  virtual SystemError takeAfter(const std::string& path) = 0;

  /// Ends the file after what was written, flushes it to the disk and closes it.
  virtual SystemError finish() = 0;
};

/// The steps that replacing a file's contents is made of, each thin over the system. Each returns 0 or the
/// error; paths are absolute.
class ReplacementSteps {
 public:
  virtual ~ReplacementSteps() = default;

  virtual SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) = 0;

  /// Makes a file; isTaken() is the error when the name has one already. A secret one is nobody else's to
  /// read.
  virtual SystemError make(const std::string& path, bool secret, std::unique_ptr<WrittenFile>& file) = 0;

  /// Opens a file to write over its contents, which are all there until then.
  virtual SystemError openInPlace(const std::string& path, std::unique_ptr<WrittenFile>& file) = 0;

  /// Puts `fresh` in the place of `target`. A system that does this in two steps calls the old file `spare`
  /// meanwhile. After a failure each of the three may be there or not.
  virtual SystemError replace(const std::string& target, const std::string& fresh,
                              const std::string& spare) = 0;

  virtual SystemError move(const std::string& from, const std::string& to) = 0;

  /// A file that is not there counts as removed.
  virtual SystemError remove(const std::string& path) = 0;

  virtual bool exists(const std::string& path) = 0;
  virtual void wait(uint32_t milliseconds) = 0;

  /// Where anyone may make files, with a separator at its end; empty when there is no such folder.
  virtual std::string temporaryFolder() = 0;

  virtual bool isTaken(SystemError error) const = 0;

  /// Whether an error tends to go away by itself: somebody else looks at the file just now.
  virtual bool isMomentary(SystemError error) const = 0;
};

/// The file whose contents are to be replaced, links followed.
struct ReplacementTarget {
  std::string path;      // absolute
  std::string folder;    // it is in, with a separator at its end
  bool exists = false;   // and is a file that may be written
  bool inPlace = false;  // it would not stay the same file when another one took its name
};

/// How long a step that fails for a moment is tried again.
constexpr uint32_t kPatience = 2000;  // milliseconds

/// Starts new contents for a file. They are collected in a file beside it, which takes its place on commit()
/// and leaves it its rights. Where the folder's or the volume's rights or the target do not allow that, the
/// contents are written over the old ones, of which a copy is kept until that is done.
///
/// A commit() that fails leaves the old contents under the old name. If even that cannot be had, the error
/// tells in words in which files the new and the old contents are; these stay.
SystemError createReplacement(ReplacementSteps& steps, ReplacementTarget target,
                              std::unique_ptr<OutputFile>& file);

/// The same for what has no earlier contents, as a device: `file` is written to at once.
std::unique_ptr<OutputFile> directOutput(std::unique_ptr<WrittenFile> file);

/// FileSystem::create() of the computer's own files.
SystemError createSystemFile(const std::string& path, std::unique_ptr<OutputFile>& file);

}  // namespace merivane
