/// @file
/// Machine-level faults.
#pragma once

#include <csignal>
#include <sys/resource.h>

/// Lowers a process limit during its lifetime.
class LoweredLimit {
public:
    LoweredLimit(__rlimit_resource resource, rlim_t limit) : mResource(resource) {
        getrlimit(resource, &mSaved);
        rlimit lowered = mSaved;
        lowered.rlim_cur = limit;
        setrlimit(resource, &lowered);
    }
    ~LoweredLimit() { setrlimit(mResource, &mSaved); }
    LoweredLimit(const LoweredLimit&) = delete;
    LoweredLimit& operator=(const LoweredLimit&) = delete;

private:
    __rlimit_resource mResource;
    rlimit mSaved{};
};

/// No file can be opened during its lifetime; open files stay open.
class NoMoreFiles : public LoweredLimit {
public:
    NoMoreFiles() : LoweredLimit(RLIMIT_NOFILE, 0) {}
};

/// No file of the process can grow beyond a size during its lifetime, as on a full file system.
class FullDisk {
public:
    explicit FullDisk(rlim_t size = 0) : mHandler(std::signal(SIGXFSZ, SIG_IGN)), mLimit(RLIMIT_FSIZE, size) {}
    ~FullDisk() { std::signal(SIGXFSZ, mHandler); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*mHandler)(int);
    LoweredLimit mLimit;
};
