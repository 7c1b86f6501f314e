/// @file
/// Runs of many steps that an interrupt ends early.
#pragma once

/// Holds back the first SIGINT during its lifetime, so that a command can end its run and show what is known so far.
/// The signal then takes its usual course, as a second one does at once. There is one at a time.
class InterruptHold {
public:
    InterruptHold();
    /// Writes what standard output has buffered before the signal takes its course.
    ~InterruptHold();
    InterruptHold(const InterruptHold&) = delete;
    InterruptHold& operator=(const InterruptHold&) = delete;

    bool HasCome() const;
};
