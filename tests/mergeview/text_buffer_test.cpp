#include "mergeview/text_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace merivane {
namespace {

std::string read(const TextBuffer& buffer, uint32_t a, uint32_t b) {
  const auto [head, tail] = buffer.stretch(a, b);
  return std::string(head) + std::string(tail);
}

std::string read(const TextBuffer& buffer) { return read(buffer, 0, buffer.size()); }

TEST(TextBuffer, BehavesAsAStringOnRandomOperations) {
  std::mt19937 random(1);
  const auto below = [&](uint32_t limit) { return random() % limit; };
  TextBuffer buffer;
  std::string model;
  for (int step = 0; step < 20000; ++step) {
    const uint32_t size = static_cast<uint32_t>(model.size());
    const uint32_t a = below(size + 1);
    const uint32_t b = a + below(size - a + 1);
    switch (below(8)) {
      case 0:
      case 1:
      case 2: {
        std::string bytes(below(below(20) == 0 ? 5000 : 30), '\0');
        for (char& c : bytes) c = below(9) == 0 ? '\n' : static_cast<char>(below(256));
        ASSERT_TRUE(buffer.insert(a, bytes.data(), static_cast<uint32_t>(bytes.size())));
        model.insert(a, bytes);
        break;
      }
      case 3: {
        const uint32_t n = std::min(b - a, below(20) == 0 ? 10000 : 30u);
        const uint32_t before = buffer.allocated();
        buffer.erase(a, n);
        model.erase(a, n);
        ASSERT_LE(buffer.allocated(), std::max(buffer.size() + TextBuffer::kGapQuantum, before));
        break;
      }
      case 4:
        // More than positions can count: refused before a byte is read.
        ASSERT_FALSE(buffer.insert(a, nullptr, 0xFFFFFFFF));
        break;
      case 5: {
        ByteArray copy;
        ASSERT_TRUE(buffer.extract(a, b, copy));
        ASSERT_EQ(copy.view(), std::string_view(model).substr(a, b - a));
        break;
      }
      case 6:
        ASSERT_EQ(buffer.view(a, b), std::string_view(model).substr(a, b - a));
        break;
      case 7: {
        const size_t end = model.find('\n', a);
        ASSERT_EQ(buffer.extractLine(a),
                  std::string_view(model).substr(a, end == std::string::npos ? end : end + 1 - a));
        if (a < size) {
          buffer.setCharAt(a, 'x');
          model[a] = 'x';
          ASSERT_EQ(buffer.charAt(a), 'x');
          ASSERT_EQ(buffer.charBefore(size), model.back());
        }
        break;
      }
    }
    ASSERT_EQ(read(buffer, a > buffer.size() ? 0 : a, buffer.size()), model.substr(a > model.size() ? 0 : a));
  }
  TextBuffer copy;
  ASSERT_TRUE(copy.copyFrom(buffer));
  EXPECT_EQ(read(copy), model);
  EXPECT_EQ(copy.allocated(), buffer.allocated());
}

TEST(TextBuffer, AllocatesByTheQuantum) {
  TextBuffer buffer;
  EXPECT_EQ(buffer.allocated(), 2048u);
  const std::string text(5000, 'a');
  EXPECT_TRUE(buffer.insert(0, text.data(), 2048));
  EXPECT_EQ(buffer.allocated(), 2048u);
  EXPECT_TRUE(buffer.insert(0, text.data(), 1));
  EXPECT_EQ(buffer.allocated(), 2049u + 2048u);
  EXPECT_TRUE(buffer.insert(7, text.data(), 5000));
  EXPECT_EQ(buffer.allocated(), 7049u + 2048u);
  buffer.erase(3, 100);
  EXPECT_EQ(buffer.allocated(), 6949u + 2048u);
  buffer.erase(0, buffer.size());
  EXPECT_EQ(buffer.allocated(), 2048u);

  ByteArray loaded;
  ASSERT_TRUE(loaded.assign("one\ntwo"));
  const char* const bytes = loaded.data();
  buffer.take(std::move(loaded));
  EXPECT_EQ(buffer.view(0, 7).data(), bytes);
  EXPECT_EQ(buffer.extractLine(4), "two");
  EXPECT_EQ(buffer.extractLine(7), "");
  EXPECT_TRUE(buffer.insert(3, "!", 1));
  EXPECT_EQ(read(buffer), "one!\ntwo");
}

}  // namespace
}  // namespace merivane
