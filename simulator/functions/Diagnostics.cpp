/// @file
/// Diagnostics of a port and its link.
#include "caller/Call.h"
#include "caller/Faults.h"
#include "description/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace sim;

namespace {

constexpr VX_UINT8 ONLINE = 1;
constexpr VX_UINT16 VIRTUAL_PORT = 3;
constexpr VX_UINT32 SPEED_16_GBPS = 22;
/* A failed mailbox command in a D-Port result. */
constexpr VX_UINT16 MAILBOX_FAILED = 0x4005;
constexpr VX_UINT16 MAILBOX_WRONG_STATE = 71;

constexpr std::size_t PING_BUFFER_SIZE = 256;
constexpr std::size_t RDP_BUFFER_SIZE = 508;

/// The result of the next call; the last one repeats.
template <class Result> const Result& NextResult(const std::vector<Result>& results, std::size_t& calls) {
    return results[std::min(calls++, results.size() - 1)];
}

void StoreStatus(char (&text)[64], Status status) {
    std::memset(text, 0, sizeof text);
    std::snprintf(text, sizeof text, "Failed, status 0x%X", status);
}

/// Parses "xx:xx:xx:xx:xx:xx:xx:xx" in either case.
bool ParseName(const char* text, VX_UINT8 (&name)[8]) {
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
        const Bytes bytes = ParseHex(digits);
        std::copy_n(bytes.begin(), sizeof name, name);
        return bytes.size() == sizeof name;
    } catch (const std::runtime_error&) {
        return false;
    }
}

/// Logs and parses the port name of a destination.
void CheckName(Call& call, const char* text, VX_UINT8 (&name)[8]) {
    call.CheckPointer(text, "name");
    call.NoteArgument("name", text);
    if (!ParseName(text, name)) {
        throw Mistake{"name isn't of the form xx:xx:xx:xx:xx:xx:xx:xx"};
    }
}

void CheckCount(Call& call, VX_UINT32 count) {
    call.NoteArgument("count", count);
    if (count == 0 || count > 65535) {
        throw Mistake{"count must be 1 to 65535"};
    }
}

void CheckLink(const Port& port) {
    if (port.record.PortState != ONLINE) {
        throw Failure{STATUS_LINK_DOWN, "the link is down"};
    }
}

/// Ping and CT command: succeed for any visible target. `check` checks further arguments.
template <class Check>
Status ReachTarget(const char* function, VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                   VX_UINT32 stopOnError, VX_UINT32* output, void* buffer, VX_UINT32 size, Check check) {
    return Answer(function, [&](Call& call) {
        Port& port = call.GetPort(handle);
        VX_UINT8 bytes[8] = {};
        CheckName(call, name, bytes);
        CheckCount(call, count);
        call.CheckFixed("stopOnError", stopOnError, {0, 1});
        call.CheckCleared(output, "output");
        call.CheckFixed("size", size, {PING_BUFFER_SIZE});
        call.CheckCleared(buffer, size, "buffer");
        check(call);
        call.Begin();
        CheckLink(port);
        if (FindTarget(port, bytes) == nullptr) {
            throw Failure{STATUS_NO_SUCH_TARGET, "the port sees no such target"};
        }
        *output = count;
        std::snprintf(static_cast<char*>(buffer), size, "%u of %u answered", count, count);
        return STATUS_OK;
    });
}

} // namespace

_VEXAPI_LoopbackTestResult VEXAPI_DiagnosticsLoopBackTest(VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
    _VEXAPI_LoopbackTestResult result{};
    const Status status = Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("parameters", parameters);
        call.Begin();
        result = NextResult(port.loopback, port.loopbackCalls);
        return STATUS_OK;
    });
    if (status != STATUS_OK) {
        StoreStatus(result.TestStatus, status);
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
        head = nodes.empty() ? nullptr : nodes.data(); // stays valid when the vector is moved
        if (head != nullptr) {
            CurrentSession()->bufferLists.emplace(head, std::move(nodes));
        }
    };
    Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("parameters", parameters);
        try {
            if (call.Begin() == Asked::ANSWER) {
                give(NextResult(port.readWriteBuffer, port.readWriteBufferCalls));
            }
        } catch (const Fault& fault) { // the function returns no status, so the list reports it
            std::vector<_VEXAPI_ReadWriteBufferTestResult> nodes(1);
            StoreStatus(nodes.front().TestStatus, fault.status);
            give(std::move(nodes));
            throw;
        }
        return STATUS_OK;
    });
    return head;
}

