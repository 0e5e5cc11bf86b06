#include "mergeview/local_comparison.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "engine/comparison.h"

namespace merivane {
namespace {

constexpr uint32_t kReach = 40;
constexpr uint32_t kFurtherReach = 20;

uint32_t sizeOf(const TextChange& change) { return static_cast<uint32_t>(change.inserted.size()); }

int64_t growth(const TextChange& change) { return int64_t{sizeOf(change)} - change.removed; }

/// The row of the byte at a position; at the end, as the fillers there hold no byte, that of the last one.
uint32_t rowOfByte(const EditedPair& pair, int side, uint64_t position) {
  const uint32_t size = pair.files[side].text.size();
  const uint64_t byte = std::min<uint64_t>(position, size == 0 ? 0 : size - 1);
  return static_cast<uint32_t>(pair.model.rowAtPosition(side, static_cast<uint32_t>(byte)));
}

uint32_t linesOf(std::string_view text) {
  const auto ended = static_cast<uint32_t>(std::count(text.begin(), text.end(), '\n'));
  return ended + (!text.empty() && text.back() != '\n' ? 1 : 0);
}

/// The rows that a change takes part of its lines from. More lines than it was made from may be those that
/// the side lacked so far: as many rows take part from there on, and as many fillers before and after those.
RowRange rowsOf(const EditedPair& pair, const TextChange& change) {
  const DiffModel& model = pair.model;
  const TextBuffer& text = pair.files[change.side].text;
  const bool atLineStart = change.start == 0 || text.charBefore(change.start) == '\n';
  uint32_t first = pair.rowOf(change.side, change.start);
  if (atLineStart) {
    first = change.from.empty() ? static_cast<uint32_t>(model.rowAtPositionFromTop(change.side, change.start))
                                : std::min(first, change.from.begin);
  }
  uint32_t end = std::max(first + 1, change.from.end);
  // What follows joins a line that the change leaves without its end, past any fillers in between.
  const bool ended = change.inserted.empty() ? atLineStart : change.inserted.back() == '\n';
  const uint64_t changeEnd = uint64_t{change.start} + change.removed;
  if (!ended || change.removed > 0) {
    end = std::max(end, rowOfByte(pair, change.side, ended ? changeEnd - 1 : changeEnd) + 1);
  }
  const uint32_t lines = linesOf(change.inserted);
  if (lines <= change.from.size()) return {first, end};

  const auto isFiller = [&](uint32_t row) { return fillerSide(model.status(row)) == change.side; };
  end = static_cast<uint32_t>(std::min<uint64_t>(uint64_t{end} + lines, model.rowCount()));
  const uint32_t furtherFirst = first - std::min(first, 2 * lines);
  const uint32_t furtherEnd =
      static_cast<uint32_t>(std::min<uint64_t>(uint64_t{end} + lines, model.rowCount()));
  while (end < furtherEnd && isFiller(end)) ++end;
  while (atLineStart && first > furtherFirst && isFiller(first - 1)) --first;
  return {first, end};
}

/// The text of one side in the window as it will be.
bool changedStretch(const TextBuffer& text, uint32_t begin, uint32_t end, const TextChange& change,
                    ByteArray& stretch) {
  if (!stretch.allocate(static_cast<uint64_t>(end - begin + growth(change)))) return false;
  char* to = stretch.data();
  const auto append = [&to](std::string_view bytes) {
    if (!bytes.empty()) std::memcpy(to, bytes.data(), bytes.size());
    to += bytes.size();
  };
  const auto [head, headRest] = text.stretch(begin, change.start);
  const auto [tail, tailRest] = text.stretch(change.start + change.removed, end);
  for (const std::string_view bytes : {head, headRest, change.inserted, tail, tailRest}) append(bytes);
  return true;
}

/// Whether a row of before the change is, moved by this much on the changed side, one of those after it.
bool standsAt(const EditedPair& pair, uint32_t row, const DiffModel& fresh, uint32_t freshRow, int side,
              int64_t moved) {
  const DiffModel& model = pair.model;
  return model.status(row) == fresh.status(freshRow) &&
         model.position(side, row) + moved == fresh.position(side, freshRow) &&
         model.position(1 - side, row) == fresh.position(1 - side, freshRow);
}

/// Leaves out of what is to be replaced, and of what comes in its place, the rows at both ends that stay as
/// they are; not the rows from `first` to `last`, in which the change is. Of each at least one row is left,
/// as rows that gave way to none would not be known from rows that are not known.
void leaveOutKept(const EditedPair& pair, const TextChange& change, RowRange& old, const DiffModel& fresh,
                  RowRange& taken, uint32_t first, uint32_t last) {
  // By other options the marks of the same lines may be others.
  const auto keeps = [&](uint32_t row, uint32_t freshRow, int64_t moved) {
    return standsAt(pair, row, fresh, freshRow, change.side, moved) &&
           (pair.rowsOfOptions || pair.model.status(row) != RowStatus::changed);
  };
  for (; old.begin < first && taken.size() > 1 && keeps(old.begin, taken.begin, 0); ++old.begin)
    ++taken.begin;
  for (; old.end - 1 > last && taken.size() > 1 && keeps(old.end - 1, taken.end - 1, growth(change));
       --old.end)
    --taken.end;
}

/// How far the rows that come in the place of old ones look different. Those after the last changed one have
/// moved.
ChangeExtent extentOf(const EditedPair& pair, const TextChange& change, RowRange old, const DiffModel& fresh,
                      RowRange taken, uint32_t lastChanged) {
  if (old.size() != taken.size()) return ChangeExtent::rows;
  ChangeExtent extent = ChangeExtent::text;
  for (uint32_t i = 0; i < old.size(); ++i) {
    const uint32_t row = old.begin + i, freshRow = taken.begin + i;
    if (!standsAt(pair, row, fresh, freshRow, change.side, row > lastChanged ? growth(change) : 0))
      return ChangeExtent::rows;
    if (fresh.status(freshRow) == RowStatus::changed) extent = ChangeExtent::marks;
  }
  return extent;
}

/// The changed rows of a window whose bytes stay, where they will lie in the stretches that begin there.
std::vector<KnownChange> knownChanges(const EditedPair& pair, RowRange window, const uint32_t (&begin)[2],
                                      const TextChange& change) {
  const DiffModel& model = pair.model;
  const uint32_t changeEnd = change.start + change.removed;
  std::vector<KnownChange> known;
  for (uint32_t row = window.begin; row < window.end; ++row) {
    const uint32_t start = model.position(change.side, row);
    const uint32_t end = model.endPosition(change.side, row, pair.files[change.side].text.size());
    const bool touched = start < changeEnd && end > change.start;
    if (model.status(row) != RowStatus::changed || model.marks(row).none() || touched) continue;
    KnownChange& at = known.emplace_back();
    at.marks = model.marks(row);
    for (const int side : {0, 1}) at.start[side] = model.position(side, row) - begin[side];
    if (start >= changeEnd) at.start[change.side] += static_cast<uint32_t>(growth(change));
  }
  return known;
}

std::optional<RowsChange> tryToChange(EditedPair& pair, const TextChange& change,
                                      const CompareOptions& options) {
  DiffModel& model = pair.model;
  TextBuffer& text = pair.files[change.side].text;
  const RowRange rows = rowsOf(pair, change);
  const RowRange window = comparisonWindow(model, rows);
  const uint32_t lastChanged =
      change.removed > 0
          ? std::max(rows.begin, rowOfByte(pair, change.side, uint64_t{change.start} + change.removed))
          : rows.begin;

  uint32_t begin[2], end[2];
  for (const int side : {0, 1}) {
    begin[side] = model.position(side, window.begin);
    end[side] = model.endPosition(side, window.end - 1, pair.files[side].text.size());
  }
  const int other = 1 - change.side;
  ByteArray stretch;
  if (!text.reserve(sizeOf(change)) ||
      !changedStretch(text, begin[change.side], end[change.side], change, stretch)) {
    return std::nullopt;
  }
  std::string_view stretches[2];
  stretches[change.side] = stretch.view();
  stretches[other] = pair.files[other].text.view(begin[other], end[other]);
  std::vector<KnownChange> known;
  if (pair.rowsOfOptions) known = knownChanges(pair, window, begin, change);
  DiffModel fresh;
  if (compareTexts(stretches[0], stretches[1], options, nullptr, fresh, known) != Result::success)
    return std::nullopt;
  for (const int side : {0, 1}) fresh.shiftPositions(side, 0, begin[side]);

  RowsChange result;
  RowRange old = window, taken = {0, fresh.rowCount()};
  leaveOutKept(pair, change, old, fresh, taken, rows.begin, std::max(rows.end - 1, lastChanged));
  result.extent = extentOf(pair, change, old, fresh, taken, lastChanged);
  result.touched = {rows.begin, lastChanged + 1};
  result.replacing = {old.begin, old.begin + taken.size()};
  // The last step that can fail, and the first that changes anything.
  result.replaced = model.replaceRows(old, std::move(fresh), taken);
  model.shiftPositions(change.side, result.replacing.end, growth(change));
  text.replace(change.start, change.removed, change.inserted);
  return result;
}

}  // namespace

RowRange comparisonWindow(const DiffModel& model, RowRange changed) {
  const auto up = [](uint32_t row, uint32_t by) { return row - std::min(row, by); };
  const auto down = [&model](uint32_t end, uint32_t by) {
    return static_cast<uint32_t>(std::min<uint64_t>(uint64_t{end} + by, model.rowCount()));
  };
  RowRange window{up(changed.begin, kReach), down(changed.end, kReach)};
  const uint32_t highest = up(window.begin, kFurtherReach);
  while (window.begin > highest && model.status(window.begin) != RowStatus::same) --window.begin;
  const uint32_t lowest = down(window.end, kFurtherReach);
  while (window.end < lowest && model.status(window.end - 1) != RowStatus::same) ++window.end;
  return window;
}

std::optional<RowsChange> changeText(EditedPair& pair, const TextChange& change,
                                     const CompareOptions& options) {
  try {
    return tryToChange(pair, change, options);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool changeText(EditedPair& pair, const TextChange& change, RowRange& range, DiffModel& rows) {
  TextBuffer& text = pair.files[change.side].text;
  if (!text.reserve(sizeOf(change))) return false;
  try {
    const RowRange fresh = {range.begin, range.begin + rows.rowCount()};
    rows = pair.model.replaceRows(range, std::move(rows), {0, rows.rowCount()});
    range = fresh;
  } catch (const std::bad_alloc&) {
    return false;
  }
  pair.model.shiftPositions(change.side, range.end, growth(change));
  text.replace(change.start, change.removed, change.inserted);
  return true;
}

}  // namespace merivane
