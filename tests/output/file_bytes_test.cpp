#include "output/file_bytes.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/random.h"

namespace merivane {
namespace {

TEST(LineEndRecord, GivesTheBytesOfEveryFileBack) {
  Random random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string file;
    while (random.below(20) > 0) file += "\r\r\r\n\n\nab"[random.below(8)];
    LineEndRecord whole, pieces;
    whole.note(file);
    for (size_t at = 0; at < file.size();) {
      const size_t length = random.below(4);  // also nothing at all
      pieces.note(std::string_view(file).substr(at, length));
      at += length;
    }
    ASSERT_EQ(whole, pieces) << testing::PrintToString(file);
    for (const auto kind : {LineEndKind::lf, LineEndKind::crLf, LineEndKind::cr}) {
      ByteArray text;
      ASSERT_TRUE(text.assign(file));
      convertFromFile(text, kind);
      ASSERT_EQ(whole.isConverted(kind), text.view() != file) << testing::PrintToString(file);
      ASSERT_TRUE(whole.restore(kind, text));
      ASSERT_EQ(text.view(), file);
    }
  }
}

}  // namespace
}  // namespace merivane