VX_UINT32 VEXAPI_FreeRWBufferTestResultList(_VEXAPI_ReadWriteBufferTestResult* list) {
    return Answer(__func__, [&](Call& call) {
        call.CheckPointer(list, "list");
        auto& lists = call.GetSession().bufferLists;
        if (!lists.contains(list)) {
            throw Mistake{"the list is none that the library gave, or was released already"};
        }
        call.Begin();
        lists.erase(list);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_DiagnosticsFCPingTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                       VX_UINT32* output, void* buffer, VX_UINT32 size) {
    return ReachTarget(__func__, handle, name, count, stopOnError, output, buffer, size, [](Call&) {});
}

VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType,
                                        _VEXAPI_ECHO_RESULTS* result) {
    return Answer(__func__, [&](Call& call) {
        constexpr VX_UINT32 TO_TARGET = 2;
        constexpr VX_UINT32 TO_FABRIC = 3;
        Port& port = call.GetPort(handle);
        VX_UINT8 bytes[8] = {};
        CheckName(call, name, bytes);
        call.CheckFixed("count", count, {1});
        call.CheckFixed("stopOnError", stopOnError, {0, 1});
        call.CheckFixed("destinationType", destinationType, {TO_TARGET, TO_FABRIC});
        call.CheckCleared(result, "result");
        call.Begin();
        CheckLink(port);
        const bool known = destinationType == TO_FABRIC
                               ? std::memcmp(port.record.PrincipalFabricWWN, bytes, sizeof bytes) == 0
                               : FindTarget(port, bytes) != nullptr;
        if (!known) {
            throw Failure{STATUS_NO_SUCH_TARGET, "the port sees no such destination"};
        }
        *result = NextResult(port.echo, port.echoCalls);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_DiagnosticsCTCommand(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                      VX_UINT32* output, void* buffer, VX_UINT32 size, VX_UINT32 testType) {
    return ReachTarget(__func__, handle, name, count, stopOnError, output, buffer, size, [&](Call& call) {
        call.CheckFixed("testType", testType, {1, 2});
    });
}

VX_UINT32 VEXAPI_CheckAdapterDPortOption(VX_PORT_HANDLE* handle) {
    VX_UINT32 mode = 0;
    return AnswerValue(__func__, mode, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.Begin();
        mode = port.answers.DPortMode;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_ConfigureAdapterDPortSettings(VX_PORT_HANDLE* handle, VX_UINT32 enable, VX_UINT32 reserved) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckFixed("enable", enable, {0, 1});
        call.CheckFixed("reserved", reserved, {0});
        call.Begin();
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "DPortMode");
            port.answers.DPortMode = enable;
            change.Pending(port);
        });
        return STATUS_OK;
    });
}

_VEXAPI_DiagnosticsDPortResult VEXAPI_DiagnosticDPortTest(VX_PORT_HANDLE* handle,
                                                          _VEXAPI_DiagnosticsDPortResult* result) {
    _VEXAPI_DiagnosticsDPortResult record{};
    const Status status = Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(result, "result");
        call.Begin();
        record = port.answers.DPortResult;
        if (port.answers.DPortMode == 0) {
            record.Mbx1 = MAILBOX_FAILED;
            record.Mbx2 = MAILBOX_WRONG_STATE;
        }
        return STATUS_OK;
    });
    if (status != STATUS_OK) {
        record.Mbx1 = MAILBOX_FAILED;
        record.Mbx2 = static_cast<VX_UINT16>(status);
    }
    return record;
}

VX_UINT32 VEXAPI_DiagnosticDPortTestV2(VX_PORT_HANDLE* handle, _VEXAPI_DiagnosticsDPortResult* result) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(result, "result");
        call.Begin();
        if (port.record.PortInterfaceType == VIRTUAL_PORT) {
            throw Failure{STATUS_NOT_FOR_VIRTUAL_PORT, "a virtual port has no link of its own"};
        }
        if (port.answers.DPortMode == 0) {
            throw Failure{STATUS_NOT_IN_DIAGNOSTIC_MODE, "the port isn't in diagnostic mode"};
        }
        CheckLink(port);
        if (port.record.PortSpeed < SPEED_16_GBPS) {
            throw Failure{STATUS_SPEED_TOO_LOW, "the link is slower than 16 Gbps"};
        }
        *result = port.answers.DPortResult;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_DiagnosticsRDPTest(VX_PORT_HANDLE* handle, void* buffer, VX_UINT32* size) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(size, "size");
        call.CheckFixed("size", *size, {RDP_BUFFER_SIZE});
        call.CheckCleared(buffer, *size, "buffer");
        call.Begin();
        CheckLink(port);
        if (port.rdpPayload.empty()) {
            throw Failure{STATUS_NO_ANSWER, "the link partner doesn't answer"};
        }
        std::copy(port.rdpPayload.begin(), port.rdpPayload.end(), static_cast<VX_UINT8*>(buffer));
        *size = port.answers.RdpSize != 0 ? port.answers.RdpSize : static_cast<VX_UINT32>(port.rdpPayload.size());
        return STATUS_OK;
    });
}
