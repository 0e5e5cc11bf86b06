#include "engine/text_document.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "base/message_format.h"
#include "base/paths.h"
#include "base/side_by_side.h"
#include "base/system_error.h"
#include "base/utf8.h"

namespace merivane {

const char* lineEndKindName(LineEndKind kind) {
  switch (kind) {
    case LineEndKind::lf:
      return "UNIX";
    case LineEndKind::crLf:
      return "DOS";
    case LineEndKind::cr:
      return "MAC";
  }
  return "???";
}

namespace {

/// Whether these last bytes of a sample are the start of a character.
bool isCutCharacter(std::string_view bytes) {
  // What may follow depends on the first byte, but for each one of these does.
  return std::ranges::any_of(std::string_view("\x80\xBF"), [bytes](char next) {
    return utf8Length(std::string(bytes) + std::string(3, next)) > bytes.size();
  });
}

}  // namespace

bool isBinary(std::string_view sample) {
  sample = sample.substr(0, kBinarySampleSize);
  size_t notText = 0;
  for (size_t at = 0; at < sample.size();) {
    const std::string_view rest = sample.substr(at);
    const uint32_t length = utf8Length(rest);
    at += length;
    const char c = rest[0];
    if (length > 1 || static_cast<signed char>(c) >= 32 || c == '\r' || c == '\n' || c == '\t') continue;
    if (sample.size() == kBinarySampleSize && rest.size() < 4 && isCutCharacter(rest)) break;
    ++notText;
  }
  return sample.size() < 10 * notText;
}

LineEndKind detectLineEndKind(std::string_view sample) {
  constexpr int enough = 20;
  int lf = 0, crLf = 0, cr = 0;
  int seen = 0;
  bool afterCr = false;
  for (const char c : sample.substr(0, kLineEndSampleSize)) {
    if (c == '\n') {
      ++(afterCr ? crLf : lf);
      ++seen;
    } else if (afterCr) {
      ++cr;
      ++seen;
    }
    if (seen > enough) break;
    afterCr = c == '\r';
  }
  if (lf > crLf && lf >= cr) return LineEndKind::lf;
  if (cr > crLf && cr > lf) return LineEndKind::cr;
  return LineEndKind::crLf;
}

bool convertFromFile(ByteArray& bytes, LineEndKind kind, const AbortFlag* abort) {
  char* const begin = bytes.data();
  char* const end = begin + bytes.size();
  if (kind == LineEndKind::cr) {
    const bool mixed = bytes.view().find('\n') != std::string_view::npos;
    forEach<uint32_t>(0, bytes.size(), abort, [begin](uint32_t at) {
      if (begin[at] == '\r') begin[at] = '\n';
    });
    return mixed;
  }
  if (kind == LineEndKind::lf) return false;
  const auto findCr = [end](char* from) {
    void* found = from < end ? std::memchr(from, '\r', static_cast<size_t>(end - from)) : nullptr;
    return found ? static_cast<char*>(found) : end;
  };
  char* from = findCr(begin);
  char* to = from;
  for (uint32_t found = 1; from < end && (found % 4096 != 0 || !isRaised(abort)); ++found) {
    // `from` stands on a CR: it goes when an LF follows, and all up to the next CR moves down.
    if (from + 1 < end && from[1] == '\n') {
      ++from;
    } else {
      *to++ = *from++;
    }
    char* const next = findCr(from);
    const size_t length = static_cast<size_t>(next - from);
    std::memmove(to, from, length);
    to += length;
    from = next;
  }
  const auto pairs = end - to;  // as each has lost its CR
  const bool mixed = std::count(begin, to, '\n') > pairs;
  bytes.truncate(static_cast<uint32_t>(to - begin));
  return mixed;
}

bool convertToFile(std::string_view text, LineEndKind kind, bool nulToSpace, ByteArray& bytes) {
  const uint64_t lineEnds =
      kind == LineEndKind::crLf ? static_cast<uint64_t>(std::count(text.begin(), text.end(), '\n')) : 0;
  ByteArray converted;
  if (!converted.allocate(text.size() + lineEnds)) return false;
  char* to = converted.data();
  for (const char c : text) {
    if (c == '\n' && kind != LineEndKind::lf) {
      *to++ = '\r';
      if (kind == LineEndKind::cr) continue;
    }
    *to++ = c == '\0' && nulToSpace ? ' ' : c;
  }
  bytes = std::move(converted);
  return true;
}

std::string outcomeMessage(const Outcome& outcome) {
  switch (outcome.result) {
    case Result::success:
      return {};
    case Result::outOfMemory:
      return text(TextId::outOfMemory);
    case Result::cancelled:
      return text(TextId::operationAborted);
    case Result::leftPathInvalid:
      return text(TextId::leftFileNameInvalid);
    case Result::rightPathInvalid:
      return text(TextId::rightFileNameInvalid);
    case Result::leftBinary:
      return text(TextId::leftFileBinary);
    case Result::rightBinary:
      return text(TextId::rightFileBinary);
    case Result::leftUnreadable:
      return formatMessage(TextId::cannotLoadLeftFile, {systemErrorText(outcome.error)});
    case Result::rightUnreadable:
      return formatMessage(TextId::cannotLoadRightFile, {systemErrorText(outcome.error)});
    default:
      break;  // results of comparing folders
  }
  return {};
}

namespace {

/// Reads a file piece by piece and looks at the flag before each. Its reads fail once the flag is raised.
class StoppableFile final : public InputFile {
 public:
  StoppableFile(InputFile& file, const AbortFlag* abort) : file_(file), abort_(abort) {}

