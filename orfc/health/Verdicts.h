/// @file
/// Verdicts over the objects of a host.
#pragma once

#include "Rules.h"

#include <memory>

namespace orfc {

/// What applies to an object: a rule with the figures, or, without a rule, what couldn't be read of it, or nothing.
struct Finding {
    Object object;
    const Rule* rule = nullptr;
    Severity severity = Severity::OK;
    std::string figures;

    /// What is wrong, in words.
    std::string Reason() const;
};

/// Every object of a host with what applies to it: one finding or several. The findings refer to the host.
struct Health {
    std::shared_ptr<const std::vector<Volume>> luns;
    std::vector<Finding> findings;

    Severity Worst() const;
};

/// A host's health, and the rules by which it was judged.
struct Judgement {
    RuleBook rules;
    Health health;
};

/// Judges the host by the rules, now and against earlier readings.
Health Judge(const Host& host, const RuleBook& rules, const Readings& now, const Readings& earlier);

} // namespace orfc
