// The end of a DLL. While a DLL is unloaded the system's loader lets no thread begin or end, and afterwards none of the
// DLL's code is there any more.
#pragma once

namespace trevik::host
{

// From here on the DLL is being unloaded: a thread is joined when it has left the DLL's code.
void BeginUnloading();

// Stops for good whatever thread of this library still runs: it would go on in code that is gone. The last step of
// unloading.
void StopRemainingThreads();

} // namespace trevik::host
