#include "Document.h"

void WriteSuccess(Serializer& out, RebootRequired reboot) {
    out.output_field(OUT_MESSAGE, OUT_SUCCESS);
    if (reboot.has_value()) {
        out.output_field(OUT_REBOOT_REQUIRED, *reboot);
    }
}

void WriteBlockReport(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names,
                      RebootRequired reboot, const char* block) {
    WriteFieldReport(out, format, names, reboot, [&] {
        out.begin_field_output(OUT_DATA);
        out.output_text(block);
        out.end_field_output();
    });
}

void WriteReportError(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names,
                      RebootRequired reboot, const char* message) {
    WriteReport(
        out, format, names,
        [&] {
            if (reboot.has_value()) {
                out.output_field(OUT_REBOOT_REQUIRED, *reboot);
            }
            out.output_field(OUT_MESSAGE, message);
        },
        [] {});
}
