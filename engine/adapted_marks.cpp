#include "engine/adapted_marks.h"

#include <algorithm>
#include <vector>

#include "engine/search/equal_ends.h"

namespace merivane {
namespace {

/// So many characters of both lines around an edit are compared anew; more count as different.
constexpr size_t kMaxCompared = 1 << 13;

/// The flags of one line's characters, 0 for a matched one, and a stretch of them.
struct Line {
  std::vector<uint8_t> flags;
  size_t begin = 0, end = 0;

  size_t matched(size_t from, size_t to) const {
    return static_cast<size_t>(std::count(flags.data() + from, flags.data() + to, uint8_t{0}));
  }

  /// Returns the place after so many matched characters from another place on.
  size_t afterMatched(size_t from, size_t count) const {
    while (count > 0) count -= 1 - flags[from++];
    return from;
  }

  void replaceStretch(const std::vector<uint8_t>& script) {
    const auto at = flags.erase(flags.begin() + static_cast<std::ptrdiff_t>(begin),
                                flags.begin() + static_cast<std::ptrdiff_t>(end));
    flags.insert(at, script.begin(), script.end() - 1);
  }
};

}  // namespace

RowMarks adaptMarks(std::string_view left, std::string_view right, const KnownChange& known,
                    const CompareOptions& options) {
  const int side = known.edited, otherSide = 1 - side;
  NormalisedLine before, now[2];
  before.assign(known.before, options, nullptr);
  now[0].assign(left, options, nullptr);
  now[1].assign(right, options, nullptr);
  Line lines[2];
  Line &edited = lines[side], &other = lines[otherSide];
  edited.flags = before.flags(known.marks.side(side));
  other.flags = now[otherSide].flags(known.marks.side(otherSide));

  // The edit lies between what is the same at both ends of its line. The stretch to be compared reaches on to
  // the matched characters around it, and on the other side to their counterparts.
  const std::string_view from = before.characters(), to = now[side].characters();
  const size_t shorter = std::min(from.size(), to.size());
  edited.begin = equalAtStart(from.data(), to.data(), shorter, nullptr);
  edited.end = from.size() -
               equalAtEnd(from.data() + from.size(), to.data() + to.size(), shorter - edited.begin, nullptr);
  while (edited.begin > 0 && edited.flags[edited.begin - 1] != 0) --edited.begin;
  while (edited.end < from.size() && edited.flags[edited.end] != 0) ++edited.end;
  other.begin = other.afterMatched(0, edited.matched(0, edited.begin));
  other.end = other.afterMatched(other.begin, edited.matched(edited.begin, edited.end));
  while (other.end < other.flags.size() && other.flags[other.end] != 0) ++other.end;

  const size_t editedSize = edited.end - edited.begin + to.size() - from.size();
  std::span<const char> stretches[2];
  stretches[side] = to.substr(edited.begin, editedSize);
  stretches[otherSide] = now[otherSide].characters().substr(other.begin, other.end - other.begin);
  EditScript script;
  if (stretches[0].size() + stretches[1].size() <= kMaxCompared) {
    findEditScript(stretches[0], stretches[1], nullptr, script);
  } else {
    for (const int each : {0, 1}) script.changed[each].assign(stretches[each].size() + 1, 1);
  }
  RowMarks marks =
      RowMarks::allocate(static_cast<uint32_t>(left.size()), static_cast<uint32_t>(right.size()));
  if (marks.none()) return marks;
  for (const int each : {0, 1}) {
    lines[each].replaceStretch(script.changed[each]);
    now[each].setMarks(lines[each].flags, marks.side(each), nullptr);
  }
  marks.setProvisional();
  return marks;
}

}  // namespace merivane
