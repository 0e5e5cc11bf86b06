#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/abort_flag.h"
#include "base/byte_array.h"
#include "base/file_system.h"
#include "base/result.h"
#include "engine/text_encoding.h"

namespace merivane {

enum class LineEndKind : int32_t { lf = 0, crLf = 1, cr = 2 };

/// Returns "UNIX", "DOS" or "MAC", and "???" for any other value.
const char* lineEndKindName(LineEndKind kind);

/// A file's text as it was read. In memory LF is the only line end, whatever the file had; the last line need
/// not have one. A byte order mark is not part of the text, and UTF-16 has become UTF-8; all other bytes are
/// the file's.
struct TextDocument {
  ByteArray text;
  LineEndKind lineEndKind = LineEndKind::crLf;
  TextEncoding encoding = TextEncoding::ascii;
  bool mixedLineEnds = false;  // the file has others as well, which saving makes the document's kind
  bool readOnly = false;       // the file exists but may not be opened for writing
  FileStamp stamp;             // the file's before it was read
};

constexpr uint32_t kBinarySampleSize = 1024;
constexpr uint32_t kLineEndSampleSize = 65536;

/// Whether more than a tenth of a file's first kBinarySampleSize bytes are not text. Those of well-formed
/// UTF-8 are, also where the sample ends within a character.
bool isBinary(std::string_view sample);

/// Returns the kind of which there are most among the first line ends of a file's first kLineEndSampleSize
/// bytes; crLf in doubt.
LineEndKind detectLineEndKind(std::string_view sample);

/// Turns a file's bytes into the in-memory form, in place and without further memory. If the flag is raised
/// meanwhile, the bytes are undefined. Returns whether convertToFile() makes other line ends of some: those
/// that were LF alone where the kind is another.
bool convertFromFile(ByteArray& bytes, LineEndKind kind, const AbortFlag* abort = nullptr);

/// Turns in-memory text into a file's bytes. Returns false, with `bytes` unchanged, when memory runs out or
/// the result does not fit.
bool convertToFile(std::string_view text, LineEndKind kind, bool nulToSpace, ByteArray& bytes);

/// The result of loading or comparing two files.
struct Outcome {
  Result result = Result::success;
  SystemError error = 0;  // why, if a file is unreadable

  bool succeeded() const { return result == Result::success; }
};

/// Returns what the user is told of an outcome; an empty text for success.
std::string outcomeMessage(const Outcome& outcome);

/// Loads both files. The checks run in this order: left path, right path, left binary, right binary, left
/// load, right load. The first that fails is the outcome, and the documents stay as they were. Each file is
/// opened and read once, so that what was tested is what is compared. A file of more than
/// ByteArray::maxSize bytes is unreadable with kFileTooLarge, and is not read; one that does not fit in
/// memory is with notEnoughStorage(). A null flag never aborts.
Outcome loadDocuments(FileSystem& files, const std::string (&paths)[2], TextDocument (&documents)[2],
                      const AbortFlag* abort = nullptr);

}  // namespace merivane
