// Floating-point registers in a driver belong to the program that happens to run: they are saved before the driver
// uses them, and restored after. What is compiled without them does that. Outside of a kernel they are nobody else's.
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
    KFLOATING_SAVE state_{};
    NTSTATUS status_;
};

} // namespace trevik::kernel
