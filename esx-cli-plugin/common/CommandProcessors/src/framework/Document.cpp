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

void Document::TextReport(const ReportNames& names, RebootRequired reboot, const char* text) {
    FieldReport(names, reboot, [&] {
        mOut.begin_field_output(names.data);
        if (text != nullptr) {
            mOut.output_text(text);
        }
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
