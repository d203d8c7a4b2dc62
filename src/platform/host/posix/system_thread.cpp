#include "platform/host/system_thread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace trevik::host
{
namespace
{

struct Start {
    SystemThread::Main main;
    void *parameter;
};

void *Begin(void *parameter)
{
    const Start start = *static_cast<Start *>(parameter);
    delete static_cast<Start *>(parameter);
    start.main(start.parameter);
    return nullptr;
}

} // namespace

static_assert(sizeof(pthread_t) == sizeof(std::uintptr_t));

bool SystemThread::start(Main main, void *parameter)
{
    auto *start = new Start{main, parameter};
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, Begin, start) != 0) {
        delete start;
        return false;
    }
    handle_ = thread;
    return true;
}

void SystemThread::join()
{
    if (handle_ != 0 && pthread_equal(handle_, pthread_self()) == 0) {
        pthread_join(handle_, nullptr);
        handle_ = 0;
    }
    detach();
}

void SystemThread::detach()
{
    if (handle_ != 0)
        pthread_detach(handle_);
    handle_ = 0;
}

void SystemThread::exit()
{
    pthread_exit(nullptr);
    __builtin_unreachable(); // not declared as such by every pthread.h
}

int OwnSystemId()
{
    return gettid();
}

// The lowest niceness and not the scheduler's idle class: a thread in that class may hold a mutex for ever on a busy
// machine.
void GiveWay(int system_id)
{
    setpriority(PRIO_PROCESS, static_cast<id_t>(system_id), 19);
}

} // namespace trevik::host
