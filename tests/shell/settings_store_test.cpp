#include "shell/settings_store.h"

#include <gtest/gtest.h>

#include "tests/support/memory_values.h"

namespace merivane {
namespace {

using namespace std::string_literals;

TEST(SettingsStore, NumbersAreAnyFourBytesAtMost) {
  struct Case {
    ValueType type;
    std::string bytes;
    int32_t number;
  };
  const Case cases[] = {
      {ValueType::number, "\x04\x03\x02\x01"s, 0x01020304},
      {ValueType::number, "\xFE\xFF\xFF\xFF"s, -2},
      {ValueType::text, "abc\0"s, 0x00636261},
      {ValueType::text, "7\0"s, 0x37},
      {ValueType::number, ""s, 0},
      {ValueType::text, "1234\0"s, 99},
      {ValueType::number, "\x01\0\0\0\0\0\0\0"s, 99},
  };
  MemoryValues values;
  SettingsStore store(values);
  for (const Case& c : cases) {
    values.write("N", c.type, c.bytes);
    EXPECT_EQ(store.GetNumber("N", 99), c.number) << testing::PrintToString(c.bytes);
  }
  EXPECT_EQ(store.GetNumber("Absent", -5), -5);
  for (const int32_t number : {0, -1, INT32_MIN, 0x12345678}) {
    EXPECT_TRUE(store.SetNumber("N", number));
    EXPECT_EQ(store.GetNumber("N", 99), number);
  }
  EXPECT_EQ(values.values["n"], (MemoryValues::Value{ValueType::number, "\x78\x56\x34\x12"}));
}

TEST(SettingsStore, TextsEndAtTheirNulOrTheirLastByte) {
  MemoryValues values;
  SettingsStore store(values);
  EXPECT_EQ(store.GetString("T"), std::nullopt);
  EXPECT_TRUE(store.SetString("T", "caf\xE9"));
  EXPECT_EQ(values.values["t"], (MemoryValues::Value{ValueType::text, "caf\xE9\0"s}));
  EXPECT_EQ(store.GetString("T"), "caf\xE9");
  values.write("T", ValueType::text, "open end");
  EXPECT_EQ(store.GetString("T"), "open end");
  values.write("T", ValueType::text, "a\0b\0"s);
  EXPECT_EQ(store.GetString("T"), "a");
  values.write("T", ValueType::text, "");
  EXPECT_EQ(store.GetString("T"), "");
}

TEST(SettingsStore, AnyPresentTextButTrueIsFalse) {
  MemoryValues values;
  SettingsStore store(values);
  EXPECT_TRUE(store.GetBool("B", true));
  EXPECT_FALSE(store.GetBool("B", false));
  for (const char* text : {"TRUE", "True", "true ", "yes", "1", "", "false"}) {
    store.SetString("B", text);
    EXPECT_FALSE(store.GetBool("B", true)) << text;
  }
  store.SetBool("B", true);
  EXPECT_TRUE(store.GetBool("B", false));
  EXPECT_EQ(store.GetString("B"), "true");
}

TEST(SettingsStore, AKeyThatCannotBeWrittenSaysSo) {
  MemoryValues values;
  SettingsStore store(values);
  EXPECT_TRUE(store.KeyWritable());
  values.readOnly = true;
  EXPECT_FALSE(store.KeyWritable());
  EXPECT_FALSE(store.SetNumber("N", 1));
  EXPECT_FALSE(store.SetString("S", "x"));
  EXPECT_FALSE(store.SetBool("B", true));
}

TEST(SettingsStore, TheMachinesInstallationFolderComesFirst) {
  MemoryValues machineValues, userValues;
  SettingsStore machine(machineValues), user(userValues);
  EXPECT_EQ(InstallDir(machine, user), "");
  user.SetString("InstallDir", "C:\\user");
  EXPECT_EQ(InstallDir(machine, user), "C:\\user");
  machine.SetString("InstallDir", "");
  EXPECT_EQ(InstallDir(machine, user), "C:\\user");
  machine.SetString("InstallDir", "C:\\machine");
  EXPECT_EQ(InstallDir(machine, user), "C:\\machine");
}

}  // namespace
}  // namespace merivane
