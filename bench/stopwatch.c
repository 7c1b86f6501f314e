/// @file
/// Times a command: `stopwatch COMMAND [ARGUMENT...]` runs it and prints its wall time and processor time in
/// nanoseconds and its peak memory in KiB on standard error. The command is started from a small program because a
/// child inherits its parent's peak memory.
#define _GNU_SOURCE
#include <spawn.h>
#include <stdio.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>

extern char** environ;

static long long Now(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

static long long Nanoseconds(struct timeval time) {
    return time.tv_sec * 1000000000LL + time.tv_usec * 1000LL;
}

int main(int argc, char** argv) {
    pid_t child = 0;
    int status = 0;
    struct rusage usage;
    const long long begin = Now();
    if (argc < 2 || posix_spawn(&child, argv[1], NULL, NULL, argv + 1, environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0) {
        fprintf(stderr, "the command failed\n");
        return 1;
    }
    const long long wall = Now() - begin;
    const long long processor = Nanoseconds(usage.ru_utime) + Nanoseconds(usage.ru_stime);
    fprintf(stderr, "%lld %lld %ld\n", wall, processor, usage.ru_maxrss);
    return 0;
}
