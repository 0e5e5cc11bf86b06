#include "printing/printed_lines.h"

#include <algorithm>

namespace merivane {

PrintedLines::PrintedLines(const DiffModel& model, ExportScope scope)
    : titleLines_(scope == ExportScope::everything ? 0 : 1) {
  forEachSection(model, scope, [&](RowRange rows) {
    sections_.push_back({count_, rows});
    count_ += titleLines_ + rows.size();
  });
}

std::vector<PrintedLines::Stretch> PrintedLines::stretches(uint32_t begin, uint32_t end) const {
  std::vector<Stretch> found;
  auto section = std::upper_bound(sections_.begin(), sections_.end(), begin,
                                  [](uint32_t line, const Section& each) { return line < each.line; });
  if (section != sections_.begin()) --section;
  for (; section != sections_.end() && section->line < end; ++section) {
    const uint32_t top = section->line + titleLines_;
    if (titleLines_ > 0 && section->line >= begin) found.push_back({section->line, true, section->rows});
    const uint32_t from = std::max(begin, top);
    const uint32_t to = std::min(end, top + section->rows.size());
    if (from >= to) continue;
    const uint32_t first = section->rows.begin + (from - top);
    found.push_back({from, false, {first, first + (to - from)}});
  }
  return found;
}

}  // namespace merivane
