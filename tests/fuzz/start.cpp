// What each of the programs does before its first input.
#include <trevik/TrevikHost.h>

#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TrevikHost_clock_manual(1);
    return std::freopen("/dev/null", "w", stdout) != nullptr ? 0 : 1; // TrevikA_initial prints
}
