/// @file
/// The rules by which a host is judged: one row each.
#pragma once

#include "Earlier.h"
#include "Host.h"
#include "Volumes.h"

#include <span>

namespace orfc {

/// What a rule looks at.
enum class Subject { ADAPTER, PORT, LINK, TRANSCEIVER, TARGET, PATH, LUN };
inline constexpr Subject SUBJECTS[] = {Subject::ADAPTER, Subject::PORT, Subject::LINK, Subject::TRANSCEIVER,
                                       Subject::TARGET,  Subject::PATH, Subject::LUN};
/// "adapter", "port", …
const char* SubjectText(Subject subject);

enum class Severity { OK, UNKNOWN, WARNING, CRITICAL };
/// "ok", "unknown", "warning", "critical".
const char* SeverityText(Severity severity);

/// One object of a host as its subject's rules see it: with those that it is of.
struct Object {
    Subject subject;
    const Adapter* adapter = nullptr;
    const Port* port = nullptr; ///< none for an adapter, and for a LUN, which has several
    const Target* target = nullptr;
    const Lun* path = nullptr;
    const Volume* lun = nullptr;

    friend bool operator==(const Object&, const Object&) = default;
    std::string Identifier() const;
};

/// What a rule judges by.
struct Evidence {
    const Host& host;
    const Reading* now = nullptr;        ///< of the object's port
    const Reading* before = nullptr;     ///< of the same port; null if there is none that compares
    double seconds = 0;                  ///< between the two
    std::span<const double> bounds = {}; ///< of the rule, in its order
};

/// A number that decides whether a rule applies, and may be changed.
struct Bound {
    const char* name;
    double value;
    const char* description;
};

/// Bits of a rule.
enum RuleTrait : unsigned {
    COMPARES_READINGS = 1, ///< judges what moved since an earlier reading
    IS_SLOW = 2,           ///< judges what takes long to read and seldom changes: modules, settings
};

/// A rule. `judge` returns the figures that make it apply to an object, or nothing.
struct Rule {
    const char* name;
    Subject subject;
    Severity severity;
    std::span<const Bound> bounds;
    const char* text;    ///< what is wrong, in words
    const char* meaning; ///< why it matters
    const char* remedy;  ///< what to do
    std::optional<std::string> (*judge)(const Object& object, const Evidence& evidence);
    unsigned traits = 0; ///< of `RuleTrait`

    bool Is(RuleTrait trait) const { return (traits & trait) != 0; }
};

std::span<const Rule> Rules();

/// The rules that are in force, with their bounds.
class RuleBook {
public:
    struct Entry {
        const Rule* rule;
        bool isOn;
        std::vector<double> bounds;
    };
    /// As they are in the table.
    RuleBook();
    /// Changed by a file: an object of JSON with, for each rule that it changes, `false`, which switches it off, or an
    /// object of bounds. Throws a usage `Failure` with the place of the first mistake.
    explicit RuleBook(const std::string& file);

    /// Switches off all rules but the slow ones, or all of these.
    void Limit(bool areSlow);

    const std::vector<Entry>& Entries() const { return mEntries; }
    /// What a rule means, its bounds and what to do. Throws a usage `Failure` for an unknown name.
    std::string Explain(const std::string& name) const;

private:
    std::vector<Entry> mEntries;
};

} // namespace orfc
