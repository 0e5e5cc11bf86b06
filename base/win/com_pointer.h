#pragma once

namespace merivane {

/// Holds a COM interface and lets it go.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ~ComPointer() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  Interface* operator->() const { return pointer_; }
  Interface* get() const { return pointer_; }
  void** address() { return reinterpret_cast<void**>(&pointer_); }

 private:
  Interface* pointer_ = nullptr;
};

}  // namespace merivane
