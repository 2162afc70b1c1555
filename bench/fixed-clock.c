/* Preloaded into a run so that its clock stands at one moment: the document
   ID, which holds the run's start time, is then the same in two runs, and
   their payloads, symbols and pages can be compared byte for byte. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdlib.h>
#include <sys/time.h>
#include <time.h>

static time_t fixed(void) {
    const char* at = getenv("FIXED_CLOCK");
    return at ? (time_t)strtoll(at, 0, 10) : (time_t)1767258000; /* 2026-01-01 09:00 UTC */
}

int clock_gettime(clockid_t id, struct timespec* ts) {
    static int (*real)(clockid_t, struct timespec*);
    if (!real) real = (int (*)(clockid_t, struct timespec*))dlsym(RTLD_NEXT, "clock_gettime");
    const int result = real(id, ts);
    if (id == CLOCK_REALTIME || id == CLOCK_REALTIME_COARSE) {
        ts->tv_sec = fixed();
        ts->tv_nsec = 0;
    }
    return result;
}

int gettimeofday(struct timeval* tv, void* tz) {
    (void)tz;
    tv->tv_sec = fixed();
    tv->tv_usec = 0;
    return 0;
}

time_t time(time_t* t) {
    if (t) *t = fixed();
    return fixed();
}
