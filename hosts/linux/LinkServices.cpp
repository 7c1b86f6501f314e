#include "LinkServices.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace host {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Answer = std::span<const std::uint8_t>;

/// Link services, in the first byte of a payload.
enum LinkService : std::uint8_t { LS_RJT = 0x01, LS_ACC = 0x02, ECHO = 0x10, RDP = 0x18 };
/// Commands of the directory service, in bytes 8 and 9; those below 0x0200 are queries.
enum DirectoryCommand : std::uint16_t { GFPN_ID = 0x011C, GID_PN = 0x0121, REJECT = 0x8001, ACCEPT = 0x8002 };

constexpr std::size_t WORD = 4;
constexpr std::size_t LS_RJT_SIZE = 8;
constexpr std::size_t CT_HEADER_SIZE = 16;
/// The largest data field of a frame: no answer of one frame is longer.
constexpr std::size_t MAX_FRAME = 2112;

struct Code {
    unsigned code;
    const char* text;
};

// clang-format off

/// LS_RJT and, as far as it has them, CT_IU reject.
constexpr Code REASONS[] = {
    {0x01, "invalid command code"},
    {0x02, "invalid version level"}, // CT_IU only
    {0x03, "logical error"},
    {0x04, "invalid CT_IU size"}, // CT_IU only
    {0x05, "logical busy"},
    {0x07, "protocol error"},
    {0x09, "unable to perform request"},
    {0x0B, "command not supported"},
    {0x0D, "server not available"}, // CT_IU only
    {0x0E, "command in progress"},
    {0x20, "FIP error"},
    {0xFF, "vendor specific error"},
};
constexpr Code LINK_EXPLANATIONS[] = {
    {0x01, "service parameter, options"},
    {0x03, "service parameter, initiator"},
    {0x05, "service parameter, recipient"},
    {0x07, "receive data field size"},
    {0x09, "concurrent sequences"},
    {0x0B, "credit"},
    {0x0D, "invalid port name"},
    {0x0E, "invalid node or fabric name"},
    {0x0F, "invalid common parameters"},
    {0x11, "invalid association header"},
    {0x13, "association header required"},
    {0x15, "invalid originator S_ID"},
    {0x17, "invalid OX_ID-RX_ID"},
    {0x19, "request already in progress"},
    {0x1E, "N_Port login required"},
    {0x1F, "invalid N_Port_ID"},
    {0x29, "no resources for a login"},
    {0x2A, "unable to supply data"},
    {0x2C, "request not supported"},
    {0x2D, "invalid payload length"},
};
constexpr Code DIRECTORY_EXPLANATIONS[] = {
    {0x01, "port id not registered"},
    {0x02, "port name not registered"},
    {0x03, "node name not registered"},
    {0x04, "class of service not registered"},
    {0x07, "FC-4 types not registered"},
    {0x0A, "port type not registered"},
    {0x0C, "fabric port name not registered"},
    {0x10, "access denied"},
    {0x11, "unacceptable port id"},
    {0x12, "database empty"},
    {0x13, "nothing in this scope"},
};
/// P_RJT and F_RJT.
constexpr Code FRAME_REASONS[] = {
    {0x01, "invalid D_ID"},
    {0x02, "invalid S_ID"},
    {0x03, "temporarily not available"},
    {0x04, "permanently not available"},
    {0x05, "class not supported"},
    {0x06, "delimiter usage error"},
    {0x07, "type not supported"},
    {0x08, "invalid link control"},
    {0x09, "invalid R_CTL"},
    {0x0A, "invalid F_CTL"},
    {0x0B, "invalid OX_ID"},
    {0x0C, "invalid RX_ID"},
    {0x0D, "invalid SEQ_ID"},
    {0x0E, "invalid DF_CTL"},
    {0x0F, "invalid SEQ_CNT"},
    {0x10, "invalid parameter field"},
    {0x11, "exchange error"},
    {0x12, "protocol error"},
    {0x13, "incorrect length"},
    {0x14, "unexpected ACK"},
    {0x16, "login required"},
    {0x17, "excessive sequences"},
    {0x18, "no exchange established"},
    {0x1A, "fabric path not available"},
    {0xFF, "vendor specific error"},
};
/// P_BSY.
constexpr Code BUSY_REASONS[] = {
    {0x01, "physical port busy"},
    {0x03, "resource busy"},
    {0x07, "partial multicast busy"},
    {0xFF, "vendor specific busy"},
};
/// The driver's faults: SCSI host bytes.
constexpr Code FAULTS[] = {
    {0x01, "no connection"},
    {0x02, "bus busy"},
    {0x03, "timeout"},
    {0x04, "bad target"},
    {0x05, "aborted"},
    {0x07, "error"},
    {0x08, "reset"},
    {0x0C, "to be repeated"},
    {0x0D, "to be queued again"},
    {0x0E, "transport disrupted"},
    {0x0F, "transport failed"},
};

