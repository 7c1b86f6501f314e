#include "PhysicalPortTemperatureCmdsProcessor.h"

#include "LibraryCall.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortTemperatureCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"TemperatureInfo", "Temperature", "TemperatureList"};
constexpr char OUT_BOARD[] = "Board Temperature";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"}, {RC_CFG_READ_FAILED, "Failed, Temperature read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},       {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
};

constexpr LibraryCall READ_TEMPERATURE = {"VEXAPI_GetAdapterAsicBoardTemperature", " before temperature read",
                                          "Get Temperature failed", RC_CFG_READ_FAILED};

constexpr DocumentField FIELDS[] = {{OUT_BOARD, FieldType::NUMBER}};

} // namespace

constexpr Command PhysicalPortTemperatureCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get the temperature of the board",
     .run = CmdGetCommon,
     .usage = "Usage: get\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, FIELDS)},
};

constinit const FamilyDescription PhysicalPortTemperatureCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Temperature",
    .leaves = LEAVES_OF<PhysicalPortTemperatureCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

ResultCode PhysicalPortTemperatureCmdsProcessor::Get(const TavuStringArray& args, Temperature& temperature) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    _VEXAPI_BoardThermalTemp read = {};
    const ResultCode code = CallLibrary(
        READ_TEMPERATURE, [&] { return VEXAPI_GetAdapterAsicBoardTemperature(&entry.protocol->PortHandle, &read); });
    temperature.celsius = static_cast<VX_UINT32>(read.Temperature);
    return code;
}

void PhysicalPortTemperatureCmdsProcessor::DisplayTemperature(MultipleCmdsProcessor* self,
                                                              const Temperature& temperature, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.FieldReport(OUT_NAMES, REBOOT_NOT_SHOWN, [&] { document.Field(OUT_BOARD, temperature.celsius, INT_U32); });
}
