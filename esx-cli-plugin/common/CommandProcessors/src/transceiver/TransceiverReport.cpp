#include "TransceiverReport.h"

#include "MediaInformation.h"
#include "SfpMemory.h"

#include <string_view>

namespace {

namespace sff8472 = decoders::sff8472;

constexpr char DASHES[] = "\n---------------------------------------------------------------------------------\n";

constexpr std::string_view ORVANE = "Orvane";

/// Bytes per line of a raw field.
constexpr std::size_t RAW_BYTES_PER_LINE = 8;

} // namespace

void TransceiverReport::PrintSFPDMI(bool showsInstalled) {
    PrintMediaInformation(showsInstalled);
    if (!mImage.IsQsfp() && (mImage[sff8472::MONITORING_TYPE] & sff8472::DIAGNOSTICS_IMPLEMENTED) != 0) {
        PrintSummary();
    }
}

void TransceiverReport::PrintSFP() {
    for (const FieldTable* row = FieldTableOf(mImage); row->Offset != END_OF_FIELDS; ++row) {
        PrintField(*row);
    }
}

void TransceiverReport::PrintField(const FieldTable& row) {
    switch (row.FieldType) {
    case FieldBitCode:
        PrintLabel(row);
        PrintBitTableDataCode(row);
        mOutput.Raw("\n");
        break;
    case FieldHeading:
        mOutput.RawF("%s\n", row.Name);
        break;
    case FieldSkip:
        break;
    case FieldBitList:
        mOutput.RawF("%31s", row.Name); // the label includes a colon
        PrintBitTableData(row);
        break;
    case FieldByteTable:
        PrintByteTableData(row);
        break;
    case FieldHex4:
        PrintByteData(row, 4);
        break;
    case FieldHex2:
        PrintByteData(row, 2);
        break;
    case FieldRaw:
        PrintRawData(row);
        break;
    case FieldAscii:
        PrintAsciiData(row);
        break;
    default:
        mOutput.Raw("Incorrect Data Type\n");
        break;
    }
}

void TransceiverReport::PrintMediaInformation(bool showsInstalled) {
    // These fields have the same order in both families. In the QSFP family two of the offsets are reserved bytes,
    // which print an empty label.
    const auto row = [this](std::size_t offset) { return FieldAt(mImage, mImage.Base() + offset); };
    const auto field = [&](std::size_t offset, DecodedText& text) { return GetAsciiData(row(offset), mImage, text); };
    const auto code = [&](std::size_t offset) { PrintByteTableData(*row(offset)); };
    const MediaInformation media = DescribeMedia(mImage);
    DecodedText text;

    mOutput.Raw(DASHES);
    mOutput.Raw("Media Information");
    mOutput.Raw(DASHES);
    PrintText("Vendor", field(sff8472::VENDOR_NAME, text));
    code(sff8472::CONNECTOR);
    PrintText("Media Type", media.mediaType.c_str());
    PrintText("Part Number", field(sff8472::PART_NUMBER, text));
    PrintText("Speed", media.speed.c_str());
    PrintText("Revision", field(sff8472::REVISION, text));
    PrintText("Serial Number", field(sff8472::SERIAL_NUMBER, text));
    code(sff8472::IDENTIFIER);
    code(sff8472::EXTENDED_COMPLIANCE);
    code(sff8472::RATE_IDENTIFIER);
    if (showsInstalled) {
        const std::size_t offset = mImage.Base() + sff8472::VENDOR_SPECIFIC;
        PrintText("Orvane SFP Installed", mImage.Text(offset, ORVANE.size()) == ORVANE ? "Yes" : "No");
    }
    mOutput.Raw(DASHES);
}