constexpr char NO_ANSWER[] = "No answer in time";

struct Refusal {
    int error;
    Outcome::Kind kind;
    bool isSent;
    const char* text;
};
/// What an errno means: first of opening a node, then of a request.
constexpr Refusal OPENING[] = {
    {ENOSYS,       Outcome::UNSUPPORTED, false, "Not sent: the kernel has no bsg nodes (CONFIG_BLK_DEV_BSG)"},
    {EOPNOTSUPP,   Outcome::UNSUPPORTED, false, "Not sent: the driver offers no pass-through for this port"},
    {ENOENT,       Outcome::UNSUPPORTED, false, "Not sent: no node in /dev/bsg; udev or devtmpfs makes it"},
    {ENODEV,       Outcome::UNSUPPORTED, false, "Not sent: the file in /dev/bsg isn't the port's device"},
    {EACCES,       Outcome::UNSUPPORTED, false, "Not sent: it needs root"},
    {EPERM,        Outcome::UNSUPPORTED, false, "Not sent: it needs root"},
};
constexpr Refusal SENDING[] = {
    {EPERM,        Outcome::UNSUPPORTED, false, "Not sent: it needs root (CAP_SYS_RAWIO)"},
    {EINVAL,       Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {ENOTTY,       Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {ENOSYS,       Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {EOPNOTSUPP,   Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {EBADR,        Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {ENOMSG,       Outcome::UNSUPPORTED, false, "Not sent: the driver doesn't offer this request"},
    {ENODEV,       Outcome::FAILED,      false, "Not sent: the port is gone"},
    {ENXIO,        Outcome::FAILED,      false, "Not sent: the port is gone"},
    {ETIMEDOUT,    Outcome::FAILED,      true,  NO_ANSWER},
    {ECONNABORTED, Outcome::FAILED,      true,  "No answer: the exchange was aborted"},
    {EIO,          Outcome::FAILED,      false, "Not sent: the port can't be reached"},
    {EAGAIN,       Outcome::FAILED,      false, "Not sent: the port is busy"},
    {EBUSY,        Outcome::FAILED,      false, "Not sent: the port is busy"},
};

// clang-format on

[[gnu::format(printf, 1, 2)]] std::string Text(const char* format, ...) {
    char text[MAX_OUTCOME_TEXT + 1];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

template <std::size_t count> std::string Words(const Code (&codes)[count], unsigned code, const char* kind) {
    const auto row = std::find_if(codes, codes + count, [&](const Code& each) { return each.code == code; });
    return row == codes + count ? Text("%s 0x%02x", kind, code) : row->text;
}

template <std::size_t count> Outcome OutcomeOf(const Refusal (&refusals)[count], int error, Outcome::Kind otherwise) {
    Outcome outcome;
    for (const Refusal& refusal : refusals) {
        if (refusal.error == error) {
            outcome.kind = refusal.kind;
            outcome.isSent = refusal.isSent;
            outcome.text = refusal.text;
            return outcome;
        }
    }
    outcome.kind = otherwise;
    outcome.text = Text("Not sent: %s", std::strerror(error));
    return outcome;
}

/// "Rejected: REASON, EXPLANATION". Explanation 0 is "no additional explanation".
template <std::size_t count>
std::string Rejection(std::uint8_t reason, std::uint8_t explanation, const Code (&explanations)[count]) {
    if (reason == 0) {
        return "Rejected without a reason";
    }
    const std::string words = "Rejected: " + Words(REASONS, reason, "reason");
    return explanation == 0 ? words : words + ", " + Words(explanations, explanation, "explanation");
}

std::uint64_t Number(const std::uint8_t* bytes, std::size_t size) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

void Append(Bytes& bytes, std::uint64_t number, std::size_t size) {
    while (size-- > 0) {
        bytes.push_back(static_cast<std::uint8_t>(number >> 8 * size));
    }
}

/// A rejection by the answer or, if a driver doesn't hand over that one's payload, by the kernel's account.
std::string RejectionOf(Service service, const Delivery& delivery, Answer answer) {
    if (service == Service::LINK) {
        const bool isGiven = answer.size() >= LS_RJT_SIZE && answer[0] == LS_RJT;
        return Rejection(isGiven ? answer[5] : delivery.reason, isGiven ? answer[6] : delivery.explanation,
                         LINK_EXPLANATIONS);
    }
    const bool isGiven = answer.size() >= CT_HEADER_SIZE && Number(&answer[8], 2) == REJECT;
    return Rejection(isGiven ? answer[13] : delivery.reason, isGiven ? answer[14] : delivery.explanation,
                     DIRECTORY_EXPLANATIONS);
}

/// Judges a delivery. `answer` holds what arrived.
Outcome Judge(Service service, const Delivery& delivery, Answer answer) {
    if (delivery.error != 0) {
        return OutcomeOf(SENDING, delivery.error, Outcome::FAILED);
    }
    Outcome outcome;
    outcome.isSent = true;
    if (!delivery.isWhole) {
        outcome.text = "The kernel's reply is incomplete";
        return outcome;
    }
    if (delivery.fault != 0) {
        outcome.text = Text("Failed in the driver: %s", Words(FAULTS, delivery.fault, "fault").c_str());
        return outcome;
    }
    if (delivery.status == DELIVERED && delivery.length == 0) { // so the kernel ends a request that it gives up
        outcome.text = NO_ANSWER;
        return outcome;
    }
    outcome.length = delivery.length;
    outcome.isAnswered = true;
    const bool isLink = service == Service::LINK;
    // Some drivers report a rejection as an answer like any other.
    const std::uint64_t code = isLink                           ? (answer.empty() ? 0 : answer[0])
                               : answer.size() < CT_HEADER_SIZE ? 0
                                                                : Number(&answer[8], 2);
    const bool isRejected = code == (isLink ? std::uint64_t{LS_RJT} : std::uint64_t{REJECT});
    const bool isAccepted = code == (isLink ? std::uint64_t{LS_ACC} : std::uint64_t{ACCEPT});
    switch (delivery.status) {
    case DELIVERED:
        if (isRejected) {
            outcome.text = RejectionOf(service, delivery, answer);
        } else if (answer.size() < (isLink ? WORD : CT_HEADER_SIZE)) {
            outcome.text = Text("Answer too short: %zu bytes", answer.size());
        } else if (!isAccepted) {
            outcome.text = Text("Answer not understood: code 0x%02x", static_cast<unsigned>(code));
        } else {
            outcome.kind = Outcome::ACCEPTED;
        }
        break;
    case REJECTED:
        outcome.text = RejectionOf(service, delivery, answer);
        break;
    case REJECTED_BY_PORT:
        outcome.text = "Frame rejected by the port: " + Words(FRAME_REASONS, delivery.reason, "reason");
        break;
    case REJECTED_BY_FABRIC:
        outcome.text = "Frame rejected by the fabric: " + Words(FRAME_REASONS, delivery.reason, "reason");
        break;
    case BUSY_PORT:
        outcome.text = "Busy: " + Words(BUSY_REASONS, delivery.reason, "reason");
        break;
    case BUSY_FABRIC:
        outcome.text = "Busy: the fabric";
        break;
    default:
        outcome.text = Text("Kernel's status not understood: %u", delivery.status);
    }
    return outcome;
}

/// Sends a request. `answer` is the buffer, and then what arrived in it.
Outcome Ask(const Peer& peer, Service service, std::span<const std::uint8_t> request, std::span<std::uint8_t>& answer) {
    const std::uint64_t start = peer.kernel->Now();
    const Delivery delivery = Deliver(peer, service, request, answer);
    const std::uint64_t end = peer.kernel->Now();
    answer = answer.first(std::min<std::size_t>(answer.size(), delivery.isWhole ? delivery.length : 0));
    Outcome outcome = Judge(service, delivery, answer);
    outcome.nanoseconds = end - start;
    return outcome;
}

void Fail(Outcome& outcome, std::string text) {
    outcome.kind = Outcome::FAILED;
    outcome.text = std::move(text);
}

/// A query of `size` bytes of data about a key; `data` is the number that answers it.
Outcome Query(const Peer& directory, DirectoryCommand command, std::uint64_t key, std::size_t keySize, std::size_t size,
              std::uint64_t& data) {
    constexpr std::uint64_t REVISION = 1;
    constexpr std::uint64_t DIRECTORY_SERVICE = 0xFC;
    constexpr std::uint64_t NAME_SERVER = 0x02;
    Bytes request;
    Append(request, REVISION << 24, 4);
    Append(request, DIRECTORY_SERVICE << 24 | NAME_SERVER << 16, 4);
    Append(request, command, 2);
    Append(request, size / WORD, 2); // the largest answer, in words
    Append(request, 0, 4);
    Append(request, key, keySize);
    Bytes buffer(CT_HEADER_SIZE + size);
    std::span answer(buffer);
    Outcome outcome = Ask(directory, Service::COMMON_TRANSPORT, request, answer);
    if (outcome.kind == Outcome::ACCEPTED && answer.size() < CT_HEADER_SIZE + size) {
        Fail(outcome, Text("Answer too short: %zu bytes", answer.size()));
    }
    if (outcome.kind == Outcome::ACCEPTED) {
        data = Number(&answer[CT_HEADER_SIZE], size);
    }
    return outcome;
}

} // namespace

Outcome OutcomeOfOpening(int error) {
    return OutcomeOf(OPENING, -error, Outcome::UNSUPPORTED);
}

Outcome SendEcho(const Peer& peer, std::size_t size) {
    // Multiples of an odd number: none comes twice, and each differs from the next in many bits.
    constexpr std::uint64_t STEP = 0x9E3779B97F4A7C15;
    static std::uint64_t last = peer.kernel->Now();
    std::uint64_t data[MAX_ECHO / sizeof last];
    for (std::size_t at = 0; at < std::size(data); ++at) {
        data[at] = last + (at + 1) * STEP;
    }
    last = data[std::size(data) - 1];
    const std::span request(reinterpret_cast<std::uint8_t*>(data), size);
    std::fill_n(request.begin(), WORD, std::uint8_t{0});
    request[0] = ECHO;
    std::uint8_t buffer[MAX_ECHO] = {};
    std::span answer(buffer, size);
    Outcome outcome = Ask(peer, Service::LINK, request, answer);
    if (outcome.kind != Outcome::ACCEPTED) {
        return outcome;
    }
    if (!std::equal(answer.begin() + WORD, answer.end(), request.begin() + WORD)) {
        const auto altered = std::mismatch(answer.begin() + WORD, answer.end(), request.begin() + WORD).first;
        Fail(outcome, Text("Answer altered at byte %td of %zu", altered - answer.begin(), size));
    } else if (outcome.length != size) {
        Fail(outcome,
             Text("Answer too %s: %u of %zu bytes", outcome.length < size ? "short" : "long", outcome.length, size));
    } else {
        outcome.text = "Echo accepted";
    }
    return outcome;
}

Outcome ReadDiagnosticParameters(const Peer& peer, std::uint32_t portId, Bytes& payload) {
    constexpr std::uint64_t PORT_ID_TAG = 3;
    Bytes request;
    Append(request, RDP, 1);
    Append(request, 0, 3);
    Append(request, 3 * WORD, 4); // length of the list: one descriptor
    Append(request, PORT_ID_TAG, 4);
    Append(request, WORD, 4);
    Append(request, portId, 4);
    std::uint8_t buffer[MAX_FRAME] = {};
    std::span answer(buffer, MAX_FRAME);
    Outcome outcome = Ask(peer, Service::LINK, request, answer);
    const Answer list = answer.subspan(std::min(answer.size(), WORD));
    payload.assign(list.begin(), list.end());
    if (outcome.kind == Outcome::ACCEPTED && list.size() < WORD) {
        Fail(outcome, Text("Answer too short: %zu bytes", answer.size()));
    }
    return outcome;
}

Outcome QueryPortId(const Peer& directory, std::uint64_t portName, std::uint32_t& portId) {
    std::uint64_t data = 0;
    Outcome outcome = Query(directory, GID_PN, portName, 8, 4, data);
    portId = static_cast<std::uint32_t>(data & 0xFFFFFF);
    return outcome;
}

Outcome QueryFabricPort(const Peer& directory, std::uint32_t portId, std::uint64_t& fabricPort) {
    return Query(directory, GFPN_ID, portId, 4, 8, fabricPort);
}

} // namespace host
