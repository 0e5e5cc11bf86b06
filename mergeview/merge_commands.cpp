#include "mergeview/merge_commands.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/single_bytes.h"
#include "mergeview/edit.h"
#include "mergeview/editor.h"

namespace merivane {
namespace {

/// Where the caret goes on the side that is written, counted from the copied text: it stays in its row, and
/// moves back by what the line becomes shorter.
uint32_t caretInCopy(const ViewState& view, const Block& block, int from, int to) {
  const uint32_t row = view.caretRow();
  const auto length = [&view, row](int side) { return view.rowEnd(side, row) - view.rowStart(side, row); };
  const uint32_t shorter = length(to) > length(from) ? length(to) - length(from) : 0;
  const uint32_t inRow = view.caretPos(to) - view.rowStart(to, row);
  return view.rowStart(from, row) - block.start[from] + inRow - std::min(inRow, shorter);
}

}  // namespace

Block caretBlock(const ViewState& view, BlockKind kind) {
  const uint32_t row = view.caretRow();
  Block block{view.model().status(row), {row, row + 1}, {}, {}};
  if (kind == BlockKind::difference) block.rows = view.model().blockAround(row);
  for (const int side : {0, 1}) {
    block.start[side] = view.rowStart(side, block.rows.begin);
    block.end[side] = view.rowEnd(side, block.rows.end - 1);
  }
  return block;
}

void copyBlock(ViewState& view, UndoHistory& history, BlockKind kind, int to) {
  const Block block = caretBlock(view, kind);
  if (!canCopyTo(to, view.file(to).readOnly, block.status)) return;
  const int from = 1 - to;
  TextBuffer& source = view.file(from).text;
  const TextBuffer& target = view.text(to);
  std::string_view copied = source.view(block.start[from], block.end[from]);
  ByteArray converted;
  if (!isAscii(copied) && isUnicode(view.file(from).encoding) != view.holdsUtf8(to)) {
    if (!converted.assign(copied) || (view.holdsUtf8(to) && !fromCodePage(converted))) {
      return view.host().reportOutOfMemory();
    }
    if (!view.holdsUtf8(to) && !confirmedCodePage(view, converted)) return;
    copied = converted.view();
  }

  // Where a last line has no line end, it gets one as soon as it is not the last any more.
  const uint32_t start = block.start[to];
  const bool atEnd = target.atEnd(block.end[to]);
  const bool leading = target.atEnd(start) && start > 0 && target.charBefore(start) != '\n';
  const bool trailing = !atEnd && copied.back() != '\n';

  Edit edit{to, start, block.end[to] - start, {}, 0, block.rows};
  if (!edit.inserted.allocate(uint64_t{copied.size()} + leading + trailing)) {
    return view.host().reportOutOfMemory();
  }
  char* bytes = edit.inserted.data();
  if (leading) *bytes++ = '\n';
  std::memcpy(bytes, copied.data(), copied.size());
  if (trailing) bytes[copied.size()] = '\n';

  const int active = view.activeSide();
  edit.caretAfter = view.caretPos(active);
  if (active == to) {
    const uint32_t inCopy = leading + caretInCopy(view, block, from, to);
    edit.caretAfter = start + std::min(inCopy, edit.inserted.size());
  }
  if (performEdit(view, history, std::move(edit))) view.changes().everything = true;
}

void deleteBlock(ViewState& view, UndoHistory& history, BlockKind kind) {
  const Block block = caretBlock(view, kind);
  const int side = view.activeSide();
  const uint32_t start = block.start[side];
  const uint32_t length = block.end[side] - start;
  if (!canDeleteOn(side, view.file(side).readOnly, block.status) || length == 0) return;
  performEdit(view, history, {side, start, length, {}, start, block.rows});
}

void blockToClipboard(ViewState& view, BlockKind kind) {
  const Block block = caretBlock(view, kind);
  const int side = view.activeSide();
  copyToClipboard(view, side, block.start[side], block.end[side]);
}

}  // namespace merivane
