#include <algorithm>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "output/folder_writers.h"
#include "output/text_cell.h"

namespace merivane {
namespace {

constexpr std::string_view kColourOff = "\x1b[m";

std::string_view colourOf(FolderCategory category) {
  switch (category) {
    case FolderCategory::onlyOld:
      return "\x1b[31m";
    case FolderCategory::onlyNew:
      return "\x1b[32m";
    case FolderCategory::changed:
      return "\x1b[33m";
    case FolderCategory::same:
      break;
  }
  return {};
}

class FolderTextWriter {
 public:
  FolderTextWriter(const WrittenFolders& folders, const WriterOptions& options, ByteSink& sink)
      : folders_(folders), options_(options), sink_(sink) {
    style_.terminal = options.terminal;
  }

  void write() {
    for (const FolderCategory category : kShownOrder) {
      if (!folders_.shows[static_cast<size_t>(category)]) continue;
      for (const FolderEntry& entry : folders_.comparison.category(category)) measure(category, entry);
    }
    for (const FolderCategory category : kShownOrder) {
      if (!folders_.shows[static_cast<size_t>(category)]) continue;
      for (const FolderEntry& entry : folders_.comparison.category(category)) writeEntry(category, entry);
    }
    sink_.write(folderCounts(folders_.comparison) + "\n");
  }

 private:
  /// A name is never cut.
  uint32_t appendName(std::string& line, const FolderEntry& entry) const {
    name_ = entry.name();
    if (entry.isFolder) name_ += kPathSeparator;
    return appendCell(line, name_, {}, style_, static_cast<uint32_t>(4 * name_.size() + 1));
  }

  static std::string remarks(FolderCategory category, const FolderEntry& entry) {
    std::string text =
        category == FolderCategory::changed ? differenceText(entry.differences) : std::string();
    if (entry.notCompared != NotCompared::nothing) {
      if (!text.empty()) text += ' ';
      text += std::string("[") + notComparedText(entry.notCompared) + "]";
    }
    return text;
  }

  void measure(FolderCategory category, const FolderEntry& entry) {
    if (remarks(category, entry).empty()) return;
    line_.clear();
    // A few long names shall not move the remarks of all others out of sight.
    width_ = std::max(width_, std::min(appendName(line_, entry), options_.width / 2));
  }

  void writeEntry(FolderCategory category, const FolderEntry& entry) {
    constexpr size_t nameColumn = 9;
    const std::string_view colour = options_.coloured ? colourOf(category) : std::string_view();
    line_ = colour;
    const size_t begin = line_.size();
    line_ += categoryName(category);
    line_.resize(begin + nameColumn, ' ');
    const uint32_t used = appendName(line_, entry);
    const std::string text = remarks(category, entry);
    if (!text.empty()) {
      line_.append(std::max(width_, used) - used + 2, ' ');
      line_ += text;
    }
    if (!colour.empty()) line_ += kColourOff;
    line_ += '\n';
    sink_.write(line_);
  }

  const WrittenFolders& folders_;
  const WriterOptions& options_;
  ByteSink& sink_;
  CellStyle style_;
  uint32_t width_ = 0;
  std::string line_;
  mutable std::string name_;
};

}  // namespace

void writeFolderText(const WrittenFolders& folders, const WriterOptions& options, ByteSink& sink) {
  FolderTextWriter(folders, options, sink).write();
}

}  // namespace merivane
