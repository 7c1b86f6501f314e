/// @file
/// A port with NVRAM parameters, all with different values, and its output to clients.
#pragma once

#include "StagedTest.h"

namespace family_test {

inline constexpr char EVERY_COMPLETION[] = "Interrupt_For_Every_I/O_Completion";
inline constexpr char TIMER_EXPIRES[] = "Interrupt_When_Interrupt_Delay_Timer_Expires";
inline constexpr char TIMER_OR_IDLE[] = "Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O";

/// Adapters on both sides of every condition of the parameters.
enum Adapter {
    A_4G,
    A_8G,
    A_ROWAN_FC,
    A_ROWAN_FC_MEZZ,
    A_N4, ///< 16 Gbps, FC only, and no Maple
    A_MAPLE,
    A_CEDAR,
    A_ROWAN_CNA,
    A_ROWAN_CNA_MEZZ,
    A_HAZEL,
    A_WILLOW,
    A_LARCH,
    A_MEZZ_32G,
    A_MEZZ_16G,
    A_ALDER,
    A_BIRCH,
    A_BIRCH_64G,
    A_ENCRYPTION,
    A_NO_FAMILY,
    A_OTHER_VENDOR,
    ADAPTER_COUNT
};

struct AdapterRow {
    Adapter adapter;
    const char* name;
    VX_UINT16 vendor;
    VX_UINT16 device;
    VX_UINT16 subVendor;
    VX_UINT16 subDevice;
};
inline constexpr AdapterRow ADAPTERS[] = {
    {A_4G, "4G", 0x1D0C, 0x2432, 0x1D0C, 0},
    {A_8G, "8G", 0x1D0C, 0x2532, 0x1D0C, 0},
    {A_ROWAN_FC, "Rowan FC", 0x1D0C, 0x2031, 0x1D0C, 0},
    {A_ROWAN_FC_MEZZ, "second Rowan FC", 0x1D0C, 0x2831, 0x1D0C, 0},
    {A_N4, "16G FC only", 0x1D0C, 0x2031, 0x1D0C, 0x255},
    {A_MAPLE, "Maple", 0x1D0C, 0x2031, 0x103C, 0x1939},
    {A_CEDAR, "Cedar", 0x1D0C, 0x2031, 0x103C, 0x8002},
    {A_ROWAN_CNA, "Rowan CNA", 0x1D0C, 0x8031, 0x1D0C, 0},
    {A_ROWAN_CNA_MEZZ, "second Rowan CNA", 0x1D0C, 0x8831, 0x1D0C, 0},
    {A_HAZEL, "Hazel", 0x1D0C, 0x8001, 0x1D0C, 0},
    {A_WILLOW, "Willow", 0x1D0C, 0x8021, 0x1D0C, 0},
    {A_LARCH, "Larch", 0x1D0C, 0x2261, 0x1D0C, 0},
    {A_MEZZ_32G, "32G mezzanine", 0x1D0C, 0x2261, 0x1D0C, 0x2B9},
    {A_MEZZ_16G, "16G mezzanine", 0x1D0C, 0x2261, 0x1D0C, 0x2B8},
    {A_ALDER, "Alder", 0x1D0C, 0x2071, 0x1D0C, 0},
    {A_BIRCH, "Birch", 0x1D0C, 0x2281, 0x1D0C, 0},
    {A_BIRCH_64G, "Birch 64G", 0x1D0C, 0x2281, 0x1D0C, 0x2E2},
    {A_ENCRYPTION, "Birch with encryption", 0x1D0C, 0x2089, 0x1D0C, 0x2EA},
    {A_NO_FAMILY, "no family", 0x1D0C, 0x2300, 0x1D0C, 0},
    {A_OTHER_VENDOR, "another vendor", 0x1D0D, 0x2281, 0x1D0C, 0},
};
static_assert(std::size(ADAPTERS) == ADAPTER_COUNT);

using Adapters = std::vector<Adapter>;
inline bool IsIn(const Adapters& adapters, Adapter adapter) {
    return std::find(adapters.begin(), adapters.end(), adapter) != adapters.end();
}
inline Adapters operator+(Adapters left, const Adapters& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline const Adapters ROWAN_FCS = {A_ROWAN_FC, A_ROWAN_FC_MEZZ, A_N4, A_MAPLE, A_CEDAR};
inline const Adapters ROWAN_CNAS = {A_ROWAN_CNA, A_ROWAN_CNA_MEZZ};
inline const Adapters TEN_GS = {A_ROWAN_CNA, A_ROWAN_CNA_MEZZ, A_HAZEL, A_WILLOW};
inline const Adapters LARCHES = {A_LARCH, A_MEZZ_32G, A_MEZZ_16G};
inline const Adapters BIRCHES = {A_BIRCH, A_BIRCH_64G, A_ENCRYPTION};
inline const Adapters UEFI_CAPABLES = LARCHES + Adapters{A_ALDER} + BIRCHES;

/// The cache file of the library's parameters: all keys in ascending byte order.
inline constexpr char SNAPSHOT[] = "Connection_Options=1\n"
                                   "Data_Rate=2\n"
                                   "Disable_BIOS=1\n"
                                   "Disable_SCM=0\n"
                                   "Enable_Fabric_Assign_WWN=1\n"
                                   "Enable_Fibre_Channel_Tape_Support=1\n"
                                   "Enable_Hard_Loop_Id=1\n"
                                   "Enable_LR=0\n"
                                   "Enable_Lip_Full_Login=1\n"
                                   "Enable_Receive_Out_Of_Order_Frames=1\n"
                                   "Enable_Target_Reset=0\n"
                                   "Enable_Virtual_Lane=1\n"
                                   "Execution_Throttle=65000\n"
                                   "Frame_Size=2048\n"
                                   "Hard_Loop_ID=33\n"
                                   "Interrupt_Delay_Timer=11\n"
                                   "Link_Down_Timeout=31\n"
                                   "Login_Retry_Count=9\n"
                                   "Loop_Reset_Delay=5\n"
                                   "Luns_Per_Target=8\n"
                                   "Operation_Mode=6\n"
                                   "Port_Down_Retry_Count=30\n";

class HBAParamsTestBase : public StagedTest {
protected:
    HBAParamsTestBase() : StagedTest("HBAParams", "hbaparams") {
        SetAdapter(A_BIRCH);
        port->SupportedSpeeds = 0x7F; // all but 64 Gbps
        // Fields unknown to the tool must be preserved too: every byte of the rest has a value.
        auto* const bytes = reinterpret_cast<VX_UINT8*>(&nvram);
        for (std::size_t i = 0; i < sizeof nvram; ++i) {
            bytes[i] = static_cast<VX_UINT8>(i * 7 + 1);
        }
        nvram.DataRate = 2;
        nvram.ConnetionOptions = 1;
        nvram.EnableFibreChannelTapeSupport = 1;
        nvram.MaxLunsPerTarget = 8;
        nvram.EnableHardLoopId = 1;
        nvram.HardLoopId = 33;
        nvram.FrameSize = 2048;
        nvram.EnableLipFullLogin = 1;
        nvram.EnableTargetReset = 0;
        nvram.LoopResetDelay = 5;
        nvram.LoginRetryCount = 9;
        nvram.PortDownRetryCount = 30;
        nvram.ExecutionThrottle = 65000;
        nvram.OperationMode = 6;
        nvram.InterruptDelayTimer = 11;
        nvram.LinkDownTimeout = 31;
        nvram.DisableBIOS = 1;
        nvram.RecvOutOfOrderDataBit = 1;
        nvram.EnableLRBit = 0;
        nvram.EnableFabricAssignWWN = 1;
        nvram.DisableSCM = 0;
        nvram.EnableVirtualLane = 1;

        Fake().onGetHBAParamsInfo = [this](VX_PORT_HANDLE*, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX* auxiliary) {
            Chatter();
            EXPECT_TRUE(IsCleared(*parameters));
            EXPECT_TRUE(IsCleared(*auxiliary));
            *parameters = nvram;
            return 0u;
        };
        Fake().onUpdateHBAParameters = [this](VX_PORT_HANDLE*, _VEXAPI_HBAParameters* parameters) {
            Chatter();
            written = *parameters;
            return 0u;
        };
        Fake().onIsRebootRequired = [this](VX_UINT32* required) {
            EXPECT_EQ(*required, 1u); // so a reboot is requested if the library leaves it alone
            *required = reboot;
            return rebootStatus;
        };
        const auto chatter = [](VX_PORT_HANDLE*) {
            Chatter();
            return 0u;
        };
        Fake().onRestoreDefaultNVRAM = chatter;
    }

    void SetAdapter(Adapter wanted) const {
        for (const AdapterRow& row : ADAPTERS) {
            if (row.adapter == wanted) {
                port->ChipProperty.VendorId = row.vendor;
                port->ChipProperty.DeviceId = row.device;
                port->ChipProperty.SubVendorId = row.subVendor;
                port->ChipProperty.SubDeviceId = row.subDevice;
            }
        }
    }

    template <typename Record> static bool IsCleared(const Record& record) {
        const auto* const bytes = reinterpret_cast<const VX_UINT8*>(&record);
        return std::all_of(bytes, bytes + sizeof record, [](VX_UINT8 byte) { return byte == 0; });
    }
    /// Whether the library received exactly this record.
    bool WasWritten(const _VEXAPI_HBAParameters& record) const {
        return written.has_value() && std::memcmp(&*written, &record, sizeof record) == 0;
    }

    /// Expects `setFile` on a fresh snapshot to be rejected, with the file unchanged.
    void ExpectRefused(const std::string& options, ResultCode code) const {
        const std::string before = Staged();
        const auto identity = FileIdentity();
        EXPECT_EQ(Run("setFile", options).code, code) << options;
        EXPECT_EQ(Staged(), before) << options;
        EXPECT_EQ(FileIdentity(), identity) << options;
    }
    /// Runs `setFile` and expects this file.
    void ExpectStaged(const std::string& options, const std::string& content) const {
        EXPECT_EQ(Run("setFile", options).code, RC_SUCCESS) << options;
        EXPECT_EQ(Staged(), content) << options;
    }

    /// The fields of the parameters on an adapter that has all of them.
    static std::vector<Field> Shown() {
        return {{"Connection Options", "Point_To_Point_Only"},
                {"Data Rate", "Auto"},
                {"Operation Mode", TIMER_OR_IDLE},
                {"Frame Size", "2048", Field::NUMBER},
                {"Enable Hard Loop Id", "true"},
                {"Hard Loop Id", "33", Field::NUMBER},
                {"Loop Reset Delay In Seconds", "5", Field::NUMBER},
                {"Interrupt Delay Timer In 100us", "11", Field::NUMBER},
                {"Execution Throttle", "65000", Field::NUMBER},
                {"Login Retry Count", "9", Field::NUMBER},
                {"Port Down Retry Count", "30", Field::NUMBER},
                {"Link Down Timeout In Seconds", "31", Field::NUMBER},
                {"Luns Per Target", "8", Field::NUMBER},
                {"Enable LR", "false"},
                {"Enable Host Hba Bios", "false"},
                {"Enable Fc Tape Support", "true"},
                {"Enable Lip Full Login", "true"},
                {"Enable Target Reset", "false"},
                {"Enable Fabric Assigned WWN", "true"},
                {"Enable FWCM", "true"},
                {"Virtual Lane", "true"}};
    }
    static std::string Document(const Format& format, const std::vector<Field>& fields,
                                std::optional<bool> reboot = std::nullopt) {
        std::vector<Field> head = {{"Message", "Success"}};
        if (reboot.has_value()) {
            head.push_back(Flag("Reboot Required", *reboot));
        }
        return format.Report("HBAParametersInfo", head, "HBAParameters",
                             format.Structure("HBAParametersList", format.FieldsOf(fields)));
    }
    /// "Reboot Required" precedes "Message" here.
    static std::string Error(const Format& format, const std::string& message, bool isSet = false) {
        std::vector<Field> head = {{"Message", message}};
        if (isSet) {
            head.insert(head.begin(), Flag("Reboot Required", false));
        }
        return format.Report("HBAParametersInfo", head, "HBAParameters", "");
    }

    _VEXAPI_HBAParameters nvram{};                ///< returned by the library
    std::optional<_VEXAPI_HBAParameters> written; ///< last received by it
    VX_UINT32 reboot = 1;
    VX_UINT32 rebootStatus = 0;
};

} // namespace family_test
