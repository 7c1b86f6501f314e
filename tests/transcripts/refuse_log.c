/// @file
/// Preloaded, makes the program fail to open the library's log, starting with the opening number REFUSE_LOG_FROM (1
/// is the first). Its clock leaps, so that the log is opened for each call of the library, also in runs of many, which
/// otherwise keep it open for a moment.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

typedef int (*Open)(const char* path, int flags, ...);

int open(const char* path, int flags, ...) {
    static Open next;
    static long openings;
    if (next == NULL) {
        // The object-to-function pointer conversion that POSIX requires of dlsym.
        *(void**)&next = dlsym(RTLD_NEXT, "open");
    }
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    // A missing log is opened a second time, to create it.
    const char* from = getenv("REFUSE_LOG_FROM");
    if (from != NULL && (flags & O_CREAT) == 0 && strcmp(path, "/var/tmp/vexapi-output.log") == 0 &&
        ++openings >= strtol(from, NULL, 10)) {
        errno = EACCES;
        return -1;
    }
    return next(path, flags, mode);
}

int clock_gettime(clockid_t clock, struct timespec* now) {
    static time_t seconds;
    (void)clock;
    *now = (struct timespec){.tv_sec = ++seconds};
    return 0;
}
