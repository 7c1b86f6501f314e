/// @file
/// What the tests of the functions' answers share.
#pragma once

#include "Fixture.h"

/// Sessions on `smallHost` and variations of it.
class Functions : public Simulated {
protected:
    /// Starts on `smallHost` with keys laid over its first port.
    void startWith(const char* keys = "{}") {
        Json host = smallHost();
        portOf(host).update(Json::parse(keys));
        describe(host);
        ASSERT_EQ(start(), 0U) << output;
    }
    static const _vexapi_adapter_t& adapter() { return *VEXAPI_GetAdapterList()->pHead; }
    /// The reboot question, asked as callers do.
    static VX_UINT32 rebootRequired() {
        VX_UINT32 required = 77;
        EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
        return required;
    }
    static _VEXAPI_HBAParameters nvram(unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        EXPECT_EQ(VEXAPI_GetHBAParamsInfo(handle(index), &parameters, &auxiliary), 0U);
        return parameters;
    }
};

/* Port names of the targets of `smallHost`. */
constexpr VX_UINT8 arrayName[8] = {0x50, 0x06, 0x0e, 0x80, 0, 0, 0, 1};
constexpr VX_UINT8 nvmeName[8] = {0x50, 0x0a, 0x09, 0x80, 0, 0, 0, 1};
