/// @file
/// Tests of a port's link: ping, echo, queries to the directory service and diagnostic parameters.
#include "LinkTests.h"

#include "LinkServices.h"
#include "Messages.h"
#include "Session.h"
#include "Values.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <optional>

using namespace host;

namespace {

constexpr VX_UINT32 LINK_DOWN = 130;
constexpr VX_UINT32 NO_SUCH_PORT = 0x200000FA;
constexpr VX_UINT32 NO_ANSWER = 0x200000FB; ///< or not the right one

constexpr VX_UINT32 TO_FABRIC = 3;   ///< destination of an echo; 2 is a remote port
constexpr VX_UINT32 TRACE_ROUTE = 2; ///< test of the directory service; 1 is a ping

/* Well-known addresses. */
constexpr std::uint32_t DIRECTORY_SERVER = 0xFFFFFC;
constexpr std::uint32_t FABRIC_CONTROLLER = 0xFFFFFD;
constexpr std::uint32_t FABRIC_PORT = 0xFFFFFE;
constexpr std::uint32_t FIRST_WELL_KNOWN = 0xFFFC00; ///< domain controllers, then services

/// A test of several requests sends none after this time, so that it ends well within a minute. In nanoseconds.
constexpr std::uint64_t PATIENCE = 10'000'000'000;

constexpr char ONLINE[] = "Online"; ///< state of a port

constexpr VX_UINT32 SMALLEST_FRAME_SIZE = 256; ///< that a port may have

/// What is known of a remote port.
struct RemotePort {
    std::string name; ///< "rport-2:0-1"
    std::uint64_t portName = 0;
    std::uint32_t portId = 0;
    bool isOnline = false;
};

/// A destination: a well-known address or, if that is 0, a port name.
struct Destination {
    VX_UINT32 port = 0; ///< the number of this host's port
    std::uint64_t portName = 0;
    std::uint32_t portId = 0;
    bool operator==(const Destination&) const = default;
};

/// The destination of the last request, whose node stays open.
struct Connection {
    Destination destination;
    std::string remotePort; ///< empty: reached through the port's own node
    std::size_t frameSize = 0;
    Peer peer;
};

Kernel*& TestKernel() {
    static Kernel* kernel = nullptr;
    return kernel;
}

Connection& Current() {
    static Connection connection;
    return connection;
}

std::string Attribute(const Folder& folder, const std::string& entry, const char* name) {
    return std::string(Trimmed(folder.Read((entry + '/' + name).c_str()).bytes));
}

std::uint64_t NameOf(const std::string& text) {
    VX_UINT8 name[8] = {};
    TakeName(text, name);
    return NameNumber(name);
}

std::uint32_t PortIdOf(const std::string& text) {
    VX_UINT8 id[3] = {};
    TakePortId(text, id);
    return std::uint32_t{id[0]} << 16 | std::uint32_t{id[1]} << 8 | id[2];
}

/// The size in "2048 bytes".
std::size_t FrameSizeOf(const std::string& text) {
    VX_UINT32 size = 0;
    TakeNumber(text.substr(0, text.find(' ')), size);
    return std::max(size, SMALLEST_FRAME_SIZE);
}

std::vector<RemotePort> RemotePortsOf(const Port& port) {
    const Folder& folder = GetTree()->RemotePorts();
    const std::string prefix = "rport-" + std::to_string(port.number) + ':';
    std::vector<RemotePort> found;
    for (const std::string& name : folder.Names()) {
        const std::uint64_t portName = name.starts_with(prefix) ? NameOf(Attribute(folder, name, "port_name")) : 0;
        if (portName != 0) {
            found.push_back({name, portName, PortIdOf(Attribute(folder, name, "port_id")),
                             Attribute(folder, name, "port_state") == ONLINE});
        }
    }
    // One that came back may be there twice.
    std::stable_partition(found.begin(), found.end(), [](const RemotePort& each) { return each.isOnline; });
    return found;
}

/// The name of the fabric; 0 if there is none. Some drivers show another name then.
std::uint64_t FabricOf(const Port& port) {
    const Folder& hosts = GetTree()->Hosts();
    const bool isFabric = Attribute(hosts, port.name, "port_type").find("fabric") != std::string::npos;
    return isFabric ? NameOf(Attribute(hosts, port.name, "fabric_name")) : 0;
}

constexpr char NOT_SENT[] = "Not sent: ";

Outcome Refusal(Outcome::Kind kind, std::string text) {
    Outcome outcome;
    outcome.kind = kind;
    outcome.text = NOT_SENT + std::move(text);
    return outcome;
}

Outcome Success() {
    Outcome outcome;
    outcome.kind = Outcome::ACCEPTED;
    return outcome;
}

/// Succeeds if a port of this host is online and, unless its name is empty, a remote port.
Outcome CheckOnline(const Port& port, const std::string& remotePort) {
    const std::string own = Attribute(GetTree()->Hosts(), port.name, "port_state");
    const std::string remote =
        remotePort.empty() ? ONLINE : Attribute(GetTree()->RemotePorts(), remotePort, "port_state");
    if (own != ONLINE) {
        return Refusal(Outcome::LINK_DOWN, "the port is " + (own.empty() ? "gone" : own));
    }
    if (remote != ONLINE) {
        return Refusal(Outcome::FAILED, "the remote port is " + (remote.empty() ? "gone" : remote));
    }
    return Success();
}

/// Opens a destination. `ACCEPTED` if requests may be sent to it.
Outcome Open(const Port& port, const Destination& destination) {
    EndLinkTests();
    if (TestKernel() == nullptr && !GetTree()->Hosts().IsThisMachine()) {
        return Refusal(Outcome::UNSUPPORTED, "the tree isn't that of this machine");
    }
    Connection connection;
    connection.destination = destination;
    connection.peer.portId = destination.portId;
    connection.frameSize = FrameSizeOf(Attribute(GetTree()->Hosts(), port.name, "maxframe_size"));
    const bool isNamed = destination.portId == 0;
    for (const RemotePort& remote : RemotePortsOf(port)) {
        // Some drivers show well-known addresses as remote ports.
        if (isNamed ? remote.portName == destination.portName : remote.portId == destination.portId) {
            connection.remotePort = remote.name;
            connection.peer.isRemotePort = true;
            connection.peer.portId = remote.portId;
            connection.frameSize = std::min(
                connection.frameSize, FrameSizeOf(Attribute(GetTree()->RemotePorts(), remote.name, "maxframe_size")));
            break;
        }
    }
    if (isNamed && !connection.peer.isRemotePort) {
        return Refusal(Outcome::NO_PORT, "the port sees no such remote port");
    }
    // Old kernels hold a request to a blocked remote port back until they give that up.
    if (Outcome outcome = CheckOnline(port, connection.remotePort); outcome.kind != Outcome::ACCEPTED) {
        return outcome;
    }
    static SystemKernel systemKernel;
    connection.peer.kernel = TestKernel() != nullptr ? TestKernel() : &systemKernel;
    connection.peer.descriptor =
        connection.peer.kernel->Open(connection.peer.isRemotePort ? connection.remotePort : "fc_" + port.name);
    if (connection.peer.descriptor < 0) {
        return OutcomeOfOpening(connection.peer.descriptor);
    }
    Current() = connection;
    return Success();
}

/// Calls `send` with the peer, which stays open for the next request until one fails.
template <class Send> Outcome Try(const Port& port, const Destination& destination, Send send) {
    Connection& connection = Current();
    if (connection.peer.descriptor < 0 || connection.destination != destination) {
        if (Outcome outcome = Open(port, destination); outcome.kind != Outcome::ACCEPTED) {
            return outcome;
        }
    }
    Outcome outcome = send(connection.peer);
    if (outcome.kind == Outcome::ACCEPTED) {
        return outcome;
    }
    EndLinkTests();
    // The kernel doesn't say why it ends a request early.
    if (!outcome.isAnswered) {
        if (Outcome state = CheckOnline(port, connection.remotePort); state.kind != Outcome::ACCEPTED) {
            if (outcome.isSent) {
                state.text.replace(0, sizeof NOT_SENT - 1, "No answer: ");
            }
            state.isSent = outcome.isSent;
            return state;
        }
    }
    return outcome;
}

Outcome Echo(const Port& port, const Destination& destination) {
    return Try(port, destination, [](const Peer& peer) {
        const std::size_t size = std::min(MAX_ECHO, Current().frameSize);
        return SendEcho(peer, size - size % 4);
    });
}

/// Asks the directory for the port, and on `TRACE_ROUTE` for the fabric ports on the way to it.
Outcome QueryDirectory(const Port& port, std::uint64_t portName, VX_UINT32 testType, std::string& route) {
    if (FabricOf(port) == 0) {
        return Refusal(Outcome::NO_PORT, "without a fabric there is no directory service");
    }
    return Try(port, {port.number, 0, DIRECTORY_SERVER}, [&](const Peer& directory) {
        std::uint32_t portId = 0;
        Outcome outcome = QueryPortId(directory, portName, portId);
        if (outcome.kind != Outcome::ACCEPTED || testType != TRACE_ROUTE) {
            return outcome;
        }
        const std::uint32_t own = PortIdOf(Attribute(GetTree()->Hosts(), port.name, "port_id"));
        std::uint64_t fabricPorts[2] = {};
        std::uint64_t spent = 0;
        for (std::size_t end = 0; end < 2 && outcome.kind == Outcome::ACCEPTED; ++end) {
            spent += outcome.nanoseconds;
            outcome = spent > PATIENCE ? Refusal(Outcome::FAILED, "the directory service takes too long")
                                       : QueryFabricPort(directory, end == 0 ? own : portId, fabricPorts[end]);
        }
        if (outcome.kind == Outcome::ACCEPTED) {
            char text[80];
            std::snprintf(text, sizeof text, "%06x, %016llx, %016llx, %06x", own,
                          static_cast<unsigned long long>(fabricPorts[0]),
                          static_cast<unsigned long long>(fabricPorts[1]), portId);
            route = text;
        }
        return outcome;
    });
}

VX_UINT32 StatusOf(const Outcome& outcome) {
    switch (outcome.kind) {
    case Outcome::ACCEPTED:
        return OK;
    case Outcome::UNSUPPORTED:
        return UNSUPPORTED;
    case Outcome::LINK_DOWN:
        return LINK_DOWN;
    case Outcome::NO_PORT:
        return NO_SUCH_PORT;
    default:
        return NO_ANSWER;
    }
}

/// True for failures that the next frame would meet too.
bool IsFinal(const Outcome& outcome) {
    return StatusOf(outcome) != NO_ANSWER && outcome.kind != Outcome::ACCEPTED;
}

/// Holds SIGINT back while frames are sent, and ends a run that it arrives in. Programs that ignore it go on doing so.
class Interruption {
public:
    Interruption() {
        struct sigaction action {};
        sigaction(SIGINT, nullptr, &action);
        sigemptyset(&mSignals);
        if (action.sa_handler != SIG_IGN) {
            sigaddset(&mSignals, SIGINT);
        }
        pthread_sigmask(SIG_BLOCK, &mSignals, &mBefore);
    }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption() { pthread_sigmask(SIG_SETMASK, &mBefore, nullptr); }

