/// @file
/// Preloaded, it sends the program SIGQUIT behind its first prompt, ahead of the wait for input.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>

typedef int (*Flush)(FILE* stream);

int fflush(FILE* stream) {
    static Flush next;
    const int isFirst = next == NULL;
    if (isFirst) {
        // The conversion of an object pointer that POSIX asks of dlsym.
        *(void**)&next = dlsym(RTLD_NEXT, "fflush");
    }
    const int result = next(stream);
    if (isFirst) {
        raise(SIGQUIT);
    }
    return result;
}
