// The end of a DLL. While a DLL is unloaded the system's loader lets no thread end in the usual way, and afterwards
// none of the DLL's code is there any more.
#pragma once

namespace trevik::host
{

// From here on the DLL is being unloaded: threads end without the loader.
void BeginUnloading();

// Ends whatever thread of this library still runs, by force: it would return to code that is gone. The last step of
// unloading.
void EndRemainingThreads();

} // namespace trevik::host
