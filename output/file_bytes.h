#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_array.h"
#include "base/result.h"
#include "engine/comparison.h"

namespace merivane {

/// The line ends of a file, noted while it is read: together with its text they give the file's bytes back. A
/// run of line ends of one kind takes 8 bytes.
class LineEndRecord {
 public:
  /// Notes the line ends in the file's next bytes. Throws std::bad_alloc.
  void note(std::string_view bytes);

  /// Turns the text that convertFromFile() made of the file, with the same `kind`, back into the file's
  /// bytes. False, and nothing changed, when they do not fit into memory.
  bool restore(LineEndKind kind, ByteArray& text) const;

  /// Whether that text has other bytes than the file.
  bool isConverted(LineEndKind kind) const;

  bool operator==(const LineEndRecord&) const = default;

 private:
  struct Run {
    LineEndKind kind;
    uint32_t count;
    bool operator==(const Run&) const = default;
  };

  void add(LineEndKind kind, uint32_t count);
  void takeLastBack();
  void restoreCrs(ByteArray& text) const;
  bool restoreCrLfs(ByteArray& text) const;

  std::vector<Run> runs_;  // neighbours differ
  bool endsInCr_ = false;  // which an LF may still follow
};

/// What two files of the same text differ in: "line ends", "encoding" or "line ends and encoding"; empty if
/// their texts differ, or nothing does.
std::string differenceBesidesText(const FileComparison& comparison, const LineEndRecord (&lineEnds)[2]);

/// Turns a comparison of two files' texts into one of their bytes, which a patch is made of: line ends other
/// than LF are part of the lines there, and a mark of the first one. A comparison without a difference is
/// left as it is. No side is UTF-16. Returns success, or outOfMemory, and then the comparison is of no use
/// any more.
Result compareFileBytes(const LineEndRecord (&lineEnds)[2], const CompareOptions& options,
                        FileComparison& comparison);

}  // namespace merivane
