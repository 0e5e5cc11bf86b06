#pragma once

#include <cstdint>
#include <string_view>

#include "base/byte_array.h"
#include "display/characters.h"

namespace merivane {

/// One side's whole text as bytes, with "\n" ending each line: a gap buffer, so that edits
/// near each other cost no more than their own length. It knows nothing of lines.
///
/// Positions run from 0 to size(). The text at a position lies in storage before the gap, or `gapSize`
/// further on after it; storage is always exactly text and gap. An operation that returns false ran out of
/// memory, or of 32-bit positions, and changed nothing; telling the user is the caller's.
class TextBuffer {
 public:
  /// The gap that is made where one is needed; a share of a long text, so that a run of edits moves the text
  /// after it seldom.
  static constexpr uint32_t kGapQuantum = 2048;
  static constexpr uint32_t kGapShare = 32;

  TextBuffer() { clear(); }

  /// No text, and a gap of one quantum. Without memory even for that, no gap until the first insertion.
  void clear();

  /// Takes over a loaded text as it is, without copying it.
  void take(ByteArray&& text);

  /// Becomes a byte-for-byte copy of `other`, gap included.
  bool copyFrom(const TextBuffer& other);

  /// Makes sure that the next replacement can insert `n` bytes.
  bool reserve(uint32_t n);

  /// Puts bytes in the place of the `removed` ones at `pos`. Cannot fail, as reserve() has made room.
  void replace(uint32_t pos, uint32_t removed, std::string_view bytes);

  char charAt(uint32_t i) const { return storage_.data()[i < gapStart_ ? i : i + gapSize_]; }
  char charBefore(uint32_t i) const { return charAt(i - 1); }

  bool atEnd(uint32_t i) const { return i >= length_; }
  uint32_t size() const { return length_; }

  /// The text of [a, b) as it lies in storage: two views, the second empty unless the gap is in between.
  /// They hold until the next change.
  SplitText stretch(uint32_t a, uint32_t b) const;

  /// The text of [a, b) in one view, for which the gap moves aside when it has to. Holds until the next
  /// change or view.
  std::string_view view(uint32_t a, uint32_t b);

  /// Copies the text of [a, b).
  bool extract(uint32_t a, uint32_t b, ByteArray& copy) const;

 private:
  uint32_t quantum() const;
  void moveGap(uint32_t to);
  bool resizeGap(uint64_t size);

  ByteArray storage_;
  uint32_t length_ = 0;
  uint32_t gapStart_ = 0;
  uint32_t gapSize_ = 0;
};

}  // namespace merivane
