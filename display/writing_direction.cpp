#include "display/writing_direction.h"

#include <algorithm>
#include <span>

#include "display/code_points.h"

namespace merivane {
namespace {

using enum BidiClass;

struct Item {
  uint32_t begin;
  BidiClass kind;
};

/// The first lead byte of what is written from right to left, U+0590.
constexpr uint8_t kFirstRightToLeft = 0xD6;

bool isRightToLeft(BidiClass kind) { return kind == right || kind == arabicLetter || kind == arabicNumber; }
bool isNumber(BidiClass kind) { return kind == europeanNumber || kind == arabicNumber; }

bool hasRightToLeft(const SplitText& row) {
  const auto mayBe = [](char c) { return static_cast<uint8_t>(c) >= kFirstRightToLeft; };
  if (std::ranges::none_of(row.head, mayBe) && std::ranges::none_of(row.tail, mayBe)) return false;
  for (uint32_t at = 0; at < row.size();) {
    const CodePoint code = codePointAt(row, at);
    if (code.length > 1 && isRightToLeft(propertiesOf(code.value).bidiClass())) return true;
    at += code.length;
  }
  return false;
}

/// The classes of the characters, in logical order; control characters part the row as letters do.
std::vector<Item> itemsOf(const RowCharacters& row) {
  std::vector<Item> items;
  for (uint32_t at = 0; at < row.size();) {
    const Character character = row.at(at);
    const bool parts = character.base == kNoCodePoint || isControl(character.base);
    items.push_back({at, parts                ? left
                         : character.baseless ? neutral
                                              : propertiesOf(character.base).bidiClass()});
    at += character.length;
  }
  return items;
}

/// Rules W2 to W7: what numbers and the signs in and around them are.
void resolveNumbers(std::span<Item> items) {
  BidiClass strong = left;
  for (Item& item : items) {
    if (item.kind == europeanNumber && strong == arabicLetter) item.kind = arabicNumber;
    if (item.kind == left || item.kind == right || item.kind == arabicLetter) strong = item.kind;
  }
  for (Item& item : items) {
    if (item.kind == arabicLetter) item.kind = right;
  }
  for (size_t i = 1; i + 1 < items.size(); ++i) {
    const BidiClass before = items[i - 1].kind;
    if (before != items[i + 1].kind) continue;
    const bool joins = (items[i].kind == europeanSeparator && before == europeanNumber) ||
                       (items[i].kind == commonSeparator && isNumber(before));
    if (joins) items[i].kind = before;
  }
  for (size_t i = 0; i < items.size();) {
    size_t end = i;
    while (end < items.size() && items[end].kind == europeanTerminator) ++end;
    const bool beside = end > i && ((i > 0 && items[i - 1].kind == europeanNumber) ||
                                    (end < items.size() && items[end].kind == europeanNumber));
    for (; i < end; ++i) items[i].kind = beside ? europeanNumber : neutral;
    if (i < items.size()) ++i;
  }
  strong = left;
  for (Item& item : items) {
    if (item.kind == left || item.kind == right) {
      strong = item.kind;
    } else if (item.kind == europeanNumber) {
      if (strong == left) item.kind = left;
    } else if (item.kind != arabicNumber) {
      item.kind = neutral;
    }
  }
}

/// Rules N1 and N2: what stands between two of the right goes with them, all else to the left.
void resolveNeutrals(std::span<Item> items) {
  const auto isLeft = [&](size_t i) { return i >= items.size() || items[i].kind == left; };
  for (size_t i = 0; i < items.size();) {
    size_t end = i;
    while (end < items.size() && items[end].kind == neutral) ++end;
    const bool between = i > 0 && !isLeft(i - 1) && !isLeft(end);
    for (; i < end; ++i) items[i].kind = between ? right : left;
    if (i < items.size()) ++i;
  }
}

}  // namespace

std::vector<DirectionRun> directionRuns(const RowCharacters& row) {
  if (!row.isUtf8() || !hasRightToLeft(row.bytes())) return {};
  std::vector<Item> items = itemsOf(row);
  resolveNumbers(items);
  resolveNeutrals(items);
  std::vector<DirectionRun> runs;
  size_t stretch = 0;  // the first run of those that go to the left as a whole, numbers among them
  for (size_t i = 0; i < items.size();) {
    size_t end = i + 1;
    while (end < items.size() && isNumber(items[end].kind) == isNumber(items[i].kind) &&
           (isNumber(items[i].kind) || items[end].kind == items[i].kind)) {
      ++end;
    }
    const DirectionRun run = {items[i].begin, end < items.size() ? items[end].begin : row.size(),
                              items[i].kind == right};
    if (items[i].kind == left) {
      runs.push_back(run);
      stretch = runs.size();
    } else {
      runs.insert(runs.begin() + static_cast<std::ptrdiff_t>(stretch), run);
    }
    i = end;
  }
  return runs;
}

}  // namespace merivane
