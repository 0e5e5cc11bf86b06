#include "base/buffered_sink.h"

#include <cstring>

namespace merivane {

void BufferedSink::write(std::string_view bytes) {
  if (bytes.size() > kCapacity - filled_) {
    finish();
    if (bytes.size() >= kCapacity) {
      if (error_ == 0) error_ = file_.write(bytes);
      return;
    }
  }
  if (bytes.empty()) return;
  std::memcpy(buffer_ + filled_, bytes.data(), bytes.size());
  filled_ += bytes.size();
}

SystemError BufferedSink::finish() {
  if (error_ == 0 && filled_ > 0) error_ = file_.write({buffer_, filled_});
  filled_ = 0;
  return error_;
}

}  // namespace merivane
