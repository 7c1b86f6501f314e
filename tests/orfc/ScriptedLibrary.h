/// @file
/// A library as a table of functions: the scripted one of `FakeLibrary`, with optional functions or without.
#pragma once

#include "FakeLibrary.h"
#include "Library.h"
#include "ReadHost.h"

#include <cstring>
#include <gtest/gtest.h>

namespace orfc_test {

using namespace orfc;

/// Fills an array of a record, without a terminator if the text fills it.
template <typename Character, std::size_t Size> void Put(Character (&array)[Size], const std::string& text) {
    ASSERT_LE(text.size(), Size);
    std::memcpy(array, text.data(), text.size());
}

/// What the optional functions answer.
struct Extensions {
    std::function<decltype(VEXAPI_ExtGetPort)> getPort;
    std::function<decltype(VEXAPI_ExtGetTarget)> getTarget;
    std::function<decltype(VEXAPI_ExtGetLun)> getLun;
    std::function<decltype(VEXAPI_ExtGetCounters)> getCounters;
    std::vector<VX_UINT32> scopes; ///< the parts of each session; 0 for none
    VEXAPI_EXT_HANDLER handler = nullptr;
    void* context = nullptr;
    void Tell(const char* line) const { handler(context, line); }
};

class ScriptedTest : public testing::Test {
protected:
    ScriptedTest() {
        FakeLibrary::Reset();
        s_extensions = {};
    }

    FakeLibrary& Fake() { return FakeLibrary::Get(); }
    HostBuilder& Tree() { return Fake().host; }
    static Extensions& Ext() { return s_extensions; }

    /// The 62 functions; with `hasExtensions` the optional ones too.
    static LibraryFunctions Functions(bool hasExtensions);

    /// Everything that is known, or what is wanted.
    Host Read(const Wanted& wanted = EVERYTHING, bool hasExtensions = false) {
        const Library library(Functions(hasExtensions), "scripted");
        Session session(library, ScopeOf(wanted));
        return ReadHost(session, wanted);
    }
    Host ReadExtended(const Wanted& wanted = EVERYTHING) { return Read(wanted, true); }

    /// Makes all functions succeed that a port is asked with, so that only what a test breaks is told.
    void SucceedEverywhere() {
        Fake().Succeed({"GetSFPData", "GetAdapterAsicBoardTemperature", "GetAdapterBeaconStatus", "FCGetFECSupportInfo",
                        "GetFWPrivateStats", "FCGetBBCSupportInfoEx", "IsFWCMFeatureEnabled", "GetHBAParamsInfo",
                        "GetVpd"});
    }

    inline static const Wanted EVERYTHING = {.portDetails = true,
                                             .counters = true,
                                             .targets = true,
                                             .luns = true,
                                             .transceivers = true,
                                             .settings = true,
                                             .vpd = true};
    static Extensions s_extensions;
};

} // namespace orfc_test
