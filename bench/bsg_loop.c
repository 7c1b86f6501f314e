/// @file
/// Baseline for link tests: `bsg_loop /dev/bsg/rport-H:C-N FRAMES` sends that many echoes of 1,024 bytes, and looks at
/// no answer.
#include <fcntl.h>
#include <linux/bsg.h>
#include <scsi/sg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/ioctl.h>

int main(int argc, char** argv) {
    const uint32_t request[5] = {0x40000001, 0x10}; // a link service to a remote port; ECHO, on a little-endian machine
    static uint8_t sent[1024] = {0x10};
    static uint8_t received[1024];
    uint32_t reply[4];
    const int node = argc == 3 ? open(argv[1], O_RDWR) : -1;
    for (long frame = node < 0 ? 0 : strtol(argv[2], NULL, 10); frame > 0; --frame) {
        struct sg_io_v4 exchange = {.guard = 'Q',
                                    .subprotocol = BSG_SUB_PROTOCOL_SCSI_TRANSPORT,
                                    .request_len = sizeof request,
                                    .request = (uintptr_t)request,
                                    .max_response_len = sizeof reply,
                                    .response = (uintptr_t)reply,
                                    .dout_xfer_len = sizeof sent,
                                    .dout_xferp = (uintptr_t)sent,
                                    .din_xfer_len = sizeof received,
                                    .din_xferp = (uintptr_t)received,
                                    .timeout = 30000};
        if (ioctl(node, SG_IO, &exchange) != 0) {
            perror("bsg_loop");
            return 1;
        }
    }
    if (node < 0) {
        perror("bsg_loop");
    }
    return node < 0;
}
