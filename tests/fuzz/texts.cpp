#include <cstdio>
#include <cstdlib>

#include "base/utf8.h"
#include "engine/edit_script.h"
#include "engine/text_encoding.h"
#include "tests/support/edit_run.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

void require(const std::string& fault) {
  if (fault.empty()) return;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}

void checkScript(std::span<const char> left, std::span<const char> right) {
  EditScript script;
  if (!findEditScript(left, right, nullptr, script)) require("a search that was not to be aborted");
  const ReferenceDiff<char> reference(left, right);
  for (const int side : {0, 1}) {
    if (script.changed[side] != reference.changed[side]) require("not the reference script");
  }
}

/// What is decoded comes back, and whatever the bytes are, what is encoded can be decoded.
void checkEncoding(std::string_view bytes) {
  ByteArray text, units;
  const TextEncoding marked = encodingByMark(bytes);
  const std::string_view unmarked = bytes.substr(byteOrderMark(marked).size());
  if (isUtf16(marked) && decodeUtf16(unmarked, marked, text) == Decoded::whole) {
    if (!isUtf8(text.view())) require("UTF-16 became malformed UTF-8");
    if (!encodeUtf16(text.view(), marked, units) || units.view() != unmarked)
      require("UTF-16 did not come back");
  }
  const TextEncoding found = detectEncoding(bytes);
  if ((found == TextEncoding::singleByte) == isUtf8(bytes)) require("not the encoding");
  for (const auto encoding : {TextEncoding::utf16Le, TextEncoding::utf16Be}) {
    if (!encodeUtf16(bytes, encoding, units) || decodeUtf16(units.view(), encoding, text) != Decoded::whole) {
      require("malformed UTF-16");
    }
    if (found != TextEncoding::singleByte && text.view() != bytes) require("UTF-8 did not come back");
  }
}

}  // namespace
}  // namespace merivane

/// A byte of options, two of lengths, the left text and the right; the rest chooses what the user does to
/// them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace merivane;
  if (size < 3) return 0;
  const CompareOptions options{(data[0] & 16) != 0, data[0] & 15u, (data[0] & 32) == 0};
  std::string_view bytes(reinterpret_cast<const char*>(data + 3), size - 3);
  const auto take = [&bytes](size_t length) {
    const std::string_view taken = bytes.substr(0, length);
    bytes.remove_prefix(taken.size());
    return taken;
  };
  const auto below = [&take](uint32_t bound) {
    const std::string_view byte = take(1);
    return byte.empty() ? 0u : static_cast<uint8_t>(byte.front()) % bound;
  };
  const std::string_view left = take(data[1]), right = take(data[2]);
  checkScript(left, right);
  checkEncoding(left);
  EditRun run(left, right, options);
  require(run.fault());
  // No more steps than the history holds, of two characters each.
  for (int step = 0; step < 120 && !bytes.empty(); ++step) {
    run.step(below);
    require(run.fault());
  }
  require(run.undoAndRedoAll());
  return 0;
}
