/// @file
/// Requests to Fibre Channel ports through the kernel's bsg nodes.
#pragma once

#include <cstdint>
#include <linux/bsg.h>
#include <span>
#include <string>

namespace host {

/// What link tests ask of the operating system. Tests script it.
class Kernel {
public:
    virtual ~Kernel() = default;

    /// Opens the node of a name in class/bsg. Returns a descriptor, or a negative errno: -ENOSYS if the kernel has no
    /// bsg nodes, -EOPNOTSUPP if the driver has none for this name, -ENOENT if the node is missing, -ENODEV if what has
    /// its name isn't the device.
    virtual int Open(const std::string& name) = 0;
    virtual void Close(int descriptor) = 0;

    /// Sends a request and waits for the answer. Returns 0, or an errno.
    virtual int Submit(int descriptor, sg_io_v4& exchange) = 0;

    /// Nanoseconds of a clock that never goes back.
    virtual std::uint64_t Now() = 0;
};

/// This machine's kernel.
class SystemKernel final : public Kernel {
public:
    /// The folder of the nodes, and that of their class in sysfs.
    explicit SystemKernel(std::string nodes = "/dev/bsg", std::string classes = "/sys/class/bsg");

    int Open(const std::string& name) override;
    void Close(int descriptor) override;
    int Submit(int descriptor, sg_io_v4& exchange) override;
    std::uint64_t Now() override;

private:
    std::string mNodes;
    std::string mClasses;
};

/// The kernel gives up a request after this time. Drivers are to end it earlier, as they do when the port is lost: some
/// still use a request that the kernel gave up.
inline constexpr std::uint32_t TIMEOUT_MILLISECONDS = 30'000;

enum class Service { LINK, COMMON_TRANSPORT };

/// Delivery of a request, as the kernel reports it.
enum DeliveryStatus : std::uint32_t {
    DELIVERED = 0,
    REJECTED = 1,
    REJECTED_BY_PORT = 2,
    REJECTED_BY_FABRIC = 3,
    BUSY_PORT = 4,
    BUSY_FABRIC = 6,
};

/// An open node, and the address that its requests go to.
struct Peer {
    Kernel* kernel = nullptr;
    int descriptor = -1;
    bool isRemotePort = false; ///< false: the node is that of a port of this host, which sends to `portId`
    std::uint32_t portId = 0;
};

/// The kernel's account of a request.
struct Delivery {
    int error = 0;           ///< an errno; the rest is then unknown
    bool isWhole = false;    ///< false: the kernel left out the parts below
    std::uint32_t fault = 0; ///< of the driver, in the SCSI layer's numbers; 0: none
    std::uint32_t status = 0;
    std::uint8_t reason = 0;
    std::uint8_t explanation = 0;
    std::uint32_t length = 0; ///< of the answer; may exceed the buffer
};

/// Sends `request`, a whole payload, and fills `answer` from the front. What doesn't arrive stays as it is.
Delivery Deliver(const Peer& peer, Service service, std::span<const std::uint8_t> request,
                 std::span<std::uint8_t> answer);

} // namespace host
