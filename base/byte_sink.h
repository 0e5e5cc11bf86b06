#pragma once

#include <string_view>

namespace merivane {

/// Where an output's bytes go, in order. A failure sticks: it makes later writes do nothing and is asked of
/// the concrete sink at the end.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void write(std::string_view bytes) = 0;
};

}  // namespace merivane
