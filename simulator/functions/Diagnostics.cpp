/// @file
/// Diagnostics of a port and of its link.
#include "caller/Call.h"
#include "caller/Faults.h"
#include "description/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace sim;

namespace {

constexpr VX_UINT8 online = 1;
constexpr VX_UINT16 virtualPort = 3;
constexpr VX_UINT32 speed16Gbps = 22;
/* What a failed mailbox command leaves in a D-Port result. */
constexpr VX_UINT16 mailboxFailed = 0x4005;
constexpr VX_UINT16 mailboxWrongState = 71;

constexpr std::size_t pingBufferSize = 256;
constexpr std::size_t rdpBufferSize = 508;

/// The result of the next call: results in their order, the last one again and again.
template <class Result> const Result& nextResult(const std::vector<Result>& results, std::size_t& calls) {
    return results[std::min(calls++, results.size() - 1)];
}

void storeStatus(char (&text)[64], Status status) {
    std::memset(text, 0, sizeof text);
    std::snprintf(text, sizeof text, "Failed, status 0x%X", status);
}

/// Reads "xx:xx:xx:xx:xx:xx:xx:xx" in digits of any case.
bool parseName(const char* text, VX_UINT8 (&name)[8]) {
    const std::string_view given(text);
    const std::string form = "xx:xx:xx:xx:xx:xx:xx:xx";
    if (given.size() != form.size()) {
        return false;
    }
    std::string digits;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool colon = form[i] == ':';
        if (colon != (given[i] == ':')) {
            return false;
        }
        digits += colon ? ' ' : given[i];
    }
    try {
        const Bytes bytes = parseHex(digits);
        std::copy_n(bytes.begin(), sizeof name, name);
        return bytes.size() == sizeof name;
    } catch (const std::runtime_error&) {
        return false;
    }
}

/// Notes the name of a destination and checks its form.
void checkName(Call& call, const char* text, VX_UINT8 (&name)[8]) {
    call.pointer(text, "name");
    call.argument("name", text);
    if (!parseName(text, name)) {
        throw Mistake{"name isn't of the form xx:xx:xx:xx:xx:xx:xx:xx"};
    }
}

void checkCount(Call& call, VX_UINT32 count) {
    call.argument("count", count);
    if (count == 0 || count > 65535) {
        throw Mistake{"count must be 1 to 65535"};
    }
}

void checkLink(const Port& port) {
    if (port.record.PortState != online) {
        throw Failure{statusLinkDown, "the link is down"};
    }
}

/// What ping and CT command have in common: their arguments, and an answer from any target in sight.
/// `check` checks what is particular.
template <class Check>
Status reachTarget(const char* function, VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                   VX_UINT32 stopOnError, VX_UINT32* output, void* buffer, VX_UINT32 size, Check check) {
    return answer(function, [&](Call& call) {
        Port& port = call.port(handle);
        VX_UINT8 bytes[8] = {};
        checkName(call, name, bytes);
        checkCount(call, count);
        call.fixed("stopOnError", stopOnError, {0, 1});
        call.cleared(output, "output");
        call.fixed("size", size, {pingBufferSize});
        call.cleared(buffer, size, "buffer");
        check(call);
        call.begin();
        checkLink(port);
        if (findTarget(port, bytes) == nullptr) {
            throw Failure{statusNoSuchTarget, "the port sees no such target"};
        }
        *output = count;
        std::snprintf(static_cast<char*>(buffer), size, "%u of %u answered", count, count);
        return statusOk;
    });
}

} // namespace

_VEXAPI_LoopbackTestResult VEXAPI_DiagnosticsLoopBackTest(VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
    _VEXAPI_LoopbackTestResult result{};
    const Status status = answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("parameters", parameters);
        call.begin();
        result = nextResult(port.loopback, port.loopbackCalls);
        return statusOk;
    });
    if (status != statusOk) {
        storeStatus(result.TestStatus, status);
    }
    return result;
}

_VEXAPI_ReadWriteBufferTestResult* VEXAPI_DiagnosticsReadWriteBufferTest(VX_PORT_HANDLE* handle,
                                                                         DiagTestParams* parameters) {
    _VEXAPI_ReadWriteBufferTestResult* head = nullptr;
    const auto give = [&](std::vector<_VEXAPI_ReadWriteBufferTestResult> nodes) {
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
            nodes[i].pNext = &nodes[i + 1];
        }
        head = nodes.empty() ? nullptr : nodes.data(); // moving the vector keeps its nodes where they are
        if (head != nullptr) {
            currentSession()->bufferLists.emplace(head, std::move(nodes));
        }
    };
    answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("parameters", parameters);
        try {
            if (call.begin() == Asked::Answer) {
                give(nextResult(port.readWriteBuffer, port.readWriteBufferCalls));
            }
        } catch (const Fault& fault) { // there is no status to return: the list tells it
            std::vector<_VEXAPI_ReadWriteBufferTestResult> nodes(1);
            storeStatus(nodes.front().TestStatus, fault.status);
            give(std::move(nodes));
            throw;
        }
        return statusOk;
    });
    return head;
}

