// Floating-point registers in a driver belong to the program that happens to run: they are saved before the driver
// uses them, and restored after. What is compiled without them does that.
#pragma once

#include "trevikv/kernel.h"

namespace trevik::kernel
{

class FloatingPoint
{
  public:
    FloatingPoint() : status_(InKernel() ? KeSaveFloatingPointState(&state_) : STATUS_SUCCESS) {}
    ~FloatingPoint()
    {
        if (InKernel() && NT_SUCCESS(status_))
            KeRestoreFloatingPointState(&state_);
    }
    FloatingPoint(const FloatingPoint &) = delete;
    FloatingPoint &operator=(const FloatingPoint &) = delete;

    // Not a success: they must not be used.
    NTSTATUS status() const { return status_; }

  private:
    // Wine runs drivers as a program of their own, whose registers are nobody else's, and cannot save them.
    static bool InKernel()
    {
        unsigned short segment;
        asm("mov %%cs, %0" : "=r"(segment));
        return (segment & 3u) == 0;
    }

    KFLOATING_SAVE state_{};
    NTSTATUS status_;
};

} // namespace trevik::kernel
