#include "InterruptHold.h"

#include <csignal>
#include <cstdio>

namespace {

struct sigaction s_usual;
volatile std::sig_atomic_t s_hasCome = 0;

void HoldBack(int signal) {
    s_hasCome = 1;
    sigaction(signal, &s_usual, nullptr);
}

} // namespace

InterruptHold::InterruptHold() {
    s_hasCome = 0;
    sigaction(SIGINT, nullptr, &s_usual);
    struct sigaction action {};
    action.sa_handler = HoldBack;
    action.sa_flags = SA_RESTART; // the library needn't know
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

InterruptHold::~InterruptHold() {
    sigaction(SIGINT, &s_usual, nullptr);
    if (HasCome()) {
        std::fflush(stdout);
        std::raise(SIGINT);
    }
}

bool InterruptHold::HasCome() const {
    return s_hasCome != 0;
}