    /// Takes the signal.
    bool HasCome() const {
        constexpr timespec NO_TIME{};
        return sigtimedwait(&mSignals, nullptr, &NO_TIME) == SIGINT;
    }

private:
    sigset_t mSignals;
    sigset_t mBefore;
};

/// Sends up to `count` frames by `send`, and counts those that are answered as they should be. Returns the last
/// failure. Tells of failures, but of a row of the same once only.
template <class Send>
Outcome Run(const Port& port, VX_UINT32 count, VX_UINT32 stopOnError, VX_UINT32& answered, Send send) {
    std::optional<Interruption> interruption;
    if (count > 1) {
        interruption.emplace();
    }
    Outcome failure = Success();
    answered = 0;
    for (VX_UINT32 sent = 0; sent < count; ++sent) {
        if (sent != 0 && interruption->HasCome()) {
            Tell(port.name, "interrupted after " + std::to_string(sent) + " of " + std::to_string(count) + " frames");
            failure.kind = Outcome::FAILED;
            break;
        }
        Outcome outcome = send();
        if (outcome.kind == Outcome::ACCEPTED) {
            ++answered;
            continue;
        }
        if (outcome.text != failure.text) {
            Tell(port.name, outcome.text);
        }
        failure = std::move(outcome);
        if (stopOnError != 0 || IsFinal(failure)) {
            break;
        }
    }
    return failure;
}

/// Writes what is known of a run to its buffer and the library's output.
VX_UINT32 Report(const Port& port, const Outcome& outcome, VX_UINT32 answered, VX_UINT32 count,
                 const std::string& route, VX_UINT32* output, void* buffer, VX_UINT32 size) {
    const std::string text =
        std::to_string(answered) + " of " + std::to_string(count) + " answered" + (route.empty() ? "" : ": " + route);
    Tell(port.name, text);
    *output = answered;
    std::snprintf(static_cast<char*>(buffer), size, "%s", text.c_str());
    return StatusOf(outcome);
}

/// The name in "xx:xx:xx:xx:xx:xx:xx:xx"; 0 if it isn't one.
std::uint64_t ParseName(const char* text) {
    char number[] = "0x0000000000000000";
    char* digit = number + 2;
    for (const char* at = text; at != nullptr && *at != '\0'; ++at) {
        if (*at != ':') {
            if (digit == std::end(number) - 1) {
                return 0;
            }
            *digit++ = *at;
        }
    }
    return digit == std::end(number) - 1 ? NumberIn(number).value_or(0) : 0;
}

Port* PortOf(const VX_PORT_HANDLE* handle) {
    return GetTree() == nullptr ? nullptr : GetTree()->FindPort(handle);
}

} // namespace

