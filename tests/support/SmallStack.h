// Runs a function on a thread with a small stack, so that deep recursion shows as a crash in tests.
#pragma once

#include <pthread.h>

#include <cstddef>

namespace NQRN20 {

// False when the thread could not be started; otherwise the function has run to its end.
inline bool RunOnSmallStack(void* (*function)(void*), void* argument,
                            std::size_t stackBytes = 256 * 1024) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackBytes);
    pthread_t thread;
    const bool started = pthread_create(&thread, &attributes, function, argument) == 0;
    if (started) {
        pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);
    return started;
}

} // namespace NQRN20
