#pragma once

#include <cstdint>
#include <vector>

#include "display/sections.h"
#include "engine/diff_model.h"

namespace merivane {

/// The lines that are printed of a comparison, one below the other through all pages: its rows, or only those
/// of the sections that an export has, each section with a line of its own for a title. Finding out what
/// stands on a page takes no look at the pages before.
class PrintedLines {
 public:
  PrintedLines() = default;
  PrintedLines(const DiffModel& model, ExportScope scope);

  /// Rows of the comparison below each other, or the title of the section that starts with them.
  struct Stretch {
    uint32_t line;  // the first one's
    bool title;
    RowRange rows;
    bool operator==(const Stretch&) const = default;
  };

  uint32_t count() const { return count_; }

  /// What the lines from `begin` to before `end` are, from the top.
  std::vector<Stretch> stretches(uint32_t begin, uint32_t end) const;

 private:
  struct Section {
    uint32_t line;  // the title's, if there is one
    RowRange rows;
  };

  std::vector<Section> sections_;
  uint32_t titleLines_ = 0;  // of a section
  uint32_t count_ = 0;
};

}  // namespace merivane
