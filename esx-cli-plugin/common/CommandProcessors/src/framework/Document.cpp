#include "Document.h"

#include "TavuDebug.h"

void Document::Field(const char* label, const char* value) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s=%s", mClassName, mFunction, label, value);
    mOut.output_field(label, value);
}

void Document::Field(const char* label, bool value) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s=%s", mClassName, mFunction, label, value ? "true" : "false");
    mOut.output_field(label, value);
}

void Document::Field(const char* label, unsigned long long value, Serializer::eIntType type) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s=%llu", mClassName, mFunction, label, value);
    mOut.output_field(label, value, type);
}

void Document::BlockReport(const ReportNames& names, RebootRequired reboot, const ReportBlock& block) {
    FieldReport(names, reboot, [&] {
        mOut.begin_field_output(OUT_DATA);
        mOut.output_text(block.GetText());
        mOut.end_field_output();
    });
}

void Document::ReportError(const ReportNames& names, RebootRequired reboot, const char* message) {
    Frame(
        names, [&] { Failure(reboot, message); }, [] {});
}

void Document::Success(RebootRequired reboot) {
    Field(OUT_MESSAGE, OUT_SUCCESS);
    Reboot(reboot);
}

void Document::Failure(RebootRequired reboot, const char* message) {
    Reboot(reboot);
    Field(OUT_MESSAGE, message);
}

void Document::Reboot(RebootRequired reboot) {
    if (reboot.has_value()) {
        Field(OUT_REBOOT_REQUIRED, *reboot);
    }
}
