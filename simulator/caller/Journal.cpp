#include "caller/Journal.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace sim {

void WriteJournal(const Json& line) {
    const char* path = std::getenv("VEXAPI_SIM_JOURNAL");
    if (path == nullptr || *path == '\0') {
        return;
    }
    // Callers' texts may not be UTF-8.
    const std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    const int fd = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    const bool written = fd >= 0 && write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (!written) {
        static bool complained = false;
        if (!complained) {
            std::fprintf(stderr, "vexapi simulator: the journal %s can't be written: %s\n", path, std::strerror(errno));
        }
        complained = true;
    }
    if (fd >= 0) {
        close(fd);
    }
}

} // namespace sim
