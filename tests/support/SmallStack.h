// Runs a function on a thread with a small stack, so that deep recursion shows as a crash in tests.
#pragma once

#include <pthread.h>

#include <functional>

namespace NQRN20 {

// False when the thread could not be started; otherwise the function has run to its end.
inline bool RunOnSmallStack(std::function<void()> function) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    pthread_t thread;
    const auto run = [](void* f) -> void* {
        return (*static_cast<std::function<void()>*>(f))(), nullptr;
    };
    const bool started = pthread_create(&thread, &attributes, run, &function) == 0;
    if (started) {
        pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);
    return started;
}

} // namespace NQRN20
