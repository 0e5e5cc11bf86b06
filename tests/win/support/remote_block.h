#pragma once

#include <windows.h>

#include <cstddef>

namespace merivane {

/// Memory in another process, for messages that carry a pointer.
class RemoteBlock {
 public:
  RemoteBlock(HANDLE process, size_t size);
  ~RemoteBlock();
  RemoteBlock(const RemoteBlock&) = delete;
  RemoteBlock& operator=(const RemoteBlock&) = delete;

  void write(const void* bytes, size_t count);
  void read(void* bytes, size_t count) const;

  /// The block as the other process sees it.
  LPARAM address() const { return reinterpret_cast<LPARAM>(address_); }

  /// Leaves the block to the other process.
  LPARAM release();

 private:
  HANDLE process_;
  void* address_;
};

}  // namespace merivane
