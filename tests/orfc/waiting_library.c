// A library with an empty host, which starts when somebody opens the pipe WAITING_LIBRARY_PIPE for writing.
#include "functions.h"

#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static struct {
    unsigned count;
    void* head;
} s_noAdapters;

static void* Answer(const char* function) {
    const long unsupported = 118;
    if (strcmp(function, "VEXAPI_Initialize") == 0) {
        close(open(getenv("WAITING_LIBRARY_PIPE"), O_RDONLY));
        return NULL;
    }
    return strcmp(function, "VEXAPI_GetAdapterList") == 0 ? (void*)&s_noAdapters : (void*)unsupported;
}

#define ORFC_FUNCTION(name)                                                                                            \
    void* name(void);                                                                                                  \
    void* name(void) {                                                                                                 \
        return Answer(#name);                                                                                          \
    }
VEXAPI_FUNCTIONS(ORFC_FUNCTION)
