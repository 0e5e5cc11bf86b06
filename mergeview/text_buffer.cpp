#include "mergeview/text_buffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace merivane {

void TextBuffer::clear() {
  storage_.clear();
  length_ = gapStart_ = gapSize_ = 0;
  if (storage_.allocate(kGapQuantum)) gapSize_ = kGapQuantum;
}

void TextBuffer::take(ByteArray&& text) {
  length_ = gapStart_ = text.size();
  gapSize_ = 0;
  storage_.clear();
  std::swap(storage_, text);
}

bool TextBuffer::copyFrom(const TextBuffer& other) {
  if (!storage_.assign(other.storage_.view())) return false;
  length_ = other.length_;
  gapStart_ = other.gapStart_;
  gapSize_ = other.gapSize_;
  return true;
}

bool TextBuffer::reserve(uint32_t n) { return gapSize_ >= n || resizeGap(uint64_t{n} + quantum()); }

void TextBuffer::replace(uint32_t pos, uint32_t removed, std::string_view bytes) {
  const auto n = static_cast<uint32_t>(bytes.size());
  moveGap(pos);
  if (n > 0) std::memcpy(storage_.data() + gapStart_, bytes.data(), n);
  gapStart_ += n;
  gapSize_ = gapSize_ - n + removed;
  length_ = length_ + n - removed;
  // Only in a long text, where that moves much, a gap may grow to twice its size before it shrinks.
  if (gapSize_ > (quantum() > kGapQuantum ? 2 * quantum() : kGapQuantum)) resizeGap(quantum());
}

SplitText TextBuffer::stretch(uint32_t a, uint32_t b) const {
  const char* const text = storage_.data();
  if (b <= gapStart_) return {{text + a, b - a}, {}};
  if (a >= gapStart_) return {{text + a + gapSize_, b - a}, {}};
  return {{text + a, gapStart_ - a}, {text + gapStart_ + gapSize_, b - gapStart_}};
}

std::string_view TextBuffer::view(uint32_t a, uint32_t b) {
  if (a < gapStart_ && gapStart_ < b) moveGap(gapStart_ - a < b - gapStart_ ? a : b);
  return stretch(a, b).head;
}

bool TextBuffer::extract(uint32_t a, uint32_t b, ByteArray& copy) const {
  if (!copy.allocate(b - a)) return false;
  const SplitText text = stretch(a, b);
  if (!text.head.empty()) std::memcpy(copy.data(), text.head.data(), text.head.size());
  if (!text.tail.empty()) std::memcpy(copy.data() + text.head.size(), text.tail.data(), text.tail.size());
  return true;
}

uint32_t TextBuffer::quantum() const { return std::max(kGapQuantum, length_ / kGapShare); }

void TextBuffer::moveGap(uint32_t to) {
  if (to == gapStart_) return;
  char* const text = storage_.data();
  if (to < gapStart_) {
    std::memmove(text + to + gapSize_, text + to, gapStart_ - to);
  } else {
    std::memmove(text + gapStart_, text + gapStart_ + gapSize_, to - gapStart_);
  }
  gapStart_ = to;
}

bool TextBuffer::resizeGap(uint64_t size) {
  const uint32_t after = length_ - gapStart_;
  if (size > gapSize_ && !storage_.resize(length_ + size)) return false;
  char* const gap = storage_.data() + gapStart_;
  if (after > 0) std::memmove(gap + size, gap + gapSize_, after);
  if (size < gapSize_) storage_.truncate(length_ + static_cast<uint32_t>(size));
  gapSize_ = static_cast<uint32_t>(size);
  return true;
}

}  // namespace merivane
