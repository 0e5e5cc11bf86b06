#include "output/file_bytes.h"

#include <algorithm>
#include <cstring>

namespace merivane {

void LineEndRecord::add(LineEndKind kind, uint32_t count) {
  if (count == 0) return;
  if (runs_.empty() || runs_.back().kind != kind) runs_.push_back({kind, 0});
  runs_.back().count += count;
}

void LineEndRecord::takeLastBack() {
  if (--runs_.back().count == 0) runs_.pop_back();
}

void LineEndRecord::note(std::string_view bytes) {
  if (bytes.empty()) return;
  if (endsInCr_ && bytes[0] == '\n') {
    takeLastBack();
    add(LineEndKind::crLf, 1);
    bytes.remove_prefix(1);
  }
  endsInCr_ = false;
  while (!bytes.empty()) {
    const std::string_view before = bytes.substr(0, bytes.find('\r'));
    add(LineEndKind::lf, static_cast<uint32_t>(std::count(before.begin(), before.end(), '\n')));
    bytes.remove_prefix(before.size());
    if (bytes.empty()) return;
    const bool crLf = bytes.size() > 1 && bytes[1] == '\n';
    endsInCr_ = bytes.size() == 1;
    add(crLf ? LineEndKind::crLf : LineEndKind::cr, 1);
    bytes.remove_prefix(crLf ? 2 : 1);
  }
}

bool LineEndRecord::isConverted(LineEndKind kind) const {
  return std::ranges::any_of(runs_, [kind](const Run& run) {
    return (kind == LineEndKind::crLf && run.kind == LineEndKind::crLf) ||
           (kind == LineEndKind::cr && run.kind != LineEndKind::lf);
  });
}

bool LineEndRecord::restore(LineEndKind kind, ByteArray& text) const {
  switch (kind) {
    case LineEndKind::lf:
      return true;
    case LineEndKind::crLf:
      return restoreCrLfs(text);
    case LineEndKind::cr:
      restoreCrs(text);
      return true;
  }
  return true;
}

/// Every CR of the file is an LF of the text, as is every LF.
void LineEndRecord::restoreCrs(ByteArray& text) const {
  char* at = text.data();
  char* const end = at + text.size();
  for (const Run& run : runs_) {
    for (uint32_t i = 0; i < run.count; ++i) {
      at = std::find(at, end, '\n');
      if (run.kind != LineEndKind::lf) *at = '\r';
      at += run.kind == LineEndKind::crLf ? 2 : 1;
    }
  }
}

/// The text lacks the CR of each CR LF and has every other one. The bytes move up, so the last go first.
bool LineEndRecord::restoreCrLfs(ByteArray& text) const {
  uint64_t missing = 0;
  for (const Run& run : runs_) missing += run.kind == LineEndKind::crLf ? run.count : 0;
  const uint32_t size = text.size();
  if (missing == 0) return true;
  if (!text.resize(size + missing)) return false;
  const char* from = text.data() + size;
  char* to = text.data() + text.size();
  auto run = runs_.rbegin();
  for (uint32_t left = run->count; from < to;) {
    *--to = *--from;
    if (*to != '\n') continue;
    while (left == 0 || run->kind == LineEndKind::cr) left = (++run)->count;
    --left;
    if (run->kind == LineEndKind::crLf) *--to = '\r';
  }
  return true;
}

namespace {

bool restoreMark(TextEncoding encoding, ByteArray& text) {
  const std::string_view mark = byteOrderMark(encoding);
  const uint32_t size = text.size();
  if (mark.empty()) return true;
  if (!text.resize(uint64_t{size} + mark.size())) return false;
  std::memmove(text.data() + mark.size(), text.data(), size);
  std::ranges::copy(mark, text.data());
  return true;
}

bool sameTexts(const FileComparison& comparison) {
  return comparison.documents[0].text.view() == comparison.documents[1].text.view();
}

}  // namespace

std::string differenceBesidesText(const FileComparison& comparison, const LineEndRecord (&lineEnds)[2]) {
  if (!sameTexts(comparison)) return {};
  const TextDocument(&documents)[2] = comparison.documents;
  // Of UTF-16 the bytes that were noted say nothing.
  const bool noted = !isUtf16(documents[0].encoding) && !isUtf16(documents[1].encoding);
  const bool inLineEnds =
      noted ? lineEnds[0] != lineEnds[1] : documents[0].lineEndKind != documents[1].lineEndKind;
  if (documents[0].encoding == documents[1].encoding) return inLineEnds ? "line ends" : "";
  return inLineEnds ? "line ends and encoding" : "encoding";
}

Result compareFileBytes(const LineEndRecord (&lineEnds)[2], const CompareOptions& options,
                        FileComparison& comparison) {
  // Unlike lines that share a key count as equal, and yet a patch has to bring them over.
  const bool differ =
      comparison.model.differingRows() > 0 || (options.comparesBytes() && !sameTexts(comparison));
  if (!differ) return Result::success;
  bool textsAreBytes = true;
  for (const int side : {0, 1}) {
    const TextDocument& document = comparison.documents[side];
    textsAreBytes = textsAreBytes && !lineEnds[side].isConverted(document.lineEndKind) &&
                    byteOrderMark(document.encoding).empty();
  }
  if (textsAreBytes) return Result::success;
  comparison.model.clear();
  for (const int side : {0, 1}) {
    TextDocument& document = comparison.documents[side];
    if (!lineEnds[side].restore(document.lineEndKind, document.text) ||
        !restoreMark(document.encoding, document.text)) {
      return Result::outOfMemory;
    }
  }
  return compareTexts(comparison.documents[0].text.view(), comparison.documents[1].text.view(), options,
                      nullptr, comparison.model);
}

}  // namespace merivane
