#include "shell/tips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/memory_values.h"

namespace merivane {
namespace {

TEST(TipsTest, TipsTakeTurnsFromRunToRun) {
  MemoryValues values;
  SettingsStore store(values);
  const std::string_view tips = "One\r\nTwo\\nlines\\ \\\\here\t7\r\nThree\tx\r\n";
  const Tip first{"One"}, second{"Two\nlines here", 7}, third{"Three"};
  const struct {
    int32_t index;
    Tip tip;
    int32_t nextIndex;
  } cases[] = {{0, first, 1}, {1, second, 2}, {2, third, 0}, {3, first, 1}, {99, first, 1}, {-1, first, 1}};
  for (const auto& c : cases) {
    store.SetNumber("TipOfTheDay.TipIndex", c.index);
    TipsOfTheDay run(tips, store);
    EXPECT_EQ(run.next(), c.tip) << c.index;
    EXPECT_EQ(store.GetNumber("TipOfTheDay.TipIndex", -1), c.nextIndex) << c.index;
  }
  TipsOfTheDay run(tips, store);
  for (const Tip& tip : {second, third, first, second}) EXPECT_EQ(run.next(), tip);
  EXPECT_EQ(TipsOfTheDay("", store).next(), std::nullopt);
  TipsOfTheDay unended("One\nTwo", store);
  EXPECT_EQ(unended.next(), first) << "the index is 2";
}

TEST(TipsTest, TheProgramsTipsAreManyAndShort) {
  std::ifstream file(MERIVANE_SOURCE_DIR "/resources/tips.txt", std::ios::binary);
  const std::string tips((std::istreambuf_iterator<char>(file)), {});
  const int64_t lines = std::count(tips.begin(), tips.end(), '\n');
  EXPECT_GE(lines, 25);
  EXPECT_EQ(std::count(tips.begin(), tips.end(), '\r'), lines);
  MemoryValues values;
  SettingsStore store(values);
  TipsOfTheDay run(tips, store);
  std::set<std::string> different;
  for (auto left = lines; left > 0; --left) {
    const Tip tip = *run.next();
    different.insert(tip.text);
    EXPECT_GT(tip.picture, 0) << tip.text;
    EXPECT_NE(tipPicture(tip.picture), tipPicture(0)) << tip.text;
    EXPECT_LE(tip.text.size(), 200u) << "room for six lines: " << tip.text;
    EXPECT_TRUE(std::ranges::all_of(tip.text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
  }
  EXPECT_EQ(static_cast<int64_t>(different.size()), lines);
}

}  // namespace
}  // namespace merivane
