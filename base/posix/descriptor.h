#pragma once

#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "base/result.h"

namespace merivane {

inline SystemError lastError() { return static_cast<SystemError>(errno); }

/// Owns the number of an open file.
class Descriptor {
 public:
  Descriptor() = default;
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return number_; }
  /// Takes a descriptor on; false for the -1 of a failure.
  bool take(int number) {
    close();
    number_ = number;
    return number >= 0;
  }
  bool close() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_ = -1;
};

}  // namespace merivane
