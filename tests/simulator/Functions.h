/// @file
/// Fixture of the tests of single functions.
#pragma once

#include "Fixture.h"

/// Sessions on `SmallHost` and variations of it.
class Functions : public Simulated {
protected:
    /// Starts with `SmallHost`, with keys added to its first port.
    void StartWith(const char* keys = "{}") {
        Json host = SmallHost();
        PortOf(host).update(Json::parse(keys));
        Describe(host);
        ASSERT_EQ(Start(), 0U) << output;
    }
    static const _vexapi_adapter_t& Adapter() { return *VEXAPI_GetAdapterList()->pHead; }
    /// Whether a reboot is required, queried as callers do.
    static VX_UINT32 RebootRequired() {
        VX_UINT32 required = 77;
        EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
        return required;
    }
    static _VEXAPI_HBAParameters Nvram(unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        EXPECT_EQ(VEXAPI_GetHBAParamsInfo(Handle(index), &parameters, &auxiliary), 0U);
        return parameters;
    }
};

/* Port names of the targets of `SmallHost`. */
constexpr VX_UINT8 ARRAY_NAME[8] = {0x50, 0x06, 0x0e, 0x80, 0, 0, 0, 1};
constexpr VX_UINT8 NVME_NAME[8] = {0x50, 0x0a, 0x09, 0x80, 0, 0, 0, 1};
