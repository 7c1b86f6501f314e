/// @file
/// A failure that ends the command.
#pragma once

#include <stdexcept>
#include <string>

namespace orfc {

/// The text says what and where, in one line. The value is the exit status.
struct Failure : std::runtime_error {
    enum Status { FAILED = 1, USAGE = 2 };
    explicit Failure(const std::string& text, Status failure = FAILED) : std::runtime_error(text), status(failure) {}
    Status status;
};

} // namespace orfc