  /// Whether all that was read is ASCII. A piece is looked at as long as it is in the processor's cache.
  bool isAscii() const { return isAscii_; }

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    constexpr uint32_t atOnce = 1 << 18;
    got = 0;
    while (got < wanted) {
      if (isRaised(abort_)) return notEnoughStorage();
      const uint32_t piece = std::min(wanted - got, atOnce);
      uint32_t gotOfPiece = 0;
      const SystemError error = file_.read(bytes + got, piece, gotOfPiece);
      isAscii_ = isAscii_ && merivane::isAscii({bytes + got, gotOfPiece});
      got += gotOfPiece;
      if (error != 0 || gotOfPiece < piece) return error;
    }
    return 0;
  }

  uint64_t size() const override { return file_.size(); }

 private:
  InputFile& file_;
  const AbortFlag* const abort_;
  bool isAscii_ = true;
};

/// One side on its way from a path to a document.
struct Loading {
  std::unique_ptr<InputFile> file;
  ByteArray bytes;
  FileStamp stamp;
  LineEndKind lineEndKind = LineEndKind::lf;
  TextEncoding encoding = TextEncoding::ascii;
  bool mixedLineEnds = false;
  bool binary = false;
  SystemError error = 0;

  void readSample(FileSystem& files, const std::string& path) {
    stamp = files.stamp(path);
    error = files.open(path, file);
    if (error != 0) return;
    if (!bytes.allocate(kBinarySampleSize)) {
      error = notEnoughStorage();
      return;
    }
    uint32_t got = 0;
    error = file->read(bytes.data(), kBinarySampleSize, got);
    bytes.truncate(got);
    if (error != 0) return;
    encoding = encodingByMark(bytes.view());
    if (!isUtf16(encoding)) binary = isBinary(bytes.view());
    dropMark();
  }

  void readRest(const AbortFlag* abort) {
    bool beyondAscii = !isAscii(bytes.view());
    if (error == 0) {
      StoppableFile stoppable(*file, abort);
      error = readToEnd(stoppable, bytes);
      beyondAscii = beyondAscii || !stoppable.isAscii();
    }
    file.reset();
    if (error == 0) decode(beyondAscii, abort);
    if (error != 0 || binary) return;
    lineEndKind = detectLineEndKind(bytes.view());
    mixedLineEnds = convertFromFile(bytes, lineEndKind, abort);
  }

 private:
  /// While only the sample has been read there is little to move.
  void dropMark() {
    const auto mark = static_cast<uint32_t>(byteOrderMark(encoding).size());
    if (mark == 0) return;
    std::memmove(bytes.data(), bytes.data() + mark, bytes.size() - mark);
    bytes.truncate(bytes.size() - mark);
  }

  void decode(bool beyondAscii, const AbortFlag* abort) {
    if (beyondAscii && encoding == TextEncoding::ascii) encoding = detectEncoding(bytes.view(), abort);
    if (!isUtf16(encoding)) return;
    const Decoded decoded = decodeUtf16(bytes.view(), encoding, bytes, abort);
    if (decoded == Decoded::outOfMemory) error = notEnoughStorage();
    binary = decoded == Decoded::malformed || isBinary(bytes.view());
  }
};

Outcome load(FileSystem& files, const std::string (&paths)[2], TextDocument (&documents)[2],
             const AbortFlag* abort) {
  constexpr Result invalid[] = {Result::leftPathInvalid, Result::rightPathInvalid};
  constexpr Result binary[] = {Result::leftBinary, Result::rightBinary};
  constexpr Result unreadable[] = {Result::leftUnreadable, Result::rightUnreadable};

  for (const int side : {0, 1}) {
    // A file that is there has a valid name, also where the platform's rules are wider than ours.
    if (!IsValidFilePath(paths[side]) && files.kind(paths[side]) == FileKind::none) return {invalid[side]};
  }
  Loading loading[2];
  for (const int side : {0, 1}) {
    loading[side].readSample(files, paths[side]);
    if (loading[side].binary) return {binary[side]};
  }
  for (Loading& side : loading) {
    if (side.error == 0 && side.file->size() > ByteArray::maxSize) side.error = kFileTooLarge;
  }
  // Nothing is read if the first failure is known already.
  if (loading[0].error != 0) return {unreadable[0], loading[0].error};
  forBothSides(loading[0].stamp.size + loading[1].stamp.size,
               [&](int side) { loading[side].readRest(abort); });
  if (isRaised(abort)) return {Result::cancelled};
  for (const int side : {0, 1}) {
    if (loading[side].binary) return {binary[side]};  // UTF-16, which is known only now
  }
  TextDocument loaded[2];
  for (const int side : {0, 1}) {
    if (loading[side].error != 0) return {unreadable[side], loading[side].error};
    loaded[side].lineEndKind = loading[side].lineEndKind;
    loaded[side].encoding = loading[side].encoding;
    loaded[side].mixedLineEnds = loading[side].mixedLineEnds;
    loaded[side].stamp = loading[side].stamp;
    loaded[side].readOnly = !files.isWritable(paths[side]);
    loaded[side].text = std::move(loading[side].bytes);
  }
  for (const int side : {0, 1}) documents[side] = std::move(loaded[side]);
  return {};
}

}  // namespace

Outcome loadDocuments(FileSystem& files, const std::string (&paths)[2], TextDocument (&documents)[2],
                      const AbortFlag* abort) {
  try {
    return load(files, paths, documents, abort);
  } catch (const std::bad_alloc&) {
    return {Result::outOfMemory};
  }
}

}  // namespace merivane
