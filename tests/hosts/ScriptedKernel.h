/// @file
/// A kernel whose answers are scripted, and that keeps what it was sent.
#pragma once

#include "Bsg.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace linux_test {

using Data = std::vector<std::uint8_t>;

/// The kernel's account of a request, and the answer.
struct Reply {
    std::int32_t result = 0;
    std::uint32_t length = 0; ///< of the answer, as the kernel tells it
    std::uint32_t status = 0;
    std::uint8_t action = 0, reason = 0, explanation = 0, vendorUnique = 0;
    std::uint32_t size = 16; ///< how much of these the kernel fills in
    Data answer = {};
};

class ScriptedKernel : public host::Kernel {
public:
    struct Request {
        std::string node;
        std::uint32_t code = 0;
        Data fields;
        Data payload;
    };
    std::vector<Request> requests;
    std::vector<std::string> opened;
    unsigned closed = 0;
    int openResult = 5;
    std::uint64_t step = 1'000; ///< of the clock, in nanoseconds

    /// Answers to the next requests; an accepted echo if there are none. Each returns an errno.
    std::deque<std::function<int(const Request&, Reply&)>> script;

    void Fail(int error) {
        script.push_back([=](const Request&, Reply&) { return error; });
    }
    void Answer(const Reply& reply) {
        script.push_back([=](const Request&, Reply& given) {
            given = reply;
            return 0;
        });
    }
    /// An answer that the kernel reports as it is.
    void Answer(const Data& answer) {
        Reply reply;
        reply.length = static_cast<std::uint32_t>(answer.size());
        reply.answer = answer;
        Answer(reply);
    }
    /// An echo that `change` alters.
    void Echo(const std::function<void(Data&)>& change) {
        script.push_back([=](const Request& request, Reply& reply) {
            reply.answer = request.payload;
            reply.answer[0] = 2;
            change(reply.answer);
            reply.length = static_cast<std::uint32_t>(reply.answer.size());
            return 0;
        });
    }

    int Open(const std::string& name) override {
        opened.push_back(name);
        return openResult;
    }
    void Close(int /*descriptor*/) override { ++closed; }
    std::uint64_t Now() override { return mNow += step; }

    int Submit(int /*descriptor*/, sg_io_v4& exchange) override {
        Request request;
        request.node = opened.back();
        const auto* const head = Pointer(exchange.request);
        std::memcpy(&request.code, head, sizeof request.code);
        request.fields.assign(head + sizeof request.code, head + exchange.request_len);
        request.payload.assign(Pointer(exchange.dout_xferp), Pointer(exchange.dout_xferp) + exchange.dout_xfer_len);
        requests.push_back(request);
        timeout = exchange.timeout;
        if (script.empty()) {
            Echo([](Data&) {});
        }
        Reply reply;
        const int error = script.front()(request, reply);
        script.pop_front();
        if (error == 0) {
            std::copy_n(reply.answer.begin(), std::min<std::size_t>(reply.answer.size(), exchange.din_xfer_len),
                        Pointer(exchange.din_xferp));
            exchange.response_len = std::min(reply.size, exchange.max_response_len);
            std::memcpy(Pointer(exchange.response), &reply, exchange.response_len);
        }
        return error;
    }
    std::uint32_t timeout = 0; ///< of the last request

private:
    static std::uint8_t* Pointer(std::uint64_t address) { return reinterpret_cast<std::uint8_t*>(address); }

    std::uint64_t mNow = 0;
};

} // namespace linux_test
