#include "Verdicts.h"

#include <algorithm>
#include <unordered_map>

namespace orfc {

namespace {

/// The objects of a host, by subject.
std::vector<Object> ObjectsOf(const Host& host, const std::vector<Volume>& luns) {
    std::vector<Object> objects;
    for (const Adapter& adapter : host.adapters) {
        if (adapter.portCount != 0) {
            objects.push_back({Subject::ADAPTER, &adapter});
        }
    }
    for (const Subject subject : {Subject::PORT, Subject::LINK, Subject::TRANSCEIVER}) {
        for (const Port& port : host.ports) {
            if (subject == Subject::PORT || port.interface != "virtual") { // which shares link and module of another
                objects.push_back({subject, port.adapter, &port});
            }
        }
    }
    for (const Target& target : host.targets) {
        objects.push_back({Subject::TARGET, target.port->adapter, target.port, &target});
    }
    for (const Lun& lun : host.luns) {
        objects.push_back({Subject::PATH, lun.target->port->adapter, lun.target->port, lun.target, &lun});
    }
    for (const Volume& lun : luns) {
        objects.push_back({Subject::LUN, nullptr, nullptr, nullptr, nullptr, &lun});
    }
    return objects;
}

/// What couldn't be read of each object, by its identifier or the kernel's name: the first message of each. A
/// module's is that of its port with a word after it.
class Unread {
public:
    explicit Unread(const Host& host) {
        for (const std::string& message : host.messages) {
            const std::size_t end = std::min(message.find(": "), message.find('/'));
            const std::string_view what = std::string_view(message).substr(std::min(end, message.size()));
            const bool isOfModule = what.starts_with(": transceiver");
            mMessages.emplace(message.substr(0, end) + (isOfModule ? MODULE : ""), message);
        }
    }
    const std::string* Of(const Object& object) const {
        switch (object.subject) {
        case Subject::ADAPTER:
        case Subject::PATH:
            return Find(object.Identifier());
        case Subject::PORT: {
            const std::string* const message = Find(object.port->identifier);
            return message != nullptr ? message : Find(object.port->kernelName);
        }
        case Subject::TRANSCEIVER:
            return Find(object.port->identifier + MODULE);
        case Subject::TARGET: {
            const std::string* const message = Find(object.target->identifier);
            return message != nullptr ? message : Find(object.target->kernelName);
        }
        case Subject::LINK:
        case Subject::LUN:
            break;
        }
        return nullptr;
    }

private:
    static constexpr char MODULE[] = " module";

    const std::string* Find(const std::string& name) const {
        const auto found = mMessages.find(name);
        return found != mMessages.end() ? &found->second : nullptr;
    }
    std::unordered_map<std::string, std::string> mMessages;
};

} // namespace

std::string Finding::Reason() const {
    return rule != nullptr ? rule->text : severity == Severity::UNKNOWN ? "couldn't be read" : "nothing is wrong";
}

Severity Health::Worst() const {
    Severity worst = Severity::OK;
    for (const Finding& finding : findings) {
        worst = std::max(worst, finding.severity);
    }
    return worst;
}

Health Judge(const Host& host, const RuleBook& rules, const Readings& now, const Readings& earlier) {
    auto luns = std::make_shared<const std::vector<Volume>>(VolumesOf(host));
    Health health{luns, {}};
    const Unread unread(host);
    for (const Object& object : ObjectsOf(host, *luns)) {
        Evidence evidence{host};
        const auto find = [&object](const Readings& readings) {
            const auto found = object.port != nullptr ? readings.find(object.port->identifier) : readings.end();
            return found != readings.end() ? &found->second : nullptr;
        };
        evidence.now = find(now);
        evidence.before = find(earlier);
        if (evidence.now != nullptr && evidence.before != nullptr) {
            evidence.seconds = evidence.now->time - evidence.before->time;
        }
        if (evidence.seconds <= 0) { // the clock was set back
            evidence.before = nullptr;
        }
        const std::size_t before = health.findings.size();
        for (const RuleBook::Entry& entry : rules.Entries()) {
            if (entry.isOn && entry.rule->subject == object.subject) {
                evidence.bounds = entry.bounds;
                if (std::optional<std::string> figures = entry.rule->judge(object, evidence)) {
                    health.findings.push_back({object, entry.rule, entry.rule->severity, std::move(*figures)});
                }
            }
        }
        if (const std::string* const message = unread.Of(object)) {
            health.findings.push_back({object, nullptr, Severity::UNKNOWN, *message});
        } else if (health.findings.size() == before) {
            health.findings.push_back({object, nullptr, Severity::OK, {}});
        }
    }
    return health;
}

} // namespace orfc
