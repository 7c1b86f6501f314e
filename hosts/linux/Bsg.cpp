#include "Bsg.h"

#include "Sysfs.h"
#include "Values.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace host {

namespace {

/* The records that the transport class exchanges, an interface of the kernel. */

constexpr std::uint32_t REMOTE_PORT_LINK_SERVICE = 0x40000001;
constexpr std::uint32_t REMOTE_PORT_COMMON_TRANSPORT = 0x40000002;
constexpr std::uint32_t HOST_LINK_SERVICE = 0x80000003; ///< to a port without login
constexpr std::uint32_t HOST_COMMON_TRANSPORT = 0x80000004;

struct Request {
    std::uint32_t code;
    /// To a remote port: the service's own fields. Otherwise a byte, the port id, and the rest of these fields.
    std::uint8_t fields[16];
};
static_assert(sizeof(Request) == 20);

struct Reply {
    std::int32_t result; ///< a negative errno, or a SCSI host byte in bits 16 to 23
    std::uint32_t length;
    std::uint32_t status;
    std::uint8_t action, reason, explanation, vendorUnique;
};
static_assert(sizeof(Reply) == 16);

/// The least that a driver fills in of a reply: its result and the length.
constexpr std::uint32_t SHORTEST_REPLY = 8;
constexpr std::int32_t MAX_ERRNO = 4095; ///< of the kernel

std::uint64_t Address(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

Request MakeRequest(const Peer& peer, Service service, std::span<const std::uint8_t> payload) {
    Request request{};
    const bool isLink = service == Service::LINK;
    request.code = peer.isRemotePort ? (isLink ? REMOTE_PORT_LINK_SERVICE : REMOTE_PORT_COMMON_TRANSPORT)
                                     : (isLink ? HOST_LINK_SERVICE : HOST_COMMON_TRANSPORT);
    std::uint8_t* field = request.fields;
    if (!peer.isRemotePort) {
        for (const int shift : {24, 16, 8, 0}) { // the first byte is that of the link service
            *field++ = static_cast<std::uint8_t>(peer.portId >> shift);
        }
    }
    if (isLink) {
        request.fields[0] = payload[0];
        return request;
    }
    // The first three words of the payload, in the machine's byte order.
    for (std::size_t at = 0; at < 12; at += 4, field += 4) {
        const std::uint32_t word = std::uint32_t{payload[at]} << 24 | std::uint32_t{payload[at + 1]} << 16 |
                                   std::uint32_t{payload[at + 2]} << 8 | payload[at + 3];
        std::memcpy(field, &word, sizeof word);
    }
    return request;
}

} // namespace

SystemKernel::SystemKernel(std::string nodes, std::string classes)
    : mNodes(std::move(nodes)), mClasses(std::move(classes)) {}

int SystemKernel::Open(const std::string& name) {
    const Folder root("");
    const Folder classes(root, mClasses.c_str());
    if (!classes.Exists()) {
        return -ENOSYS;
    }
    const Reading reading = classes.Read((name + "/dev").c_str());
    if (reading.error != 0) {
        return reading.error == ENOENT ? -EOPNOTSUPP : -reading.error;
    }
    const std::string device(Trimmed(reading.bytes));

    const int folder = ::open(mNodes.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) {
        return errno == ELOOP || errno == ENOTDIR ? -ENODEV : -errno;
    }
    const int descriptor = openat(folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    const int error = errno;
    close(folder);
    if (descriptor < 0) {
        return error == ELOOP || error == EISDIR || error == ENXIO ? -ENODEV : -error;
    }
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISCHR(status.st_mode) ||
        std::to_string(major(status.st_rdev)) + ':' + std::to_string(minor(status.st_rdev)) != device) {
        close(descriptor);
        return -ENODEV;
    }
    return descriptor;
}

void SystemKernel::Close(int descriptor) {
    close(descriptor);
}

int SystemKernel::Submit(int descriptor, sg_io_v4& exchange) {
    return ioctl(descriptor, SG_IO, &exchange) < 0 ? errno : 0;
}

std::uint64_t SystemKernel::Now() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(now.tv_nsec);
}

Delivery Deliver(const Peer& peer, Service service, std::span<const std::uint8_t> request,
                 std::span<std::uint8_t> answer) {
    const Request head = MakeRequest(peer, service, request);
    Reply reply{};
    sg_io_v4 exchange{};
    exchange.guard = 'Q';
    exchange.protocol = BSG_PROTOCOL_SCSI;
    exchange.subprotocol = BSG_SUB_PROTOCOL_SCSI_TRANSPORT;
    exchange.request_len = sizeof head;
    exchange.request = Address(&head);
    exchange.max_response_len = sizeof reply;
    exchange.response = Address(&reply);
    exchange.dout_xfer_len = static_cast<std::uint32_t>(request.size());
    exchange.dout_xferp = Address(request.data());
    exchange.din_xfer_len = static_cast<std::uint32_t>(answer.size());
    exchange.din_xferp = Address(answer.data());
    exchange.timeout = TIMEOUT_MILLISECONDS;

    Delivery delivery;
    delivery.error = peer.kernel->Submit(peer.descriptor, exchange);
    if (delivery.error == 0 && reply.result < 0) {
        delivery.error = reply.result >= -MAX_ERRNO ? -reply.result : EIO;
    }
    delivery.isWhole = exchange.response_len >= SHORTEST_REPLY;
    delivery.fault = static_cast<std::uint32_t>(reply.result) >> 16 & 0xFF;
    delivery.status = reply.status;
    delivery.reason = reply.reason;
    delivery.explanation = reply.explanation;
    delivery.length = reply.length;
    return delivery;
}

} // namespace host
