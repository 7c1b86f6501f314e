/// @file
/// Base of the tests of targets and LUNs.
#pragma once

#include "FamilyTest.h"

namespace family_test {

/// Identifier of a target as commands take it.
inline std::string TargetId(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target) {
    return Id(protocol) + "_Target_" + WwnOf(target.PortName);
}

/// Copies a text into a record's bytes. If it fills them, there is no terminator.
template <std::size_t N> void SetText(VX_UINT8 (&array)[N], const std::string& text) {
    std::memset(array, 0, N);
    std::memcpy(array, text.data(), std::min(N, text.size()));
}

/// Report text with these lines: all but the first are indented by six blanks.
inline std::string TextOfLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "      ") + line + "\n";
    }
    return text;
}

/// The port of `FamilyTest` with one target, "50:00:0a:0b:0c:0d:01:01", which is not an NVMe target.
class TargetTest : public FamilyTest {
protected:
    TargetTest() : target(&Fake().host.AddTarget(*port)) {}

    /// Runs "-t target -v FAMILY LEAF ID REST".
    CommandRun RunTarget(const std::string& family, const std::string& leaf, const std::string& rest = "") const {
        return Run("-t target -v " + family + " " + leaf + " " + TargetId(*port, *target) +
                   (rest.empty() ? "" : " " + rest));
    }

    _tagVEXAPI_SDMTarget* target;
};

/// A bit of `TargetFlags` byte 5.
inline constexpr VX_UINT8 NVME = 0x08;

/// The error form of a data-block report: the frame of a success without content.
inline std::string ErrorOf(const Format& format, const std::string& structure, const std::string& field,
                           const std::string& message) {
    return format.Report(structure, {{"Message", message}}, field, "");
}

} // namespace family_test
