#include "tests/win/support/remote_block.h"

#include <stdexcept>
#include <utility>

namespace merivane {

RemoteBlock::RemoteBlock(HANDLE process, size_t size)
    : process_(process), address_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE)) {
  if (address_ == nullptr) throw std::runtime_error("no memory to be had in the program");
}

RemoteBlock::~RemoteBlock() {
  if (address_ != nullptr) VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
}

void RemoteBlock::write(const void* bytes, size_t count) {
  if (!WriteProcessMemory(process_, address_, bytes, count, nullptr)) {
    throw std::runtime_error("the program's memory cannot be written");
  }
}

void RemoteBlock::read(void* bytes, size_t count) const {
  if (!ReadProcessMemory(process_, address_, bytes, count, nullptr)) {
    throw std::runtime_error("the program's memory cannot be read");
  }
}

LPARAM RemoteBlock::release() { return reinterpret_cast<LPARAM>(std::exchange(address_, nullptr)); }

}  // namespace merivane
