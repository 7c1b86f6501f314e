#include "Document.h"

#include "TracedFunction.h"

#include <cstring>

void Document::Field(const char* label, const char* value) {
    TraceStep(TRACE_INFORMATION, "%s=%s", label, value);
    mOut.output_field(label, value);
}

void Document::Field(const char* label, bool value) {
    TraceStep(TRACE_INFORMATION, "%s=%s", label, value ? "true" : "false");
    mOut.output_field(label, value);
}

void Document::Field(const char* label, unsigned long long value, Serializer::eIntType type) {
    if (TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        TraceStep(TRACE_INFORMATION, "%s=%s", label, Serializer::NumberText(mFormat, value, type).c_str());
    }
    mOut.output_field(label, value, type);
}

void Document::Message(ResultCode code, const char* message, const char* label) {
    Field(label, message);
    if (std::strncmp(message, "Failed", 6) == 0) {
        TraceStep(TRACE_DEBUG, "%s (result %u)", message, VX_UINT32{code});
    }
}

void Document::TextReport(const ReportNames& names, RebootRequired reboot, const char* text) {
    FieldReport(names, reboot, [&] {
        mOut.begin_field_output(names.data);
        if (text != nullptr) {
            mOut.output_text(text);
        }
        mOut.end_field_output();
    });
}

void Document::ReportError(const ReportNames& names, RebootRequired reboot, ResultCode code, const char* message) {
    Frame(
        names, [&] { Failure(reboot, code, message); }, [] {});
}

void Document::Success(RebootRequired reboot) {
    Field(OUT_MESSAGE, OUT_SUCCESS);
    Reboot(reboot);
}

void Document::Failure(RebootRequired reboot, ResultCode code, const char* message) {
    Reboot(reboot);
    Message(code, message);
}

void Document::Reboot(RebootRequired reboot) {
    if (reboot.has_value()) {
        Field(OUT_REBOOT_REQUIRED, *reboot);
    }
}