void TransceiverReport::PrintSummary() {
    mOutput.RawF("\n%28s%10s%12s%12s%12s\n", "Temperature", "Voltage", "Tx Bias", "Tx Power", "Rx Power");
    mOutput.RawF("\n%24s%12s%12s%12s%12s\n", "(C)", "(V)", "(mA)", "(mW)", "(mW)");
    mOutput.RawF("\n%28s%10s%12s%12s%12s\n", "--------------", "-------", "-------", "--------", "--------");
    PrintValues("Value ", ROW_VALUE);
    const auto status = [this](DiagnosticColumn column) { return mDiagnostics.getDMIStatusAt(ROW_STATUS, column, ""); };
    mOutput.RawF("\n%14s%10s%13s%12s%12s%12s\n", "Status ", status(COLUMN_TEMPERATURE), status(COLUMN_VOLTAGE),
                 status(COLUMN_TX_BIAS), status(COLUMN_TX_POWER), status(COLUMN_RX_POWER));
    PrintValues("High Alarm ", ROW_HIGH_ALARM);
    PrintValues("High Warning ", ROW_HIGH_WARNING);
    PrintValues("Low Warning ", ROW_LOW_WARNING);
    PrintValues("Low Alarm ", ROW_LOW_ALARM);
}

void TransceiverReport::PrintValues(const char* label, DiagnosticRow row) {
    const auto value = [this, row](DiagnosticColumn column) {
        return static_cast<double>(mDiagnostics.getValueAt(row, column));
    };
    mOutput.RawF("\n%14s%10.2f%13.2f%12.2f%12.4f%12.4f\n", label, value(COLUMN_TEMPERATURE), value(COLUMN_VOLTAGE),
                 value(COLUMN_TX_BIAS), value(COLUMN_TX_POWER), value(COLUMN_RX_POWER));
}

void TransceiverReport::PrintRawData(const FieldTable& row) {
    PrintLabel(row);
    for (std::size_t index = 0; index < row.Size; ++index) {
        if (index != 0 && index % RAW_BYTES_PER_LINE == 0) {
            mOutput.RawF("\n%32s", "");
        }
        mOutput.RawF("0x%02x ", mImage[row.Offset + index]);
    }
    mOutput.Raw("\n");
}

void TransceiverReport::PrintByteTableData(const FieldTable& row) {
    const char* text = "";
    if (row.Table != nullptr) {
        const SfpTable* code = row.Table;
        while (code->Value != END_OF_CODES && code->Value != mImage[row.Offset]) {
            ++code;
        }
        text = code->Value != END_OF_CODES ? code->Text : "";
    }
    PrintText(row.Name, text);
}

void TransceiverReport::PrintBitTableData(const FieldTable& row) {
    const VX_UINT8 byte = mImage[row.Offset];
    for (const SfpTable* bit = row.Table; bit != nullptr && bit->Value != END_OF_CODES; ++bit) {
        if (bit != row.Table) {
            mOutput.RawF("\n%31s", "");
        }
        mOutput.RawF(" -%s: 0x%x", bit->Text, (byte & bit->Value) != 0 ? 1U : 0U);
    }
    mOutput.Raw("\n");
}

void TransceiverReport::PrintBitTableDataCode(const FieldTable& row) {
    if (row.Table == nullptr) {
        return;
    }
    if (mImage[row.Offset] == 0) {
        mOutput.Raw("0x0");
        return;
    }
    DecodedText text = "";
    mOutput.Raw(GetBitDataCodeTable(mImage[row.Offset], row.Table, text, true));
}

void TransceiverReport::PrintAsciiData(const FieldTable& row) {
    PrintLabel(row);
    DecodedText text;
    mOutput.RawF("%s ", GetAsciiData(&row, mImage, text));
    mOutput.Raw("\n");
}

void TransceiverReport::PrintByteData(const FieldTable& row, std::size_t count) {
    PrintLabel(row);
    mOutput.Raw("0x");
    for (std::size_t index = 0; index < count; ++index) {
        mOutput.RawF("%02x", mImage[row.Offset + index]);
    }
    mOutput.Raw("\n");
}
