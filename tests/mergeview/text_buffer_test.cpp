#include "mergeview/text_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/random.h"

namespace merivane {
namespace {

TEST(TextBuffer, BehavesAsAStringOnRandomOperations) {
  Random random(1);
  std::string bytes(10, '\n');
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  TextBuffer buffer;
  std::string model;
  for (int step = 0; step < 20000; ++step) {
    const auto size = static_cast<uint32_t>(model.size());
    const uint32_t a = random.below(size + 1), b = a + random.below(size - a + 1);
    const std::string expected = model.substr(a, b - a);
    switch (random.below(7)) {
      case 0:
      case 1: {
        const std::string text = random.text(bytes, random.below(20) == 0 ? 5000 : 30);
        ASSERT_TRUE(buffer.insert(a, text.data(), static_cast<uint32_t>(text.size())));
        model.insert(a, text);
        break;
      }
      case 2: {
        const uint32_t n = std::min(b - a, random.below(20) == 0 ? 10000 : 30u), before = buffer.allocated();
        buffer.erase(a, n);
        model.erase(a, n);
        ASSERT_LE(buffer.allocated(), std::max(buffer.size() + TextBuffer::kGapQuantum, before));
        break;
      }
      case 3:
        // More than positions can count: refused before a byte is read.
        ASSERT_FALSE(buffer.insert(a, nullptr, 0xFFFFFFFF));
        break;
      case 4: {
        ByteArray copy;
        ASSERT_TRUE(buffer.extract(a, b, copy));
        ASSERT_EQ(copy.view(), expected);
        break;
      }
      case 5:
        ASSERT_EQ(buffer.view(a, b), expected);
        break;
      default: {
        const size_t end = model.find('\n', a);
        ASSERT_EQ(buffer.extractLine(a), model.substr(a, end == std::string::npos ? end : end + 1 - a));
        if (a == size) break;
        buffer.setCharAt(a, model[a] = 'x');
        ASSERT_EQ(buffer.charAt(a), 'x');
        ASSERT_EQ(buffer.charBefore(size), model.back());
      }
    }
    const auto [head, tail] = buffer.stretch(0, buffer.size());
    ASSERT_EQ(std::string(head) + std::string(tail), model);
  }
  TextBuffer copy;
  ASSERT_TRUE(copy.copyFrom(buffer));
  EXPECT_EQ(copy.view(0, copy.size()), model);
  EXPECT_EQ(copy.allocated(), buffer.allocated());
}

}  // namespace
}  // namespace merivane
