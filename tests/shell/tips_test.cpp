#include "shell/tips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <tuple>

#include "tests/support/memory_values.h"

namespace merivane {
namespace {

TEST(TipsTest, TipsTakeTurnsFromRunToRun) {
  MemoryValues values;
  SettingsStore store(values);
  const std::string_view tips = "One\r\nTwo\\nlines\\ \\\\here\t7\r\nThree\tx\r\n";
  const Tip first{"One"}, second{"Two\nlines here", 7}, third{"Three"};
  const std::tuple<int32_t, Tip, int32_t> cases[] = {
      {1, second, 2}, {2, third, 0}, {3, first, 1}, {99, first, 1}, {-1, first, 1}};
  for (const auto& [index, tip, nextIndex] : cases) {
    store.SetNumber("TipOfTheDay.TipIndex", index);
    TipsOfTheDay run(tips, store);
    EXPECT_EQ(run.next(), tip) << index;
    EXPECT_EQ(store.GetNumber("TipOfTheDay.TipIndex", -1), nextIndex) << index;
  }
  TipsOfTheDay run(tips, store);
  for (const Tip& tip : {second, third, first, second}) EXPECT_EQ(run.next(), tip);
  EXPECT_EQ(TipsOfTheDay("", store).next(), std::nullopt);
}

TEST(TipsTest, TheProgramsTipsAreManyAndShort) {
  std::ifstream file(MERIVANE_SOURCE_DIR "/resources/tips.txt", std::ios::binary);
  const std::string tips((std::istreambuf_iterator<char>(file)), {});
  const int64_t lines = std::count(tips.begin(), tips.end(), '\n');
  EXPECT_GE(lines, 25);
  MemoryValues values;
  SettingsStore store(values);
  TipsOfTheDay run(tips, store);
  for (auto left = lines; left > 0; --left) {
    const Tip tip = *run.next();
    EXPECT_NE(tipPicture(tip.picture), tipPicture(0)) << tip.text;
    EXPECT_LE(tip.text.size(), 200u) << "room for six lines: " << tip.text;
  }
}

}  // namespace
}  // namespace merivane
