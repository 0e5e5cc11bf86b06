#include "shell/history_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/memory_values.h"

namespace merivane {
namespace {

using testing::ElementsAre;

struct CountingView final : HistoryView {
  void refill(const HistoryList& list) override { shown = list.entries(), ++refills; }
  std::vector<std::string> shown;
  int refills = 0;
};

TEST(HistoryList, AddedNamesMoveToTheFront) {
  HistoryList list;
  CountingView view;
  list.attach(view);
  for (const char* name : {"a", "b", "", "c", "B"}) list.Add(name);
  EXPECT_THAT(list.entries(), ElementsAre("B", "c", "a"));
  EXPECT_EQ(view.shown, list.entries());
  EXPECT_EQ(view.refills, 4);
  list.Add("b");  // the newest already: not even its case changes
  EXPECT_EQ(list.First(), "B");
  EXPECT_EQ(view.refills, 4);
  list.Add(list.entries().back());
  EXPECT_THAT(list.entries(), ElementsAre("a", "B", "c"));
  list.detach(view);
  list.Add("d");
  EXPECT_EQ(view.refills, 5);
}

TEST(HistoryList, CaseCountsOnlyWhereItIsAskedFor) {
  HistoryList list;
  EXPECT_EQ(list.First(), "");
  list.SetCaseSensitive(true);
  list.Add("*.cpp");
  list.Add("*.CPP");
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.FindCompletion("*.c"), 1);
  list.SetCaseSensitive(false);
  list.Add("\xC4");
  list.Add("\xE4");  // beyond A to Z nothing is folded
  EXPECT_EQ(list.Count(), 4);
  list.Add("*.cpp");
  EXPECT_EQ(list.Count(), 4);
}

TEST(HistoryList, TheMaximumDropsTheOldest) {
  HistoryList list;
  for (int i = 0; i < 12; ++i) list.Add(std::to_string(i));
  EXPECT_EQ(list.Count(), 10);
  EXPECT_EQ(list.entries().back(), "2");
  CountingView view;
  list.attach(view);
  list.SetMaximum(2);
  EXPECT_THAT(view.shown, ElementsAre("11", "10"));
  list.SetMaximum(0);
  for (int i = 0; i < 100; ++i) list.Add(std::to_string(i));
  EXPECT_EQ(list.Count(), 100);
}

TEST(HistoryList, MissingAndStaleNumbersAreHarmless) {
  MemoryValues values;
  SettingsStore store(values);
  store.SetNumber("H.count", 5);
  for (const int i : {0, 1, 3, 4, 7}) store.SetString("H." + std::to_string(i), "name" + std::to_string(i));
  HistoryList list;
  list.SetName("H");
  list.SetMaximum(2);
  list.Load(store);  // the maximum does not hold while reading
  EXPECT_THAT(list.entries(), ElementsAre("name0", "name1", "name3", "name4"));
  list.Save(store);
  EXPECT_EQ(store.GetNumber("H.count", 0), 4);
  EXPECT_EQ(store.GetString("H.3"), "name4");
  EXPECT_EQ(store.GetString("H.4"), "name4");
  EXPECT_EQ(store.GetString("H.7"), "name7");
  for (const int32_t count : {-1, INT32_MIN}) {
    store.SetNumber("H.count", count);
    list.Load(store);
    EXPECT_EQ(list.Count(), 0);
  }
  store.SetNumber("H.count", INT32_MAX);
  list.Load(store);
  EXPECT_EQ(list.Count(), 6);
}

TEST(HistoryList, TheShortestThenNewestCompletes) {
  HistoryList list;
  EXPECT_EQ(list.FindCompletion(""), -1);
  for (const char* name : {"C:\\dir\\long.txt", "c:\\dir\\a.c", "C:\\DIR\\b.c", "D:\\x"}) list.Add(name);
  EXPECT_EQ(list.entries()[1], "C:\\DIR\\b.c");
  EXPECT_EQ(list.FindCompletion("c:\\d"), 1);
  EXPECT_EQ(list.FindCompletion("c:\\dir\\A"), 2);
  EXPECT_EQ(list.FindCompletion("C:\\dir\\l"), 3);
  EXPECT_EQ(list.FindCompletion("D:\\x"), 0);
  EXPECT_EQ(list.FindCompletion("D:\\xy"), -1);
  EXPECT_EQ(list.FindCompletion(""), 0);
}

}  // namespace
}  // namespace merivane
