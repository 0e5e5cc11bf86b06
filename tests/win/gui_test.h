#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/win/support/dialog.h"
#include "tests/win/support/polling.h"
#include "tests/win/support/program.h"
#include "tests/win/support/saved_settings.h"
#include "tests/win/support/text_window.h"

namespace merivane {

/// A test with the program of its own. It starts from settings as after the installation, save that the
/// window's place is always the same; a failed test leaves a picture of the screen beside the program.
class GuiTest : public testing::Test {
 protected:
  static constexpr RECT kPlace = {40, 30, 840, 630};

  void SetUp() override;
  void TearDown() override;

  /// Starts the program and answers its first text window.
  TextWindow start(const std::string& arguments = {});

  /// Starts the program with two files and waits until they are compared.
  TextWindow startWith(const std::string& left, const std::string& right);

  /// Quits by command, and expects that the program ends as it should.
  void quit(const TextWindow& window);

  std::unique_ptr<Program> program_;
};

/// Writes a file into the test's own folder; answers its full path.
std::string writeFile(const std::string& name, const std::string& bytes);

std::string readFile(const std::string& path);

/// The full path of a name in the test's own folder.
std::string pathOf(const std::string& name);

std::string quoted(const std::string& argument);

/// So many lines "PREFIX 1", "PREFIX 2", ..., ended as Windows does.
std::string numberedLines(int count, const std::string& prefix = "line");

}  // namespace merivane
