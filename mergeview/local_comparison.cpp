#include "mergeview/local_comparison.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "engine/adapted_marks.h"
#include "engine/comparison.h"

namespace merivane {
namespace {

constexpr uint32_t kReach = 40;
constexpr uint32_t kFurtherReach = 20;

/// From so many characters of both lines together their comparison may take longer than a key may.
constexpr size_t kLongLines = 1 << 16;

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

/// The changed row, if any, that a change is made within and whose lines are too long to be compared anew
/// with every key.
std::optional<uint32_t> longRowOf(const EditedPair& pair, const TextChange& change) {
  const uint32_t row = pair.rowOf(change.side, change.start);
  const RowMarks& marks = pair.model.marks(row);
  if (marks.side(0).size() + marks.side(1).size() < kLongLines) return std::nullopt;
  const TextBuffer& text = pair.files[change.side].text;
  const uint32_t start = pair.model.position(change.side, row);
  uint32_t end = pair.model.endPosition(change.side, row, text.size());
  if (end > start && text.charBefore(end) == '\n') --end;
  const bool within = change.start >= start && uint64_t{change.start} + change.removed <= end;
  if (!within || change.inserted.find('\n') != std::string_view::npos) return std::nullopt;
  return row;
}

/// A row that is changed, as it stands and as it will be after an edit within it.
KnownChange editedRow(EditedPair& pair, uint32_t row, const TextChange& change) {
  KnownChange known;
  for (const int side : {0, 1}) known.start[side] = pair.model.position(side, row);
  known.marks = pair.model.marks(row);
  known.edited = change.side;
  TextBuffer& text = pair.files[change.side].text;
  known.before = text.view(known.start[change.side], pair.model.endPosition(change.side, row, text.size()));
  return known;
}

/// What is known of the changed rows of a window after a change. Their lines lie in stretches of the texts
/// that begin there.
std::vector<KnownChange> knownAfter(EditedPair& pair, RowRange window, const uint32_t (&begin)[2],
                                    const TextChange& change) {
  const uint32_t changeEnd = change.start + change.removed;
  std::vector<KnownChange> known = knownChanges(pair.model, window);
  const std::optional<uint32_t> longRow = longRowOf(pair, change);
  std::erase_if(known, [&](KnownChange& each) {
    const uint32_t start = each.start[change.side];
    const auto length = static_cast<uint32_t>(each.marks.side(change.side).size());
    if (longRow && start == pair.model.position(change.side, *longRow)) {
      each = editedRow(pair, *longRow, change);
    } else if (start >= changeEnd) {
      each.start[change.side] += static_cast<uint32_t>(growth(change));
    } else if (start + length > change.start) {
      return true;
    }
    for (const int side : {0, 1}) each.start[side] -= begin[side];
    return false;
  });
  return known;
}

/// Gives a row that a record left without its marks those that it has now, as the edit within it changes
/// them.
bool restoreMarks(EditedPair& pair, const TextChange& change, const CompareOptions& options, RowRange range,
                  DiffModel& rows) {
  const std::optional<uint32_t> row = longRowOf(pair, change);
  if (!row || *row < range.begin || *row >= range.end || range.size() != rows.rowCount()) return true;
  const uint32_t at = *row - range.begin;
  if (rows.status(at) != RowStatus::changed || !rows.marks(at).none()) return true;
  const KnownChange known = editedRow(pair, *row, change);
  const int other = 1 - change.side;
  ByteArray edited;
  TextBuffer& text = pair.files[other].text;
  const uint32_t begin = known.start[change.side];
  if (!changedStretch(pair.files[change.side].text, begin, begin + static_cast<uint32_t>(known.before.size()),
                      change, edited)) {
    return false;
  }
  std::string_view lines[2];
  lines[change.side] = edited.view();
  lines[other] = text.view(known.start[other], pair.model.endPosition(other, *row, text.size()));
  rows.setMarks(at, adaptMarks(lines[0], lines[1], known, options));
  return true;
}

/// Leaves the marks of a long row that is changed still out of those that a record keeps: 250 keys in a long
/// line would keep as many times its length. They are found again from those that it has now.
void leaveOutLongMarks(const DiffModel& model, std::optional<uint32_t> longRow, RowRange range,
                       DiffModel& rows) {
  if (longRow && range.size() == rows.rowCount() && *longRow >= range.begin && *longRow < range.end &&
      model.marks(*longRow).provisional()) {
    rows.setMarks(*longRow - range.begin, {});
  }
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
  if (pair.rowsOfOptions) known = knownAfter(pair, window, begin, change);
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
  const std::optional<uint32_t> longRow = longRowOf(pair, change);
  // The last step that can fail, and the first that changes anything.
  result.replaced = model.replaceRows(old, std::move(fresh), taken);
  leaveOutLongMarks(model, longRow, result.replacing, result.replaced);
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

std::vector<KnownChange> knownChanges(const DiffModel& model, RowRange window) {
  std::vector<KnownChange> known;
  for (uint32_t row = window.begin; row < window.end; ++row) {
    if (model.status(row) != RowStatus::changed || model.marks(row).none()) continue;
    known.push_back({{model.position(0, row), model.position(1, row)}, model.marks(row), -1, {}});
  }
  return known;
}

std::optional<RowsChange> changeText(EditedPair& pair, const TextChange& change,
                                     const CompareOptions& options) {
  try {
    return tryToChange(pair, change, options);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool changeText(EditedPair& pair, const TextChange& change, const CompareOptions& options, RowRange& range,
                DiffModel& rows) {
  TextBuffer& text = pair.files[change.side].text;
  if (!text.reserve(sizeOf(change))) return false;
  try {
    if (!restoreMarks(pair, change, options, range, rows)) return false;
    const std::optional<uint32_t> longRow = longRowOf(pair, change);
    const RowRange fresh = {range.begin, range.begin + rows.rowCount()};
    rows = pair.model.replaceRows(range, std::move(rows), {0, rows.rowCount()});
    range = fresh;
    leaveOutLongMarks(pair.model, longRow, range, rows);
  } catch (const std::bad_alloc&) {
    return false;
  }
  pair.model.shiftPositions(change.side, range.end, growth(change));
  text.replace(change.start, change.removed, change.inserted);
  return true;
}

}  // namespace merivane
