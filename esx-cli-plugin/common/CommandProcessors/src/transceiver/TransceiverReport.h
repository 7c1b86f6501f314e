#pragma once

#include "FieldDecoders.h"
#include "ReportBlock.h"
#include "TransceiverDiagnostics.h"

/// The report of one transceiver, appended to a block piece by piece. A piece has at most 255 characters; one that
/// doesn't fit is lost, and a later shorter one can still go in.
///
/// A report is made by `CalculateDMIData`, `PrintSFPDMI` and `PrintSFP`, in this order.
class TransceiverReport {
public:
    TransceiverReport(ReportBlock& output, const ModuleImage& image) : mOutput(output), mImage(image) {}

    void CalculateDMIData() { mDiagnostics.CalculateDMIData(mImage); }

    /// The media information and, for an SFP module that monitors itself, the summary of its diagnostics.
    void PrintSFPDMI(bool showsInstalled);

    /// All fields of the module's table. A code without a row prints its label alone, never the text of the end row.
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
