// Forced into every C++ file of the native-tsan build. ThreadSanitizer (GCC 12,
// Clang 14) does not intercept pthread_mutex_clocklock, which libstdc++'s timed
// mutexes call for steady-clock waits, so it misses those acquisitions and
// reports races and unlocks of unlocked mutexes that are not there. Without
// this macro libstdc++ waits through pthread_mutex_timedlock, which it sees.
#pragma once

#include <bits/c++config.h>

#undef _GLIBCXX_USE_PTHREAD_MUTEX_CLOCKLOCK
