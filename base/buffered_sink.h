#pragma once

#include <cstddef>
#include <string_view>

#include "base/byte_sink.h"
#include "base/file_system.h"
#include "base/result.h"

namespace merivane {

/// Collects small writes into large ones for a file, which must outlive it.
class BufferedSink final : public ByteSink {
 public:
  explicit BufferedSink(OutputFile& file) : file_(file) {}

  void write(std::string_view bytes) override;

  /// Writes what is still waiting. Returns 0, or the first error of all writes.
  SystemError finish();

 private:
  static constexpr size_t kCapacity = 65536;

  OutputFile& file_;
  SystemError error_ = 0;
  size_t filled_ = 0;
  char buffer_[kCapacity];
};

}  // namespace merivane
