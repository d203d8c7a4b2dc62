// The input of a fuzzer as numbers, zeros when it is used up; and what a broken promise does.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <sys/mman.h>

namespace trevik::fuzz
{

class Bytes
{
  public:
    Bytes(const std::uint8_t *data, std::size_t size) : left_(data, size) {}

    bool empty() const { return left_.empty(); }
    std::span<const std::uint8_t> rest() const { return left_; }
    template <class T>
    T take()
    {
        T value{};
        const std::size_t size = left_.size() < sizeof value ? left_.size() : sizeof value;
        if (size != 0)
            std::memcpy(&value, left_.data(), size);
        left_ = left_.subspan(size);
        return value;
    }
    template <class T, std::size_t count>
    T one_of(const T (&values)[count])
    {
        return values[take<std::uint8_t>() % count];
    }
    // One of the values, now and then any other of its type.
    template <class T, std::size_t count>
    T mostly(const T (&values)[count])
    {
        constexpr std::uint8_t other = 240;
        const auto choice = take<std::uint8_t>();
        return choice < other ? values[choice % count] : take<T>();
    }

  private:
    std::span<const std::uint8_t> left_;
};

// A file that costs no disk.
inline const std::string scratch_file = "/proc/self/fd/" + std::to_string(memfd_create("configuration", 0));

// With TREVIK_FUZZ_PRINT set, what a program does goes to standard error.
inline bool Printing()
{
    static const bool printing = std::getenv("TREVIK_FUZZ_PRINT") != nullptr;
    return printing;
}

__attribute__((format(printf, 1, 2))) inline void Print(const char *format, ...)
{
    if (!Printing())
        return;
    std::va_list values;
    va_start(values, format);
    std::vfprintf(stderr, format, values);
    va_end(values);
}

// libFuzzer keeps the input of a program that aborts.
__attribute__((format(printf, 2, 3))) inline void Require(bool holds, const char *format, ...)
{
    if (holds)
        return;
    std::va_list values;
    va_start(values, format);
    std::fprintf(stderr, "\nBROKEN: ");
    std::vfprintf(stderr, format, values);
    std::fprintf(stderr, "\n");
    va_end(values);
    std::abort();
}

} // namespace trevik::fuzz