VX_UINT32 VEXAPI_FreeRWBufferTestResultList(_VEXAPI_ReadWriteBufferTestResult* list) {
    return answer(__func__, [&](Call& call) {
        call.pointer(list, "list");
        auto& lists = call.session().bufferLists;
        if (!lists.contains(list)) {
            throw Mistake{"the list is none that the library gave, or was released already"};
        }
        call.begin();
        lists.erase(list);
        return statusOk;
    });
}

VX_UINT32 VEXAPI_DiagnosticsFCPingTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                       VX_UINT32* output, void* buffer, VX_UINT32 size) {
    return reachTarget(__func__, handle, name, count, stopOnError, output, buffer, size, [](Call&) {});
}

VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType,
                                        _VEXAPI_ECHO_RESULTS* result) {
    return answer(__func__, [&](Call& call) {
        constexpr VX_UINT32 toTarget = 2;
        constexpr VX_UINT32 toFabric = 3;
        Port& port = call.port(handle);
        VX_UINT8 bytes[8] = {};
        checkName(call, name, bytes);
        call.fixed("count", count, {1});
        call.fixed("stopOnError", stopOnError, {0, 1});
        call.fixed("destinationType", destinationType, {toTarget, toFabric});
        call.cleared(result, "result");
        call.begin();
        checkLink(port);
        const bool known = destinationType == toFabric
                               ? std::memcmp(port.record.PrincipalFabricWWN, bytes, sizeof bytes) == 0
                               : findTarget(port, bytes) != nullptr;
        if (!known) {
            throw Failure{statusNoSuchTarget, "the port sees no such destination"};
        }
        *result = nextResult(port.echo, port.echoCalls);
        return statusOk;
    });
}

VX_UINT32 VEXAPI_DiagnosticsCTCommand(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                      VX_UINT32* output, void* buffer, VX_UINT32 size, VX_UINT32 testType) {
    return reachTarget(__func__, handle, name, count, stopOnError, output, buffer, size, [&](Call& call) {
        call.fixed("testType", testType, {1, 2});
    });
}

VX_UINT32 VEXAPI_CheckAdapterDPortOption(VX_PORT_HANDLE* handle) {
    VX_UINT32 mode = 0;
    return answerValue(__func__, mode, [&](Call& call) {
        const Port& port = call.port(handle);
        call.begin();
        mode = port.answers.DPortMode;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_ConfigureAdapterDPortSettings(VX_PORT_HANDLE* handle, VX_UINT32 enable, VX_UINT32 reserved) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.fixed("enable", enable, {0, 1});
        call.fixed("reserved", reserved, {0});
        call.begin();
        call.change([&](Change& change) {
            change.touch(port, "DPortMode");
            port.answers.DPortMode = enable;
            change.pending(port);
        });
        return statusOk;
    });
}

_VEXAPI_DiagnosticsDPortResult VEXAPI_DiagnosticDPortTest(VX_PORT_HANDLE* handle,
                                                          _VEXAPI_DiagnosticsDPortResult* result) {
    _VEXAPI_DiagnosticsDPortResult record{};
    const Status status = answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(result, "result");
        call.begin();
        record = port.answers.DPortResult;
        if (port.answers.DPortMode == 0) {
            record.Mbx1 = mailboxFailed;
            record.Mbx2 = mailboxWrongState;
        }
        return statusOk;
    });
    if (status != statusOk) {
        record.Mbx1 = mailboxFailed;
        record.Mbx2 = static_cast<VX_UINT16>(status);
    }
    return record;
}

VX_UINT32 VEXAPI_DiagnosticDPortTestV2(VX_PORT_HANDLE* handle, _VEXAPI_DiagnosticsDPortResult* result) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(result, "result");
        call.begin();
        if (port.record.PortInterfaceType == virtualPort) {
            throw Failure{statusNotForVirtualPort, "a virtual port has no link of its own"};
        }
        if (port.answers.DPortMode == 0) {
            throw Failure{statusNotInDiagnosticMode, "the port isn't in diagnostic mode"};
        }
        checkLink(port);
        if (port.record.PortSpeed < speed16Gbps) {
            throw Failure{statusSpeedTooLow, "the link is slower than 16 Gbps"};
        }
        *result = port.answers.DPortResult;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_DiagnosticsRDPTest(VX_PORT_HANDLE* handle, void* buffer, VX_UINT32* size) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(size, "size");
        call.fixed("size", *size, {rdpBufferSize});
        call.cleared(buffer, *size, "buffer");
        call.begin();
        checkLink(port);
        if (port.rdpPayload.empty()) {
            throw Failure{statusNoAnswer, "the link partner doesn't answer"};
        }
        std::copy(port.rdpPayload.begin(), port.rdpPayload.end(), static_cast<VX_UINT8*>(buffer));
        *size = port.answers.RdpSize != 0 ? port.answers.RdpSize : static_cast<VX_UINT32>(port.rdpPayload.size());
        return statusOk;
    });
}
