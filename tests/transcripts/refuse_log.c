/// @file
/// Preloaded, it makes the program fail to open the library's log, from the opening on that
/// REFUSE_LOG_FROM counts (1 is the first).
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef FILE* (*Open)(const char* path, const char* mode);

FILE* fopen(const char* path, const char* mode) {
    static Open next;
    static long openings;
    if (next == NULL) {
        // The conversion of an object pointer that POSIX asks of dlsym.
        *(void**)&next = dlsym(RTLD_NEXT, "fopen");
    }
    const char* from = getenv("REFUSE_LOG_FROM");
    if (from != NULL && strcmp(path, "/var/tmp/vexapi-output.log") == 0 && ++openings >= strtol(from, NULL, 10)) {
        errno = EACCES;
        return NULL;
    }
    return next(path, mode);
}
