#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace merivane {

/// Owns a run of bytes, which are not initialised. Sizes and positions in texts are 32-bit; what is larger
/// cannot be held. Running out of memory is returned as false, never thrown.
class ByteArray {
 public:
  static constexpr uint64_t maxSize = 0xFFFFFFFE;  // one below the "no line" mark of the diff model

  /// Replaces the bytes by `size` new ones. Returns false, and changes nothing, when there is no memory for
  /// them.
  bool allocate(uint64_t size) {
    if (size > maxSize) return false;
    char* fresh = static_cast<char*>(std::malloc(size == 0 ? 1 : static_cast<size_t>(size)));
    if (fresh == nullptr) return false;
    bytes_.reset(fresh);
    size_ = static_cast<uint32_t>(size);
    return true;
  }

  /// Changes the size and keeps the bytes up to the smaller one. Returns false, and changes nothing, when it
  /// fails.
  bool resize(uint64_t size) {
    if (size > maxSize) return false;
    void* moved = std::realloc(bytes_.get(), size == 0 ? 1 : static_cast<size_t>(size));
    if (moved == nullptr) return false;
    static_cast<void>(bytes_.release());  // realloc has freed it
    bytes_.reset(static_cast<char*>(moved));
    size_ = static_cast<uint32_t>(size);
    return true;
  }

  /// Keeps the first `size` bytes, at most size(). Never fails; gives memory back where that is possible.
  void truncate(uint32_t size) {
    if (!resize(size)) size_ = size;
  }

  bool assign(std::string_view bytes) {
    if (!allocate(bytes.size())) return false;
    if (!bytes.empty()) std::memcpy(bytes_.get(), bytes.data(), bytes.size());
    return true;
  }

  void clear() {
    bytes_.reset();
    size_ = 0;
  }

  char* data() { return bytes_.get(); }
  const char* data() const { return bytes_.get(); }
  uint32_t size() const { return size_; }
  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<char, Free> bytes_;
  uint32_t size_ = 0;
};

}  // namespace merivane
