#pragma once

#include <string>
#include <utility>

namespace merivane {

/// A file or folder to compare, and what is said of it by whoever asks for the comparison.
struct GivenSide {
  GivenSide() = default;
  GivenSide(std::string name) : path(std::move(name)) {}  // mostly that is all

  std::string path;
  std::string title;      // stands for its name in the window's title; empty: its own name does
  bool readOnly = false;  // it is not to be changed
};

}  // namespace merivane
