/// @file
/// Requests to other ports (FC-LS, FC-GS), and what became of them in words.
#pragma once

#include "Bsg.h"

#include <cstddef>
#include <vector>

namespace host {

/// What became of a request.
struct Outcome {
    enum Kind {
        ACCEPTED,
        FAILED,      ///< not sent, rejected, or without the right answer: the next request may succeed
        UNSUPPORTED, ///< not sent, and the next one wouldn't be either
        LINK_DOWN,   ///< the same, as long as the port has no link
        NO_PORT,     ///< there is nothing to send to
    } kind = FAILED;
    std::string text;              ///< at most `MAX_OUTCOME_TEXT` characters
    bool isSent = false;           ///< as far as known
    bool isAnswered = false;       ///< by the remote port or the fabric
    std::uint32_t length = 0;      ///< of the answer, in bytes
    std::uint64_t nanoseconds = 0; ///< from the request to its end
};
inline constexpr std::size_t MAX_OUTCOME_TEXT = 71;

/// What a node that can't be opened means, by the negative errno of `Kernel::Open`.
Outcome OutcomeOfOpening(int error);

/// Sends an ECHO of `size` bytes (8 to `MAX_ECHO`, a multiple of 4), each with other data, and compares the answer.
inline constexpr std::size_t MAX_ECHO = 1024;
Outcome SendEcho(const Peer& peer, std::size_t size);

/// Reads the diagnostic parameters (RDP) of the port with this id, which the peer is or stands for. `payload` begins
/// with the length of the list of descriptors.
Outcome ReadDiagnosticParameters(const Peer& peer, std::uint32_t portId, std::vector<std::uint8_t>& payload);

/* Queries to the directory service. None of them changes anything there. */

/// The port id of a port name.
Outcome QueryPortId(const Peer& directory, std::uint64_t portName, std::uint32_t& portId);
/// The name of the fabric port that a port is attached to.
Outcome QueryFabricPort(const Peer& directory, std::uint32_t portId, std::uint64_t& fabricPort);

} // namespace host
