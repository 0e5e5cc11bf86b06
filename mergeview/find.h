#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "mergeview/view_state.h"
#include "mergeview/words.h"

namespace merivane {

/// What is searched for: a literal text within one row, of whole characters. An empty text is never found,
/// nor one that a text of single bytes cannot hold in such a text.
struct FindQuery {
  std::string findText;    // in UTF-8
  bool matchCase = false;  // off, what differs in case alone is the same; of single bytes A-Z and a-z
  bool wholeWord = false;
};

/// Searches the active side for the next match after the selection, or the previous one before it, and once
/// around the ends, the row it started in again included. A match is brought into view and selected, with the
/// caret at its end. False when there is none, and nothing changes.
bool findNext(ViewState& view, const FindQuery& query);
bool findPrevious(ViewState& view, const FindQuery& query);

/// What a search starts with: the selected text in UTF-8 where it lies in one line and is no longer than can
/// be searched for; else none.
constexpr uint32_t kMaxFindText = 255;  // units of UTF-16
std::optional<std::string> selectionToFind(const ViewState& view);

/// Searches stretches of one text for a query.
class Finder {
 public:
  Finder(const FindQuery& query, bool utf8);

  /// The first, or last, match in a stretch.
  std::optional<CharacterRun> first(const RowCharacters& stretch) const;
  std::optional<CharacterRun> last(const RowCharacters& stretch) const;

 private:
  std::optional<CharacterRun> matchAt(const RowCharacters& stretch, uint32_t index) const;
  char32_t folded(char32_t codePoint) const;

  std::u32string sought_;  // folded; of single bytes the bytes
  bool utf8_;
  bool matchCase_;
  bool wholeWord_;
};

}  // namespace merivane
