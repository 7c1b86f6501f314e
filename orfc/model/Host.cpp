#include "Host.h"

#include <algorithm>
#include <cstdio>

namespace orfc {

namespace {

/// Rank of a verdict: alarms before warnings before values that are fine.
int RankOf(decoders::Verdict verdict) {
    switch (verdict) {
    case decoders::Verdict::OK:
        return 0;
    case decoders::Verdict::LOW_WARNING:
    case decoders::Verdict::HIGH_WARNING:
        return 1;
    default:
        return 2;
    }
}

template <typename Unit> void TakeWorse(const Monitored<Unit>& value, std::optional<decoders::Verdict>& worst) {
    const std::optional<decoders::Verdict> verdict = value ? value->Judged() : std::nullopt;
    if (verdict && (!worst || RankOf(*verdict) > RankOf(*worst))) {
        worst = verdict;
    }
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> words) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

} // namespace

std::optional<decoders::Verdict> Transceiver::WorstVerdict() const {
    std::optional<decoders::Verdict> worst;
    TakeWorse(temperature, worst);
    TakeWorse(voltage, worst);
    for (const Lane& lane : lanes) {
        TakeWorse(lane.bias, worst);
        TakeWorse(lane.transmitPower, worst);
        TakeWorse(lane.receivePower, worst);
    }
    return worst;
}

bool Target::IsDown() const {
    return kernelState.empty() ? state == "offline" : !IsOneOf(kernelState, {"Online", "Marginal", "live"});
}

std::optional<Step> Lun::DownAt() const {
    if (target->port->state == "offline") {
        return Step::LINK;
    }
    if (target->IsDown()) {
        return Step::REMOTE_PORT;
    }
    if (!state.empty() && !IsOneOf(state, {"running", "live"})) {
        return Step::DEVICE;
    }
    if (IsOneOf(accessState, {"unavailable", "offline", "inaccessible", "persistent-loss"})) {
        return Step::ACCESS;
    }
    if (mapPathState == "failed" || mapState == "suspended") {
        return Step::MAP;
    }
    return std::nullopt;
}

bool Lun::IsForeignInMap() const {
    // "mpath-3600…": the name space, a digit that says which kind of id follows, and the digits of the id; or
    // "mpath-eui.…", the id of a namespace as the kernel spells it.
    constexpr std::string_view NAME_SPACE = "mpath-";
    const std::size_t digits = worldwideId.find('.');
    if (!mapId.starts_with(NAME_SPACE) || mapId.size() <= NAME_SPACE.size() + 1 ||
        !(worldwideId.starts_with("naa.") || worldwideId.starts_with("eui."))) {
        return false;
    }
    const std::string_view id = std::string_view(mapId).substr(NAME_SPACE.size());
    return id != worldwideId && id.substr(1) != std::string_view(worldwideId).substr(digits + 1);
}

std::string WwnText(Wwn name) {
    if (name == 0) {
        return {};
    }
    char text[24];
    char* end = text;
    for (int shift = 56; shift >= 0; shift -= 8) {
        end += std::sprintf(end, shift == 56 ? "%02x" : ":%02x", static_cast<unsigned>(name >> shift & 0xFF));
    }
    return text;
}

std::string DesignatorText(decoders::Bytes id, bool isNamespace) {
    if (std::all_of(id.begin(), id.end(), [](unsigned byte) { return byte == 0; })) {
        return {};
    }
    const std::string_view text = id.PaddedText(0, id.size());
    // Nothing but padding follows the text.
    const bool isPrintable = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; }) &&
                             std::all_of(id.begin() + static_cast<std::ptrdiff_t>(text.size()), id.end(),
                                         [](unsigned byte) { return byte == ' ' || byte == 0; });
    std::string hexadecimal;
    for (const unsigned byte : id) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        hexadecimal += digits;
    }
    // Network address authorities (SPC): 6 takes sixteen bytes, the others take eight.
    const unsigned authority = id[0] >> 4;
    if (isNamespace && (id.size() == 8 || id.size() == 16)) {
        return "eui." + hexadecimal;
    }
    if ((id.size() == 16 && authority == 6) ||
        (id.size() == 8 && (authority == 2 || authority == 3 || authority == 5))) {
        return "naa." + hexadecimal;
    }
    return isPrintable ? "t10." + std::string(text) : "0x" + hexadecimal;
}

} // namespace orfc
