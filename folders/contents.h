#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "base/byte_array.h"
#include "base/file_system.h"
#include "engine/compare_options.h"
#include "engine/line_keys.h"
#include "engine/text_document.h"
#include "folders/entry_comparison.h"
#include "folders/folder_progress.h"

namespace merivane {

/// Compares the contents of files, one pair after the other, with the room for their blocks kept in between.
/// Each file is opened once and read from its start on, no further than to the first difference that is
/// certain. What cannot be opened or read counts as equal and is marked. When the flag is raised the
/// state means nothing.
class ContentsComparison {
 public:
  ContentsComparison(FileSystem& files, const AbortFlag* abort, FolderProgress& progress)
      : files_(files), abort_(abort), progress_(progress) {}

  /// Byte for byte.
  void compareBytes(const std::string (&paths)[2], PairState& state);

  /// As texts, line by line under the options and without regard to the kind of line ends. Files with the
  /// same bytes are the same under all options; of others, those of which one is binary count as equal and
  /// are marked. Holds a block of each file, however long its lines are.
  void compareTexts(const std::string (&paths)[2], const CompareOptions& options, PairState& state);

 private:
  struct Side {
    std::unique_ptr<InputFile> file;
    ByteArray block;      // room for one
    uint32_t filled = 0;  // how many bytes of it count,
    uint32_t fresh = 0;   // and from which on they have not been looked at
    bool atEnd = false;

    std::string_view view() const { return {block.data(), filled}; }
    std::string_view wholeCharacters() const;
    void drop(size_t count);
  };

  bool open(const std::string (&paths)[2], PairState& state);
  bool read(PairState& state);
  bool readSide(int side, PairState& state);
  bool sameBytes() const;
  void compareLines(const LineKeys& before, PairState& state);
  bool readLines(int side, LineKeys& line, std::vector<uint32_t>& keys, PairState& state);

  FileSystem& files_;
  const AbortFlag* const abort_;
  FolderProgress& progress_;
  Side sides_[2];
  LineEndKind kinds_[2] = {};
  ByteArray lines_;
};

}  // namespace merivane
