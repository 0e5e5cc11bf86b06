#include "engine/text_document.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

constexpr LineEndKind allKinds[] = {LineEndKind::lf, LineEndKind::crLf, LineEndKind::cr};

std::string repeated(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

std::string fromFile(std::string_view file, LineEndKind kind) {
  ByteArray bytes;
  EXPECT_TRUE(bytes.assign(file));
  convertFromFile(bytes, kind);
  return std::string(bytes.view());
}

std::string toFile(std::string_view text, LineEndKind kind, bool nulToSpace = false) {
  ByteArray bytes;
  EXPECT_TRUE(convertToFile(text, kind, nulToSpace, bytes));
  return std::string(bytes.view());
}

TEST(BinaryTest, IsMoreThanATenthOfTheSample) {
  const auto sample = [](int notText, char c, int size = 1024) {
    return std::string(static_cast<size_t>(notText), c) +
           std::string(static_cast<size_t>(size - notText), 'a');
  };
  for (const char c : {'\0', '\x1f', '\x80', '\xff'}) {
    EXPECT_FALSE(isBinary(sample(102, c)));
    EXPECT_TRUE(isBinary(sample(103, c)));
    EXPECT_FALSE(isBinary(sample(1, c, 10)));
    EXPECT_TRUE(isBinary(sample(1, c, 9)));
    EXPECT_FALSE(isBinary(sample(102, c) + std::string(9000, c)))
        << "what is behind the sample does not count";
  }
  for (const char c : {' ', '\t', '\n', '\r', '\x7f'}) EXPECT_FALSE(isBinary(sample(1024, c)));
  EXPECT_FALSE(isBinary(""));
}

TEST(LineEnds, AreToldFromTheFirstOnes) {
  const auto lf = LineEndKind::lf, crLf = LineEndKind::crLf, cr = LineEndKind::cr;
  const std::string long64K(65535, 'a');
  struct Case {
    std::string file;
    LineEndKind kind;
  };
  const Case cases[] = {
      {"", crLf},
      {"a", crLf},
      {"a\n", lf},
      {"a\r\n", crLf},
      {"a\rb", cr},
      {"a\r", crLf},  // nothing follows that could tell
      {"a\rb\r\nc", crLf},
      {"a\nb\r\nc", crLf},
      {"a\nb\rc", lf},
      {"a\nb\rc\rd", cr},
      {"a\nb\rc\r\nd", crLf},
      {"a\r\r\nb\r\r\nc\rd", cr},  // five: three CRs, two CR LFs
      // The walk ends with the 21st line end.
      {repeated("a\n", 10) + repeated("b\r\n", 11) + repeated("c\n", 50), crLf},
      {repeated("a\n", 10) + repeated("b\r\n", 10) + repeated("c\n", 50), lf},
      {repeated("a\n", 10) + repeated("b\r", 11) + repeated("c\n", 50), cr},
      {"a\ra" + repeated("b\r\n", 10) + repeated("c\n", 50), crLf},
      // The sample ends between the CR and its LF.
      {long64K + "\r\n", crLf},
      {"a\n" + long64K.substr(2) + "\r\n", lf},
      {long64K + "a\n", crLf},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(detectLineEndKind(c.file), c.kind) << testing::PrintToString(c.file.substr(0, 200));
  }
}

TEST(LineEnds, BecomeLfInMemory) {
  struct Case {
    std::string file, lf, crLf, cr;  // the file, and what it becomes under each kind
  };
  const Case cases[] = {
      {"", "", "", ""},
      {"a\nb", "a\nb", "a\nb", "a\nb"},
      {"a\r\nb\r\n", "a\r\nb\r\n", "a\nb\n", "a\n\nb\n\n"},
      {"a\rb\r\nc\r", "a\rb\r\nc\r", "a\rb\nc\r", "a\nb\n\nc\n"},
      {"\r\r\n\r", "\r\r\n\r", "\r\n\r", "\n\n\n\n"},
      {"\r\n\r\n\n\r\r", "\r\n\r\n\n\r\r", "\n\n\n\r\r", "\n\n\n\n\n\n\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(fromFile(c.file, LineEndKind::lf), c.lf);
    EXPECT_EQ(fromFile(c.file, LineEndKind::crLf), c.crLf);
    EXPECT_EQ(fromFile(c.file, LineEndKind::cr), c.cr);
  }
}

TEST(LineEnds, ComeBackInTheFile) {
  EXPECT_EQ(toFile("a\n\nb", LineEndKind::lf), "a\n\nb");
  EXPECT_EQ(toFile("a\n\nb", LineEndKind::crLf), "a\r\n\r\nb");
  EXPECT_EQ(toFile("a\n\nb", LineEndKind::cr), "a\r\rb");
  EXPECT_EQ(toFile(std::string_view("\0a\n\0", 4), LineEndKind::crLf, true), " a\r\n ");
  // Longer by far than a tenth more.
  EXPECT_EQ(toFile(repeated("\n", 1000), LineEndKind::crLf), repeated("\r\n", 1000));

  std::string allBytes;
  for (int c = 0; c < 256; ++c) allBytes += static_cast<char>(c);
  for (const LineEndKind kind : allKinds) {
    // A text in memory holds no CR when CR is what its line ends become.
    std::string text = allBytes + "\n\n" + allBytes;
    if (kind == LineEndKind::cr) std::erase(text, '\r');
    EXPECT_EQ(fromFile(toFile(text, kind), kind), text);
  }
  Random random(3);
  for (int i = 0; i < 2000; ++i) {
    const std::string text = random.text("\n\nab", 30);
    for (const LineEndKind kind : allKinds) ASSERT_EQ(fromFile(toFile(text, kind), kind), text);
  }
}

TEST(LineEnds, ConversionLeavesTheBytesWhenMemoryRunsOut) {
  ByteArray bytes;
  failEachAllocation([&] { ASSERT_TRUE(bytes.assign("as it was")); },
                     [&] { return convertToFile("a\nb", LineEndKind::crLf, false, bytes); },
                     [&](bool converted) {
                       EXPECT_FALSE(converted);
                       EXPECT_EQ(bytes.view(), "as it was");
                     });
  EXPECT_EQ(bytes.view(), "a\r\nb");
}

class Loading : public testing::Test {
 protected:
  void SetUp() override {
    files_.files["text"] = {"left\r\nlines\r\n"};
    files_.files["locked"] = {"right\nlines", false};
    files_.files["binary"] = {"\1\2\3"};
    files_.files["pipe"] = {std::string(5000, 'x') + "\n" + std::string(70000, 'y'), true, false};
    files_.folders.insert("folder");
    for (TextDocument& document : documents_) ASSERT_TRUE(document.text.assign("earlier"));
  }

  Outcome load(FileSystem& files, const std::string& left, const std::string& right) {
    return loadDocuments(files, {left, right}, documents_);
  }

  void expectEarlierDocuments() {
    for (const TextDocument& document : documents_) EXPECT_EQ(document.text.view(), "earlier");
  }

  MemoryFiles files_;
  TextDocument documents_[2];
};

TEST_F(Loading, TakesTextKindAndRights) {
  ASSERT_TRUE(load(files_, "text", "locked").succeeded());
  EXPECT_EQ(documents_[0].text.view(), "left\nlines\n");
  EXPECT_EQ(documents_[0].lineEndKind, LineEndKind::crLf);
  EXPECT_FALSE(documents_[0].readOnly);
  EXPECT_EQ(documents_[1].text.view(), "right\nlines");
  EXPECT_EQ(documents_[1].lineEndKind, LineEndKind::lf);
  EXPECT_TRUE(documents_[1].readOnly);
  ASSERT_TRUE(load(files_, "pipe", "pipe").succeeded());
  EXPECT_TRUE(documents_[1].text.view() == files_.files["pipe"].contents);
}

TEST_F(Loading, StopsAtTheFirstCheckThatFails) {
  struct Case {
    std::string left, right;
    Result result;
    std::string message;
  };
  const std::string reason = systemErrorText(MemoryFiles::notFound);
  const std::string leftBinary = "The left file is a binary data file. Merivane can only compare text files.";
  const std::string rightBinary =
      "The right file is a binary data file. Merivane can only compare text files.";
  const Case cases[] = {
      {"", "", Result::leftPathInvalid, "The left file name is invalid."},
      {"a?", "binary", Result::leftPathInvalid, "The left file name is invalid."},
      {"binary", "a:b", Result::rightPathInvalid, "The right file name is invalid."},
      {"missing", "C:", Result::rightPathInvalid, "The right file name is invalid."},
      {"binary", "binary", Result::leftBinary, leftBinary},
      {"binary", "missing", Result::leftBinary, leftBinary},
      {"missing", "binary", Result::rightBinary, rightBinary},
      {"missing", "missing", Result::leftUnreadable, "Cannot load left file.\n\nReason: " + reason},
      {"text", "missing", Result::rightUnreadable, "Cannot load right file.\n\nReason: " + reason},
      {"text", "folder", Result::rightUnreadable,
       "Cannot load right file.\n\nReason: " + systemErrorText(MemoryFiles::denied)},
  };
  for (const Case& c : cases) {
    const Outcome outcome = load(files_, c.left, c.right);
    EXPECT_EQ(outcome.result, c.result) << c.left << ", " << c.right;
    EXPECT_EQ(outcomeMessage(outcome), c.message);
    expectEarlierDocuments();
  }
  EXPECT_EQ(outcomeMessage({}), "");
  EXPECT_EQ(outcomeMessage({Result::cancelled}), "Operation aborted.");
}

TEST_F(Loading, LeavesTheDocumentsWhenAnythingFails) {
  uint32_t failing = 0;
  for (;; ++failing) {
    FailingFiles files(files_, failing, MemoryFiles::denied);
    const Outcome outcome = load(files, "text", "pipe");
    if (!files.hasFailed()) break;
    EXPECT_TRUE(outcome.result == Result::leftUnreadable || outcome.result == Result::rightUnreadable);
    EXPECT_EQ(outcome.error, MemoryFiles::denied);
    expectEarlierDocuments();
  }
  EXPECT_GE(failing, 6u) << "an open and two reads a side";

  const std::string pipe = files_.files["pipe"].contents;
  failEachAllocation(
      [&] { SetUp(); },  //
      [&] { return load(files_, "text", "pipe"); },
      [&](const Outcome& outcome) {
        // Giving memory back may fail and nobody need care.
        if (outcome.succeeded()) {
          EXPECT_EQ(documents_[0].text.view(), "left\nlines\n");
          EXPECT_TRUE(documents_[1].text.view() == pipe);
        } else {
          EXPECT_TRUE(outcome.result == Result::outOfMemory || outcome.error == notEnoughStorage());
          expectEarlierDocuments();
        }
      });
}

}  // namespace
}  // namespace merivane
