#include "Document.h"
#include "Capture.h"
#include "TraceLog.h"
#include "TracedFunction.h"

#include <gtest/gtest.h>

namespace {

const auto XML = Serializer::FORMAT_XML;
const auto TEXT = Serializer::FORMAT_TEXT;
const std::string XML_BEGIN = "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n";
const std::string XML_END = "</output>\n";
const std::string ASTERISKS = "****************************************************\n";

const ReportNames NAMES = {"PortInfo", "Port Info", "PortInfoList"};

/// Output of a document of `Class::Function`.
template <typename Write> std::string Written(Serializer::eOutputFormat format, Write write) {
    Serializer out;
    Capture capture;
    const TracedFunction traced("Class", "Function");
    Document document(out, format);
    write(document);
    EXPECT_EQ(out.end_output(), RC_INVALID_FORMAT) << "the document was not ended";
    return capture.Stop();
}

template <typename Write> void ExpectBoth(Write write, const std::string& xml, const std::string& text) {
    EXPECT_EQ(Written(XML, write), XML_BEGIN + xml + XML_END);
    EXPECT_EQ(Written(TEXT, write), ASTERISKS + text + ASTERISKS);
}

TEST(DocumentTest, WritesAFlatStructure) {
    ExpectBoth(
        [](Document& document) {
            document.Flat("BeaconInfo", [&] {
                document.Field("Message", "Success");
                document.Field("Beacon State", TavuString("ON"));
                document.Field("Set", true);
                document.Field("Count", 4294967295ULL, Serializer::INT_U32);
            });
        },
        "<structure typeName=\"BeaconInfo\">\n"
        "<field name=\"Message\">\n<string>Success</string></field>\n"
        "<field name=\"Beacon State\">\n<string>ON</string></field>\n"
        "<field name=\"Set\">\n<bool>true</bool></field>\n"
        "<field name=\"Count\">\n<int>4294967295</int></field>\n"
        "</structure>\n",
        "BeaconInfo:\nMessage: Success\nBeacon State: ON\nSet: true\nCount: 4294967295\n");
}

TEST(DocumentTest, WritesAListOfStructures) {
    ExpectBoth(
        [](Document& document) {
            document.List([&] {
                for (const char* port : {"one", "two"}) {
                    document.Structure("PortList", [&] { document.Field("Port", port); });
                }
            });
        },
        "<list type=\"structure\">\n"
        "<structure typeName=\"PortList\">\n<field name=\"Port\">\n<string>one</string></field>\n</structure>\n"
        "<structure typeName=\"PortList\">\n<field name=\"Port\">\n<string>two</string></field>\n</structure>\n"
        "</list>\n",
        "PortList:\nPort: one\nPortList:\nPort: two\n");
}

TEST(DocumentTest, WritesAnEmptyList) {
    ExpectBoth([](Document& document) { document.List([] {}); }, "<list type=\"structure\">\n</list>\n", "");
}

const std::string REPORT_FIELD = "<field name=\"Port Info\">\n<list type=\"structure\">\n";
const std::string REPORT_FIELD_END = "</list>\n</field>\n</structure>\n";

std::string XmlMessage(const std::string& message) {
    return "<field name=\"Message\">\n<string>" + message + "</string></field>\n";
}
std::string XmlReboot(const std::string& word) {
    return "<field name=\"Reboot Required\">\n<bool>" + word + "</bool></field>\n";
}
const std::string XML_STRUCTURE = "<structure typeName=\"PortInfo\">\n";

TEST(DocumentTest, WritesADataBlockReport) {
    ReportBlock block(64, ReportBlock::SizeRule::FULL);
    block.Line("Name", "100%");
    block.Line("State", "%s");
    ExpectBoth([&](Document& document) { document.BlockReport(NAMES, REBOOT_NOT_SHOWN, block); },
               XML_STRUCTURE + XmlMessage("Success") + REPORT_FIELD +
                   "<structure typeName=\"PortInfoList\">\n<field name=\"Data\">\n"
                   "<string>Name: 100%\n      State: %s\n</string></field>\n</structure>\n" +
                   REPORT_FIELD_END,
               "PortInfo:\nMessage: Success\nPort Info: PortInfoList:\nData: Name: 100%\n      State: %s\n");
}

TEST(DocumentTest, WritesTheRebootBehindSuccess) {
    const std::pair<bool, std::string> rows[] = {{true, "true"}, {false, "false"}};
    for (const auto& [reboot, word] : rows) {
        ExpectBoth(
            [reboot = reboot](Document& document) {
                document.FieldReport(NAMES, reboot, [&] { document.Field("Mode", "ON"); });
            },
            XML_STRUCTURE + XmlMessage("Success") + XmlReboot(word) + REPORT_FIELD +
                "<structure typeName=\"PortInfoList\">\n"
                "<field name=\"Mode\">\n<string>ON</string></field>\n</structure>\n" +
                REPORT_FIELD_END,
            "PortInfo:\nMessage: Success\nReboot Required: " + word + "\nPort Info: PortInfoList:\nMode: ON\n");
    }
}

TEST(DocumentTest, WritesTheRebootAheadOfAnError) {
    ExpectBoth([](Document& document) { document.ReportError(NAMES, true, RC_LIBRARY_FAILED, "Failed, Unknown"); },
               XML_STRUCTURE + XmlReboot("true") + XmlMessage("Failed, Unknown") + REPORT_FIELD + REPORT_FIELD_END,
               // The last line has no line end.
               "PortInfo:\nReboot Required: true\nMessage: Failed, Unknown\nPort Info: ");
}

TEST(DocumentTest, WritesAnErrorWithoutAReboot) {
    ExpectBoth(
        [](Document& document) { document.ReportError(NAMES, REBOOT_NOT_SHOWN, RC_LIBRARY_FAILED, "Failed, Unknown"); },
        XML_STRUCTURE + XmlMessage("Failed, Unknown") + REPORT_FIELD + REPORT_FIELD_END,
        "PortInfo:\nMessage: Failed, Unknown\nPort Info: ");
}

TEST(DocumentTest, WritesAReportOfRows) {
    ExpectBoth(
        [](Document& document) {
            document.Report(NAMES, REBOOT_NOT_SHOWN, [&] {
                document.Structure("A", [&] { document.Field("N", 1ULL, Serializer::INT_S32); });
                document.Structure("B", [&] { document.Field("N", 2ULL, Serializer::INT_S32); });
            });
        },
        XML_STRUCTURE + XmlMessage("Success") + REPORT_FIELD +
            "<structure typeName=\"A\">\n<field name=\"N\">\n<int>1</int></field>\n</structure>\n"
            "<structure typeName=\"B\">\n<field name=\"N\">\n<int>2</int></field>\n</structure>\n" +
            REPORT_FIELD_END,
        "PortInfo:\nMessage: Success\nPort Info: A:\nN: 1\nB:\nN: 2\n");
}

TEST(DocumentTest, TracesEveryField) {
    const TraceLog log("1");
    Written(XML, [](Document& document) {
        document.Flat("S", [&] {
            document.Field("Text", "a%sb");
            document.Field("String", TavuString("c"));
            document.Field("True", true);
            document.Field("False", false);
            document.Field("Number", 18446744073709551615ULL, Serializer::INT_U64);
        });
    });
    Written(TEXT, [](Document& document) { document.ReportError(NAMES, false, RC_LIBRARY_FAILED, "Failed, Unknown"); });
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{
                                     "INFORMATION: Class::Function: Text=a%sb",
                                     "INFORMATION: Class::Function: String=c",
                                     "INFORMATION: Class::Function: True=true",
                                     "INFORMATION: Class::Function: False=false",
                                     "INFORMATION: Class::Function: Number=18446744073709551615",
                                     "INFORMATION: Class::Function: Reboot Required=false",
                                     "INFORMATION: Class::Function: Message=Failed, Unknown",
                                 }));
}

