#pragma once

#include <string_view>

namespace merivane {

/// Takes the bytes of an output in order. After a failure later writes do nothing; the concrete sink reports
/// it at the end.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void write(std::string_view bytes) = 0;
};

}  // namespace merivane
