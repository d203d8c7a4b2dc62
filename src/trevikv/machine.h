// The functions of TrevikVirtual.h in the driver. May use floating-point registers.
#pragma once

namespace trevik::kernel
{

struct MachineCall;

// Makes the call and enters its result. False: no such function.
bool MakeCall(MachineCall &call);

} // namespace trevik::kernel