void host::EndLinkTests() {
    if (Current().peer.descriptor >= 0) {
        Current().peer.kernel->Close(Current().peer.descriptor);
    }
    Current().peer = {};
}

void host::SetKernel(Kernel* kernel) {
    EndLinkTests();
    TestKernel() = kernel;
}

VX_UINT32 VEXAPI_DiagnosticsFCPingTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                       VX_UINT32* output, void* buffer, VX_UINT32 size) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    VX_UINT32 answered = 0;
    const Destination destination = {port->number, ParseName(name), 0};
    const Outcome outcome = Run(*port, count, stopOnError, answered, [&] { return Echo(*port, destination); });
    return Report(*port, outcome, answered, count, "", output, buffer, size);
}

/// `EchoFailed` tells of the frames, the status of what keeps all of them from being sent.
VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType,
                                        _VEXAPI_ECHO_RESULTS* result) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    const std::uint64_t wanted = ParseName(name);
    const bool isFabric = destinationType == TO_FABRIC;
    const bool isThere = !isFabric || (wanted != 0 && wanted == FabricOf(*port));
    const Destination destination =
        isFabric ? Destination{port->number, 0, FABRIC_CONTROLLER} : Destination{port->number, wanted, 0};
    VX_UINT32 answered = 0;
    *result = {};
    const Outcome outcome = Run(*port, count, stopOnError, answered, [&] {
        Outcome frame =
            isThere ? Echo(*port, destination) : Refusal(Outcome::NO_PORT, "the port isn't attached to such a fabric");
        result->FrameSent += frame.isSent ? 1 : 0;
        result->FrameReceived += frame.isAnswered ? 1 : 0;
        result->ResponseLength = frame.length;
        result->ResponseTime = Saturated((frame.nanoseconds + 500'000) / 1'000'000); // milliseconds
        result->EchoStatus[frame.text.copy(result->EchoStatus, MAX_OUTCOME_TEXT)] = '\0';
        return frame;
    });
    result->EchoFailed = outcome.kind == Outcome::ACCEPTED ? 0 : 1;
    return StatusOf(outcome) == NO_ANSWER ? VX_UINT32{OK} : StatusOf(outcome);
}

VX_UINT32 VEXAPI_DiagnosticsCTCommand(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                      VX_UINT32* output, void* buffer, VX_UINT32 size, VX_UINT32 testType) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    VX_UINT32 answered = 0;
    std::string route;
    const std::uint64_t portName = ParseName(name);
    const Outcome outcome =
        Run(*port, count, stopOnError, answered, [&] { return QueryDirectory(*port, portName, testType, route); });
    return Report(*port, outcome, answered, count, route, output, buffer, size);
}

