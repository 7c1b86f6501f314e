#include "PhysicalPortFCEchoCmdsProcessor.h"

#include "BoundedText.h"
#include "HostTree.h"
#include "InterruptHold.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFCEchoCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"FCEchoResult", "FCEchoTestResults", "FCEchoTestResultList"};
constexpr char OUT_DESTINATION_WWN[] = "Destination WWN";
constexpr char OUT_PING_SEQUENCE_NUMBER[] = "Ping Sequence Number";
constexpr char OUT_FRAME_SENT[] = "Frame Sent";
constexpr char OUT_FRAME_RECEIVED[] = "Frame Received";
constexpr char OUT_RESPONSE_LENGTH[] = "Response Length";
constexpr char OUT_RESPONSE_TIME[] = "Response Time";
constexpr char OUT_ECHO_STATUS[] = "Echo Status";

constexpr LibraryCall ECHO = {"VEXAPI_DiagnosticsEchoElsTest", "", "FC Echo failed", RC_DIAG_TEST_FAILED};

constexpr VX_UINT32 DESTINATION_NONE = 0;
constexpr VX_UINT32 DESTINATION_TARGET = 2;
constexpr VX_UINT32 DESTINATION_FABRIC = 3;

VX_UINT32 DestinationType(const PingRequest& request) {
    if (IsSameWwn(request.entry.protocol->PrincipalFabricWWN, request.wwn)) {
        return DESTINATION_FABRIC;
    }
    return IsPingTarget(request) ? DESTINATION_TARGET : DESTINATION_NONE;
}

/// "%6.2f (ms)" of whole milliseconds.
TavuString TimeText(VX_UINT32 milliseconds) {
    TavuString text = Serializer::NumberText(Serializer::FORMAT_TEXT, milliseconds, Serializer::INT_U32);
    text.insert(0, text.size() < 3 ? 3 - text.size() : 0, ' ');
    text += ".00 (ms)";
    return text;
}

constexpr DocumentField FIELDS[] = {
    {OUT_DESTINATION_WWN, FieldType::TEXT},   {OUT_PING_SEQUENCE_NUMBER, FieldType::NUMBER},
    {OUT_FRAME_SENT, FieldType::NUMBER},      {OUT_FRAME_RECEIVED, FieldType::NUMBER},
    {OUT_RESPONSE_LENGTH, FieldType::NUMBER}, {OUT_RESPONSE_TIME, FieldType::TEXT},
    {OUT_ECHO_STATUS, FieldType::TEXT},
};

} // namespace

constexpr Command PhysicalPortFCEchoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"run", "CmdRun">(),
     .description = "run FCEcho test on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = PING_ARGUMENTS,
     .document = ReportDocument(OUT_NAMES, FIELDS),
     .changes = true,
     .twinDescription = "run FCEcho Test on Orvane adapter port",
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortFCEchoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FCEcho",
    .leaves = LEAVES_OF<PhysicalPortFCEchoCmdsProcessor>,
    .resultTexts = PING_RESULT_TEXTS,
};

/// Rows are written on failure too, and when an interrupt ends the run.
ResultCode PhysicalPortFCEchoCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                         eOutputFormat format) {
    const InterruptHold interrupt;
    Echo echo;
    const ResultCode code = Run(args, echo, interrupt);
    DisplayFCEchoResult(self, echo, code, format);
    return code;
}

ResultCode PhysicalPortFCEchoCmdsProcessor::Run(const TavuStringArray& args, Echo& echo,
                                                const InterruptHold& interrupt) {
    ResultCode code = AdmitPingPort(args, echo.request);
    if (code == RC_SUCCESS) {
        code = ReadPingWords(args, 1, echo.request);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    const VX_UINT32 destinationType = DestinationType(echo.request);
    return destinationType != DESTINATION_NONE ? SendFrames(echo, destinationType, interrupt) : RC_TARGET_NOT_FOUND;
}

/// Returns the result of the last frame, not of the worst: a failure followed by a success is lost. The
/// frame that an interrupt arrives in is the last.
ResultCode PhysicalPortFCEchoCmdsProcessor::SendFrames(Echo& echo, VX_UINT32 destinationType,
                                                       const InterruptHold& interrupt) {
    constexpr VX_UINT32 ONE_FRAME = 1;
    const PingRequest& request = echo.request;
    LibraryOutputRedirection redirection;
    ResultCode code = RC_SUCCESS;
    for (VX_UINT32 frame = 0; frame < request.count; ++frame) {
        _VEXAPI_ECHO_RESULTS result{};
        code = CallLibrary(redirection, ECHO, [&] {
            const VX_UINT32 status =
                VEXAPI_DiagnosticsEchoElsTest(&request.entry.protocol->PortHandle, request.name, ONE_FRAME,
                                              request.stopOnError, destinationType, &result);
            return status != 0 ? status : result.EchoFailed;
        });
        if (code != RC_FILE_ERROR) {
            echo.frames.push_back(result);
        }
        const bool isStopped = code != RC_SUCCESS && request.stopOnError != 0;
        if (code == RC_FILE_ERROR || isStopped || interrupt.HasCome()) {
            break;
        }
    }
    redirection.Close();
    return code;
}

void PhysicalPortFCEchoCmdsProcessor::DisplayFCEchoResult(MultipleCmdsProcessor* self, const Echo& echo,
                                                          ResultCode code, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Report(OUT_NAMES, code, ResultText(code), [&] {
        VX_UINT32 sequence = 0;
        for (const _VEXAPI_ECHO_RESULTS& frame : echo.frames) {
            document.Structure(OUT_NAMES.list, [&] {
                document.Field(OUT_DESTINATION_WWN, echo.request.name);
                document.Field(OUT_PING_SEQUENCE_NUMBER, ++sequence, INT_U32);
                document.Field(OUT_FRAME_SENT, frame.FrameSent, INT_U32);
                document.Field(OUT_FRAME_RECEIVED, frame.FrameReceived, INT_U32);
                document.Field(OUT_RESPONSE_LENGTH, frame.ResponseLength, INT_U32);
                document.Field(OUT_RESPONSE_TIME, TimeText(frame.ResponseTime));
                document.Field(OUT_ECHO_STATUS, TavuString(BoundedText(frame.EchoStatus)));
            });
        }
    });
}
