#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/file_system.h"
#include "base/texts.h"

namespace merivane {

/// What stands at a path; of a link, what it leads to.
struct FoundEntry {
  FileKind kind = FileKind::none;  // none: nothing is there
  bool isLink = false;
  std::string name;      // as its folder has it, which may differ from the path's end in case
  uint64_t size = 0;     // of a file, in bytes
  int64_t modified = 0;  // whole seconds since 1970

  bool exists() const { return kind != FileKind::none || isLink; }
};

/// A journal's file, for its writer alone as long as this lives.
class JournalFile {
 public:
  virtual ~JournalFile() = default;

  /// Writes at the end, and returns when that is on the disk. Returns 0 or the error.
  virtual SystemError append(std::string_view text) = 0;
};

/// What operations on files and folders need of the system besides FileSystem. All paths are absolute. What
/// changes something is for the thread that made it, what only looks for any.
class TreeOperations {
 public:
  virtual ~TreeOperations() = default;

  // The shell's: each shows its own progress, where the user can stop it, and tells itself what went wrong.

  /// Copies a file, or a folder with all below it, into an existing folder under its own name, with the
  /// attributes and times of files. Where there is one of that name a file is replaced, and of a folder
  /// what both have. A copy that fails may leave a part.
  virtual bool copyInto(const std::string& path, const std::string& folder, TextId title) = 0;

  /// Deletes a file, or a folder with all below it: into the recycle bin where there is one.
  virtual bool recycle(const std::string& path) = 0;

  // Single steps. Each returns 0 or the error and is all or nothing.

  virtual SystemError makeFolder(const std::string& path) = 0;
  virtual SystemError removeFolder(const std::string& path) = 0;  // an empty one; of a link, the link
  virtual SystemError removeFile(const std::string& path) = 0;    // read-only or not; of a link, the link

  /// Gives a file or folder another path on the same drive, where nothing is yet.
  virtual SystemError move(const std::string& from, const std::string& to) = 0;

  /// Gives a folder another one's times of creation, last access and last write and its attributes, as far as
  /// that can be done.
  virtual void copyFacts(const std::string& from, const std::string& to) = 0;

  // What is there.

  virtual FoundEntry find(const std::string& path) = 0;
  virtual bool hasRecycleBin(const std::string& path) = 0;
  virtual std::optional<uint64_t> freeSpace(const std::string& folder) = 0;  // in bytes, for this user

  /// The user's folder for temporary files; empty when there is none.
  virtual std::string temporaryFolder() = 0;
  virtual uint32_t random() = 0;

  // Journals. An error where somebody else has the file open.

  virtual SystemError createJournal(const std::string& path, std::unique_ptr<JournalFile>& file) = 0;
  virtual SystemError openJournal(const std::string& path, std::unique_ptr<JournalFile>& file,
                                  std::string& contents) = 0;
};

/// How long a path, in UTF-16 units, the shell takes.
constexpr size_t kMaxShellPath = 259;

}  // namespace merivane