/// Asks the fabric port of a fabric, and the fabric controller if that rejects it; otherwise the only remote port.
VX_UINT32 VEXAPI_DiagnosticsRDPTest(VX_PORT_HANDLE* handle, void* buffer, VX_UINT32* size) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    std::vector<std::uint8_t> payload;
    const auto ask = [&](const Destination& destination, std::uint32_t portId) {
        return Try(*port, destination,
                   [&](const Peer& peer) { return ReadDiagnosticParameters(peer, portId, payload); });
    };
    Outcome outcome;
    if (FabricOf(*port) != 0) {
        const std::uint32_t own = PortIdOf(Attribute(GetTree()->Hosts(), port->name, "port_id"));
        for (const std::uint32_t address : {FABRIC_PORT, FABRIC_CONTROLLER}) {
            outcome = ask({port->number, 0, address}, own);
            if (outcome.kind == Outcome::ACCEPTED || !outcome.isAnswered || outcome.nanoseconds > PATIENCE) {
                break;
            }
        }
    } else {
        std::vector<RemotePort> ports = RemotePortsOf(*port);
        std::erase_if(ports, [](const RemotePort& each) { return each.portId >= FIRST_WELL_KNOWN; });
        outcome = ports.size() == 1 ? ask({port->number, ports[0].portName, 0}, ports[0].portId)
                                    : Refusal(Outcome::NO_PORT, "not one remote port at the other end, but " +
                                                                    std::to_string(ports.size()));
    }
    if (outcome.kind == Outcome::ACCEPTED) {
        *size = std::min(*size, static_cast<VX_UINT32>(payload.size()));
        std::memcpy(buffer, payload.data(), *size);
    } else {
        Tell(port->name, outcome.text);
    }
    return StatusOf(outcome);
}
