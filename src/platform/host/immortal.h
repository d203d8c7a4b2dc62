// State that is made at its first use and never destroyed, so that static constructors and destructors may use it
// in any order. Use as a function-local static.
#pragma once

#include <cstddef>
#include <new>

namespace trevik::host
{

template <class T>
class Immortal
{
  public:
    Immortal() { ::new (static_cast<void *>(storage_)) T; }
    Immortal(const Immortal &) = delete;
    Immortal &operator=(const Immortal &) = delete;
    ~Immortal() = default;

    T &get() { return *std::launder(reinterpret_cast<T *>(storage_)); }

  private:
    alignas(T) std::byte storage_[sizeof(T)]{};
};

} // namespace trevik::host
