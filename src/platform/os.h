// The operating-system functions that the library calls, under their Windows names, in trevik::os. A Windows
// library gets the system's own; every other build gets the host layer, which has the same signatures, sizes, flags
// and error numbers. Thread functions and timer callbacks are declared with TREVIK_CALL.
#pragma once

#if defined(_WIN32) && !defined(TREVIK_HOST_LAYER)
#include "platform/windows/os_windows.h"
#else
#include "platform/host/os_host.h"
#endif
