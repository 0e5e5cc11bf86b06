#include "folders/contents.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "engine/line_keys.h"

namespace merivane {
namespace {

constexpr uint32_t kBlock = 1 << 17;
static_assert(kBlock >= kLineEndSampleSize && kBlock >= kBinarySampleSize);

/// The place after the last line end from `from` on; 0 for none there.
uint32_t endOfLines(std::string_view bytes, uint32_t from, LineEndKind kind) {
  const std::string_view fresh = bytes.substr(from);
  const size_t last = kind == LineEndKind::cr ? fresh.find_last_of("\r\n") : fresh.rfind('\n');
  return last == std::string_view::npos ? 0 : from + static_cast<uint32_t>(last + 1);
}

}  // namespace

void ContentsComparison::Side::drop(uint32_t count) {
  // Nothing goes while a long line is read; the rest is not to be copied for each of its blocks.
  if (count != 0 && count < filled) std::memmove(bytes.data(), bytes.data() + count, filled - count);
  filled -= count;
  fresh = 0;
}

bool ContentsComparison::open(const std::string (&paths)[2], PairState& state) {
  for (const int side : {0, 1}) {
    Side& opened = sides_[side];
    opened.file.reset();
    opened.filled = opened.fresh = 0;
    opened.atEnd = false;
    const SystemError error = files_.openListed(paths[side], opened.file);
    if (error == 0) continue;
    state.cannotCompare(reasonFor(error), side, error == kNoFile ? 0 : error);
    return false;
  }
  return true;
}

/// Reads so many bytes of a side, or all that are left, after those it has.
bool ContentsComparison::readSide(int side, uint32_t count, PairState& state) {
  Side& from = sides_[side];
  const uint64_t wanted = uint64_t{from.filled} + count;
  const uint64_t roomy = std::max(wanted, std::min(wanted * 2, ByteArray::maxSize));
  if (from.bytes.size() < wanted && !from.bytes.resize(from.filled == 0 ? wanted : roomy)) {
    state.cannotCompare(NotCompared::outOfMemory, side, notEnoughStorage());
    return false;
  }
  uint32_t got = 0;
  from.fresh = from.filled;
  const SystemError error = from.file->read(from.bytes.data() + from.filled, count, got);
  if (error != 0) {
    state.cannotCompare(reasonFor(error), side, error);
    return false;
  }
  from.filled += got;
  from.atEnd = got < count;
  progress_.addBytes(got);
  return true;
}

bool ContentsComparison::read(uint32_t count, PairState& state) {
  return !isRaised(abort_) && readSide(0, count, state) && readSide(1, count, state);
}

bool ContentsComparison::sameBytes() const {
  const Side& a = sides_[0];
  const Side& b = sides_[1];
  return a.filled == b.filled &&
         std::memcmp(a.bytes.data() + a.fresh, b.bytes.data() + b.fresh, a.filled - a.fresh) == 0;
}

void ContentsComparison::compareBytes(const std::string (&paths)[2], PairState& state) {
  if (!open(paths, state)) return;
  while (read(kBlock, state)) {
    if (!sameBytes()) {
      state.add(kContents);
      return;
    }
    if (sides_[0].atEnd) return;
    for (Side& side : sides_) side.drop(side.filled);
  }
}

void ContentsComparison::compareTexts(const std::string (&paths)[2], const CompareOptions& options,
                                      PairState& state) {
  if (!open(paths, state) || !read(kBlock, state)) return;
  if (sides_[0].atEnd && sameBytes()) return;
  int binary = -1;
  for (const int side : {1, 0}) {
    const std::string_view sample = sides_[side].view();
    if (isBinary(sample)) binary = side;
    kinds_[side] = detectLineEndKind(sample);
  }
  // As long as both are alike they have one kind of line ends.
  while (sameBytes()) {
    if (sides_[0].atEnd) return;
    for (Side& side : sides_) {
      // A line that has only begun is compared as a whole.
      side.drop(binary >= 0 ? side.filled : endOfLines(side.view(), side.fresh, kinds_[0]));
    }
    if (!read(kBlock, state)) return;
  }
  if (binary >= 0) {
    state.cannotCompare(NotCompared::binary, binary);
  } else {
    compareLines(options, state);
  }
}

/// Compares what is left of both files, from the beginning of a line on.
void ContentsComparison::compareLines(const CompareOptions& options, PairState& state) {
  std::vector<uint32_t> keys[2];
  size_t at[2] = {0, 0};
  for (Side& side : sides_) side.fresh = 0;
  for (;;) {
    for (const int side : {0, 1}) {
      if (at[side] < keys[side].size()) continue;
      at[side] = 0;
      if (!readLines(side, options, keys[side], state)) return;
    }
    const size_t count = std::min(keys[0].size() - at[0], keys[1].size() - at[1]);
    if (count == 0) {
      if (keys[0].size() != keys[1].size()) state.add(kContents);
      return;
    }
    if (!std::equal(keys[0].begin() + static_cast<ptrdiff_t>(at[0]),
                    keys[0].begin() + static_cast<ptrdiff_t>(at[0] + count),
                    keys[1].begin() + static_cast<ptrdiff_t>(at[1]))) {
      state.add(kContents);
      return;
    }
    for (size_t& place : at) place += count;
  }
}

/// The keys of a side's next lines; none at its end.
bool ContentsComparison::readLines(int index, const CompareOptions& options, std::vector<uint32_t>& keys,
                                   PairState& state) {
  Side& side = sides_[index];
  uint32_t end = endOfLines(side.view(), side.fresh, kinds_[index]);
  while (end == 0 && !side.atEnd) {
    if (isRaised(abort_) || !readSide(index, kBlock, state)) return false;
    end = endOfLines(side.view(), side.fresh, kinds_[index]);
  }
  if (end == 0) end = side.filled;
  if (!lines_.assign(side.view().substr(0, end))) {
    state.cannotCompare(NotCompared::outOfMemory, index, notEnoughStorage());
    return false;
  }
  side.drop(end);
  convertFromFile(lines_, kinds_[index], abort_);
  keys = std::move(tableLines(lines_.view(), options, abort_).keys);
  return !isRaised(abort_);
}

}  // namespace merivane
