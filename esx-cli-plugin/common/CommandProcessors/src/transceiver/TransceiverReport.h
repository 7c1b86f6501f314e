#pragma once

#include "FieldDecoders.h"
#include "ReportBlock.h"
#include "TransceiverDiagnostics.h"

/// The report of one transceiver, appended to a block in pieces of at most 255 characters. A piece that doesn't fit
/// is dropped, and a later, shorter one can still fit.
///
/// To make a report, call `CalculateDMIData`, `PrintSFPDMI` and `PrintSFP`, in this order.
class TransceiverReport {
public:
    TransceiverReport(ReportBlock& output, const ModuleImage& image) : mOutput(output), mImage(image) {}

    void CalculateDMIData() { mDiagnostics.CalculateDMIData(mImage); }

    /// The media information and, for an SFP module with diagnostics, their summary.
    void PrintSFPDMI(bool showsInstalled);

    /// All fields of the module's table. A code without a row prints only its label, never the text of the end row.
    void PrintSFP();

private:
    void PrintMediaInformation(bool showsInstalled);
    void PrintSummary();
    void PrintValues(const char* label, DiagnosticRow row);
    void PrintField(const FieldTable& row);

    void PrintLabel(const FieldTable& row) { mOutput.RawF("%30s: ", row.Name); }
    void PrintText(const char* label, const char* text) { mOutput.RawF("%30s: %s\n", label, text); }
    void PrintRawData(const FieldTable& row);
    void PrintByteTableData(const FieldTable& row);
    void PrintBitTableData(const FieldTable& row);
    void PrintBitTableDataCode(const FieldTable& row);
    void PrintAsciiData(const FieldTable& row);
    void PrintByteData(const FieldTable& row, std::size_t count);

    ReportBlock& mOutput;
    ModuleImage mImage;
    TransceiverDiagnostics mDiagnostics;
};