/// The log shows a number as the document does.
TEST(DocumentTest, TracesANumberInItsType) {
    const TraceLog log("1");
    const auto write = [](Document& document) {
        document.Flat("S", [&] {
            document.Field("Counter", (17ULL << 32) + 5, Serializer::INT_U32);
            document.Field("Balance", ~0ULL, Serializer::INT_S32);
            document.Field("Mask", 255ULL, Serializer::INT_HEX);
        });
    };
    Written(XML, write);
    Written(TEXT, write);
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{
                  "INFORMATION: Class::Function: Counter=5", "INFORMATION: Class::Function: Balance=-1",
                  "INFORMATION: Class::Function: Mask=255", "INFORMATION: Class::Function: Counter=5",
                  "INFORMATION: Class::Function: Balance=-1", "INFORMATION: Class::Function: Mask=ff"}));
}

TEST(DocumentTest, TracesAFailureAsOne) {
    const TraceLog log("4");
    Written(XML, [](Document& document) {
        document.ReportError(NAMES, false, RC_CFG_READ_FAILED, "Failed, FEC read failed");
    });
    Written(XML, [](Document& document) {
        document.Flat("S", [&] {
            document.Message(RC_SUCCESS, "Success");
            document.Message(RC_INVALID_PARAMETER, "Failed, 100%s", "Test Result");
            document.Field("Test Status", "Failed");
        });
    });
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{"DEBUG: Class::Function: Failed, FEC read failed (result 13)",
                                        "DEBUG: Class::Function: Failed, 100%s (result 6)"}));
}

} // namespace
