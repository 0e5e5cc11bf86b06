#include "folders/contents.h"

#include <algorithm>
#include <cstring>

namespace merivane {
namespace {

constexpr uint32_t kBlock = 1 << 17;
static_assert(kBlock >= kLineEndSampleSize && kBlock >= kBinarySampleSize);

/// The place after the last line end; 0 for none.
size_t endOfLines(std::string_view bytes, LineEndKind kind) {
  return 1 + (kind == LineEndKind::cr ? bytes.find_last_of("\r\n") : bytes.rfind('\n'));
}

}  // namespace

/// All but a CR at the end, of which it takes the next byte to know whether it is a line end or half of one.
std::string_view ContentsComparison::Side::wholeCharacters() const {
  std::string_view bytes = view();
  if (!atEnd && bytes.ends_with('\r')) bytes.remove_suffix(1);
  return bytes;
}

void ContentsComparison::Side::drop(size_t count) {
  if (count < filled) std::memmove(block.data(), block.data() + count, filled - count);
  filled -= static_cast<uint32_t>(count);
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

/// Fills a side's block, or reads all that is left.
bool ContentsComparison::readSide(int side, PairState& state) {
  Side& from = sides_[side];
  if (from.block.size() == 0 && !from.block.allocate(kBlock)) {
    state.cannotCompare(NotCompared::outOfMemory, side, notEnoughStorage());
    return false;
  }
  const uint32_t count = kBlock - from.filled;
  uint32_t got = 0;
  from.fresh = from.filled;
  const SystemError error = from.file->read(from.block.data() + from.filled, count, got);
  if (error != 0) {
    state.cannotCompare(reasonFor(error), side, error);
    return false;
  }
  from.filled += got;
  from.atEnd = got < count;
  progress_.addBytes(got);
  return true;
}

bool ContentsComparison::read(PairState& state) {
  return !isRaised(abort_) && readSide(0, state) && readSide(1, state);
}

bool ContentsComparison::sameBytes() const {
  const Side& a = sides_[0];
  const Side& b = sides_[1];
  return a.filled == b.filled &&
         std::memcmp(a.block.data() + a.fresh, b.block.data() + b.fresh, a.filled - a.fresh) == 0;
}

void ContentsComparison::compareBytes(const std::string (&paths)[2], PairState& state) {
  if (!open(paths, state)) return;
  while (read(state)) {
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
  if (!open(paths, state) || !read(state)) return;
  if (sides_[0].atEnd && sameBytes()) return;
  int binary = -1;
  for (const int side : {1, 0}) {
    const std::string_view sample = sides_[side].view();
    if (isBinary(sample)) binary = side;
    kinds_[side] = detectLineEndKind(sample);
    // The mark of UTF-8 is no part of the text.
    if (encodingByMark(sample) == TextEncoding::utf8Marked) {
      sides_[side].drop(byteOrderMark(TextEncoding::utf8Marked).size());
    }
  }
  // As long as both are alike they have one kind of line ends, and one key of the line that has only begun.
  LineKeys line(options);
  std::vector<uint32_t> none;
  while (sameBytes()) {
    if (sides_[0].atEnd) return;
    const std::string_view bytes = sides_[0].wholeCharacters();
    if (binary < 0) {
      const size_t begun = endOfLines(bytes, kinds_[0]);
      if (begun > 0) line = LineKeys(options);
      line.add(bytes.substr(begun), none);
    }
    for (Side& side : sides_) side.drop(bytes.size());
    if (!read(state)) return;
  }
  if (binary >= 0) {
    state.cannotCompare(NotCompared::binary, binary);
  } else {
    compareLines(line, state);
  }
}

/// Compares what is left of both files, from where both have come to in a line.
void ContentsComparison::compareLines(const LineKeys& begun, PairState& state) {
  LineKeys lines[2] = {begun, begun};
  std::vector<uint32_t> keys[2];
  size_t at[2] = {0, 0};
  for (;;) {
    for (const int side : {0, 1}) {
      if (at[side] < keys[side].size()) continue;
      at[side] = 0;
      if (!readLines(side, lines[side], keys[side], state)) return;
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
bool ContentsComparison::readLines(int index, LineKeys& line, std::vector<uint32_t>& keys, PairState& state) {
  Side& side = sides_[index];
  keys.clear();
  for (;;) {
    if (isRaised(abort_)) return false;
    if (!lines_.assign(side.wholeCharacters())) {
      state.cannotCompare(NotCompared::outOfMemory, index, notEnoughStorage());
      return false;
    }
    side.drop(lines_.size());
    convertFromFile(lines_, kinds_[index]);
    line.add(lines_.view(), keys);
    if (side.atEnd) line.end(keys);
    if (side.atEnd || !keys.empty()) return true;
    if (!readSide(index, state)) return false;
  }
}

}  // namespace merivane
