#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "engine/compare_options.h"

namespace merivane {

/// A text's lines. Line i holds the bytes [starts[i], starts[i + 1]), its LF included. No line comes after a
/// final LF, and an empty text has none.
///
/// Two lines count as equal if and only if their keys are. A key is a polynomial over the bytes of the line,
/// as far as they count under the options, and its LF: as signed values, to the base 127, modulo 2^32. So
/// different lines may have the same key; a last line without LF differs from the same line with one.
struct LineTable {
  std::vector<uint32_t> keys;
  std::vector<uint32_t> starts;  // one more than there are lines: the last is the end of the text
};

/// Makes the keys of a text that comes piece by piece, wherever a piece ends. Nothing of the text is held. A
/// copy goes on from where the text was.
class LineKeys {
 public:
  explicit LineKeys(const CompareOptions& options) : options_(options) {}

  /// Takes the next bytes and appends the key of every line that ends in them. Throws std::bad_alloc.
  void add(std::string_view piece, std::vector<uint32_t>& keys);
  /// Ends the text: appends the key of a last line without LF, if there is one. Throws std::bad_alloc.
  void end(std::vector<uint32_t>& keys);

 private:
  friend LineTable tableLines(std::string_view, const CompareOptions&, const AbortFlag*);

  template <typename Visit>
  void forEachLine(std::string_view piece, Visit visit);
  void addToLine(const char* readable, const char* from, const char* end);
  void addNormalised(const char* from, const char* end);
  uint32_t lineKey() const;
  void beginLine();

  CompareOptions options_;
  // Of the line that the text has come to:
  uint32_t key_ = 0;
  uint32_t keyBeforeRun_ = 0;
  bool inBlankRun_ = false;
  bool onlyBlanks_ = true;
  bool isEmpty_ = true;
};

/// Makes the table of a text of at most ByteArray::maxSize bytes. Memory: 8 bytes per line. Throws
/// std::bad_alloc. If the flag is raised meanwhile, the table is undefined; a null flag never aborts.
LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort = nullptr);

}  // namespace merivane
