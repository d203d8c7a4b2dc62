// Library state that the pulser tick or a callback thread may touch while the application calls: plain values as
// far as the order of things goes, but never a data race.
#pragma once

#include <atomic>

namespace trevik
{

template <class T>
class Relaxed
{
  public:
    constexpr Relaxed() = default;
    constexpr Relaxed(T value) : value_(value) {}

    operator T() const { return value_.load(std::memory_order_relaxed); }
    Relaxed &operator=(T value)
    {
        value_.store(value, std::memory_order_relaxed);
        return *this;
    }
    Relaxed(const Relaxed &other) : value_(static_cast<T>(other)) {}
    Relaxed &operator=(const Relaxed &other)
    {
        *this = static_cast<T>(other);
        return *this;
    }
    ~Relaxed() = default;

  private:
    std::atomic<T> value_{};
};

} // namespace trevik
