/// @file
/// Baseline of a command that calls the library once per frame: `log_loop FRAMES` opens, writes and closes the
/// library's log that many times.
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    const long frames = argc == 2 ? strtol(argv[1], NULL, 10) : 0;
    for (long frame = 0; frame < frames; ++frame) {
        FILE* log = fopen("/var/tmp/vexapi-output.log", "a+");
        if (log == NULL) {
            return 1;
        }
        fprintf(log, "echo\n");
        fclose(log);
    }
    return 0;
}
