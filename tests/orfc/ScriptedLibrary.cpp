#include "ScriptedLibrary.h"

namespace orfc_test {

Extensions ScriptedTest::s_extensions;

LibraryFunctions ScriptedTest::Functions(bool hasExtensions) {
    LibraryFunctions functions{};
#define ORFC_TAKE(name) functions.name = ::name;
    VEXAPI_FUNCTIONS(ORFC_TAKE)
#undef ORFC_TAKE
    if (hasExtensions) {
        // A function without a script says that it isn't supported.
        constexpr VX_UINT32 UNSUPPORTED = 118;
        functions.VEXAPI_ExtSetScope = [](const VEXAPI_EXT_SCOPE* scope) {
            s_extensions.scopes.push_back(scope != nullptr ? scope->Parts : 0);
            return VX_UINT32{0};
        };
        functions.VEXAPI_ExtSetMessageHandler = [](VEXAPI_EXT_HANDLER handler, void* context) {
            s_extensions.handler = handler;
            s_extensions.context = context;
            return VX_UINT32{0};
        };
        functions.VEXAPI_ExtGetPort = [](VX_PORT_HANDLE* handle, VEXAPI_EXT_PORT* port) {
            return s_extensions.getPort ? s_extensions.getPort(handle, port) : UNSUPPORTED;
        };
        functions.VEXAPI_ExtGetTarget = [](VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target,
                                           VEXAPI_EXT_TARGET* record) {
            return s_extensions.getTarget ? s_extensions.getTarget(handle, target, record) : UNSUPPORTED;
        };
        functions.VEXAPI_ExtGetLun = [](VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target,
                                        const _tagVEXAPI_SDMLun* lun, VEXAPI_EXT_LUN* record) {
            return s_extensions.getLun ? s_extensions.getLun(handle, target, lun, record) : UNSUPPORTED;
        };
        functions.VEXAPI_ExtGetCounters = [](VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target,
                                             VEXAPI_EXT_COUNTER* counters, VX_UINT32* count) {
            return s_extensions.getCounters ? s_extensions.getCounters(handle, target, counters, count) : UNSUPPORTED;
        };
    }
    return functions;
}

} // namespace orfc_test
