#include "Messages.h"

#include "Api.h"
#include "Session.h"

#include <cstdio>

namespace {

struct Handler {
    VEXAPI_EXT_HANDLER function = nullptr;
    void* context = nullptr;
};

Handler& Current() {
    static Handler handler;
    return handler;
}

} // namespace

void host::Tell(const std::string& what, const std::string& why) {
    const std::string line = what + ": " + why;
    if (Current().function != nullptr) {
        Current().function(Current().context, line.c_str());
    } else {
        std::printf("vexapi linux: %s\n", line.c_str());
    }
}

VX_UINT32 VEXAPI_ExtSetMessageHandler(VEXAPI_EXT_HANDLER handler, void* context) {
    Current() = {handler, context};
    return host::OK;
}
