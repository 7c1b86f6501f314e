/// @file
/// Preloaded, sends the program SIGQUIT after its first prompt, before the wait for input.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>

typedef int (*Flush)(FILE* stream);

int fflush(FILE* stream) {
    static Flush next;
    const int isFirst = next == NULL;
    if (isFirst) {
        // The object-to-function pointer conversion that POSIX requires of dlsym.
        *(void**)&next = dlsym(RTLD_NEXT, "fflush");
    }
    const int result = next(stream);
    if (isFirst) {
        raise(SIGQUIT);
    }
    return result;
}
