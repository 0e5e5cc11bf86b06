#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mergeview/view_state.h"

namespace merivane {

/// What is searched for: a literal text within one row. An empty text is never found.
struct FindQuery {
  std::string findText;
  bool matchCase = false;  // off, A-Z and a-z are the same
  bool wholeWord = false;
};

/// Searches the active side for the next match after the selection, or the previous one before it, and once
/// around the ends, the row it started in again included. A match is brought into view and selected, with the
/// caret at its end. False when there is none, and nothing changes.
bool findNext(ViewState& view, const FindQuery& query);
bool findPrevious(ViewState& view, const FindQuery& query);

/// What a search starts with: the selected text where it lies in one line and is no longer than can be
/// searched for; else none.
constexpr uint32_t kMaxFindText = 255;
std::optional<std::string> selectionToFind(const ViewState& view);

/// The first, or last, match in a stretch of text, as an index.
std::optional<uint32_t> findFirst(std::string_view stretch, const FindQuery& query);
std::optional<uint32_t> findLast(std::string_view stretch, const FindQuery& query);

}  // namespace merivane
