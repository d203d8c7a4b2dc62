/* TrevikHost.h - what stands under the library where there is no kernel driver.
 *
 * Host builds only (the Linux library and the virtual Windows DLL). A host build calls its own implementation of
 * the operating-system functions that the library needs. That implementation forwards driver requests to a
 * TrevikHostDriver: the built-in virtual cards (TrevikVirtual.h), or one of the caller's own.
 *
 * Threads: every function may be called from any thread. TrevikHost_driver_set must not run while another thread is
 * inside a call of the library; the manual clock is moved by one thread at a time.
 */
#ifndef TREVIK_HOST_H
#define TREVIK_HOST_H

#include "TrevikA.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A driver as the host layer sees it. All members are required. A member may be called from any thread, and from
 * several threads at once; it must not call back into the library. Error numbers are Windows error numbers, which
 * the library returns unchanged where it reports refused requests. */
typedef struct TrevikHostDriver {
    void *context;                                                       /* passed to every member as it stands */
    uint32_t (*device_count)(void *context);                             /* device interfaces present */
    const char *(*device_path)(void *context, uint32_t index);           /* NULL: the detail request fails */
    uint32_t (*open)(void *context, const char *path, uint32_t *device); /* 0, or a Windows error number */
    uint32_t (*control)(void *context, uint32_t device, uint32_t code, const void *in, uint32_t in_size, void *out,
                        uint32_t out_size, uint32_t *returned); /* 0, or a Windows error number */
    void (*close)(void *context, uint32_t device);
} TrevikHostDriver;

/* Puts a driver in place for every later open. `driver` is copied; NULL puts the built-in virtual cards back.
 * Devices open through the earlier driver are closed first; requests on their handles are refused with 6
 * (invalid handle) from then on. */
TREVIK_API void TrevikHost_driver_set(const TrevikHostDriver *driver);

/* Signals an event as a driver does on an interrupt. `event` is the value that the link request carried.
 * 0: signalled; 6: no such event. */
TREVIK_API uint32_t TrevikHost_event_signal(uint32_t event);

/* 1: time stands still; timers and chips move only in TrevikHost_advance. 0: time runs on from where it stands at
 * the pace of the system's monotonic clock. Start-up: 0. */
TREVIK_API void TrevikHost_clock_manual(int on);

/* Moves the manual clock by `seconds` (0 or more), running due timer callbacks in the order of their due times on
 * the calling thread, each at exactly its due time. No effect while the clock is not manual. */
TREVIK_API void TrevikHost_advance(double seconds);

/* Receives the lines of OutputDebugStringA from now on; NULL: none, or standard error when the environment has
 * TREVIK_DEBUG=1. */
TREVIK_API void TrevikHost_debug_output_set(void (*sink)(void *context, const char *text), void *context);

#ifdef __cplusplus
}
#endif

#endif
