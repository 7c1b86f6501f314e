#include "Serializer.h"
#include "Capture.h"
#include "Limits.h"
#include "ResultCodes.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>

namespace {

const auto XML = Serializer::FORMAT_XML;
const auto TEXT = Serializer::FORMAT_TEXT;

using Operation = std::function<VX_UINT32(Serializer&)>;

/// Output of an operation inside a document.
std::string OutputOf(Serializer::eOutputFormat format, const Operation& operation) {
    Serializer out;
    {
        Capture opening;
        out.begin_output(format);
    }
    Capture capture;
    EXPECT_EQ(operation(out), RC_SUCCESS);
    return capture.Stop();
}

void ExpectBoth(const Operation& operation, const std::string& xml, const std::string& text) {
    EXPECT_EQ(OutputOf(XML, operation), xml);
    EXPECT_EQ(OutputOf(TEXT, operation), text);
}

std::string Asterisks() {
    return std::string(52, '*') + "\n";
}

TEST(SerializerTest, BeginsAndEndsADocument) {
    for (const auto format : {XML, TEXT}) {
        Serializer out;
        Capture opening;
        EXPECT_EQ(out.begin_output(format), RC_SUCCESS);
        EXPECT_EQ(opening.Stop(),
                  format == XML ? "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n" : Asterisks());
        Capture closing;
        EXPECT_EQ(out.end_output(), RC_SUCCESS);
        EXPECT_EQ(closing.Stop(), format == XML ? "</output>\n" : Asterisks());
    }
}

TEST(SerializerTest, BeginsAndEndsLists) {
    const std::pair<Serializer::eListType, std::string> types[] = {
        {Serializer::LIST_STRING, "string"},
        {Serializer::LIST_INT, "int"},
        {Serializer::LIST_BOOL, "bool"},
        {Serializer::LIST_STRUCTURE, "structure"},
    };
    for (const auto& [type, word] : types) {
        ExpectBoth([type = type](Serializer& out) { return out.begin_list_output(type); },
                   "<list type=\"" + word + "\">\n", "");
    }
    ExpectBoth([](Serializer& out) { return out.end_list_output(); }, "</list>\n", "");
}

TEST(SerializerTest, NumbersListTypesFromStringOn) {
    EXPECT_EQ(Serializer::LIST_STRING, 0u);
    EXPECT_EQ(Serializer::LIST_INT, 1u);
    EXPECT_EQ(Serializer::LIST_BOOL, 2u);
    EXPECT_EQ(Serializer::LIST_STRUCTURE, 3u);
}

TEST(SerializerTest, WritesNothingForAnUnknownListType) {
    Serializer out;
    Capture opening;
    out.begin_output(XML);
    opening.Stop();
    Capture capture;
    for (const VX_UINT32 type : {4u, 99u, UINT_MAX}) {
        EXPECT_EQ(out.begin_list_output(static_cast<Serializer::eListType>(type)), RC_INVALID_FORMAT);
    }
    EXPECT_EQ(capture.Stop(), "");
}

TEST(SerializerTest, BeginsAndEndsStructures) {
    ExpectBoth([](Serializer& out) { return out.begin_struct_output("Beacon Info"); },
               "<structure typeName=\"Beacon Info\">\n", "Beacon Info:\n");
    ExpectBoth([](Serializer& out) { return out.end_struct_output(); }, "</structure>\n", "");
}

TEST(SerializerTest, BeginsAndEndsFields) {
    ExpectBoth([](Serializer& out) { return out.begin_field_output("Data"); }, "<field name=\"Data\">\n", "Data: ");
    ExpectBoth([](Serializer& out) { return out.end_field_output(); }, "</field>\n", "");
}

TEST(SerializerTest, WritesTextFields) {
    ExpectBoth([](Serializer& out) { return out.output_field("State", "ON"); },
               "<field name=\"State\">\n<string>ON</string></field>\n", "State: ON\n");
    ExpectBoth([](Serializer& out) { return out.output_field("State", TavuString("OFF")); },
               "<field name=\"State\">\n<string>OFF</string></field>\n", "State: OFF\n");
    ExpectBoth([](Serializer& out) { return out.output_field("", ""); },
               "<field name=\"\">\n<string></string></field>\n", ": \n");
}

TEST(SerializerTest, EscapesNothing) {
    const char* const raw = "<a href=\"x\">&amp; 100%s %n %% \xE4\xFF\n";
    ExpectBoth([raw](Serializer& out) { return out.output_field(raw, raw); },
               "<field name=\"" + std::string(raw) + "\">\n<string>" + raw + "</string></field>\n",
               std::string(raw) + ": " + raw + "\n");
    ExpectBoth([raw](Serializer& out) { return out.begin_struct_output(raw); },
               "<structure typeName=\"" + std::string(raw) + "\">\n", std::string(raw) + ":\n");
}

TEST(SerializerTest, WritesTruthFields) {
    ExpectBoth([](Serializer& out) { return out.output_field("Set", true); },
               "<field name=\"Set\">\n<bool>true</bool></field>\n", "Set: true\n");
    ExpectBoth([](Serializer& out) { return out.output_field("Set", false); },
               "<field name=\"Set\">\n<bool>false</bool></field>\n", "Set: false\n");
}

struct Number {
    unsigned long long value;
    VX_UINT32 type;
    const char* xml;
    const char* text;
};

TEST(SerializerTest, WritesNumbersByTheirType) {
    constexpr unsigned long long MINUS_ONE = ~0ULL;
    constexpr unsigned long long BIT_31 = 1ULL << 31;
    constexpr unsigned long long BIT_32 = 1ULL << 32;
    constexpr unsigned long long BIT_63 = 1ULL << 63;
    const Number rows[] = {
        // Signed 32 bits: what lies above them does not count.
        {0, 0, "0", "0"},
        {BIT_31 - 1, 0, "2147483647", "2147483647"},
        {BIT_31, 0, "-2147483648", "-2147483648"},
        {MINUS_ONE, 0, "-1", "-1"},
        {BIT_32 + 5, 0, "5", "5"},
        // Unsigned 32 bits.
        {0, 1, "0", "0"},
        {BIT_31, 1, "2147483648", "2147483648"},
        {BIT_32 - 1, 1, "4294967295", "4294967295"},
        {BIT_32 + 7, 1, "7", "7"},
        {MINUS_ONE, 1, "4294967295", "4294967295"},
        // Signed 64 bits.
        {BIT_32 + 7, 2, "4294967303", "4294967303"},
        {BIT_63 - 1, 2, "9223372036854775807", "9223372036854775807"},
        {BIT_63, 2, "-9223372036854775808", "-9223372036854775808"},
        {MINUS_ONE, 2, "-1", "-1"},
        // Unsigned 64 bits: a negative number is a large one.
        {BIT_63, 3, "9223372036854775808", "9223372036854775808"},
        {static_cast<unsigned long long>(-1), 3, "18446744073709551615", "18446744073709551615"},
        {static_cast<unsigned long long>(-5), 3, "18446744073709551611", "18446744073709551611"},
        // Hexadecimal in text, signed decimal in XML, 32 bits of both.
        {0, 4, "0", "0"},
        {255, 4, "255", "ff"},
        {0xABCDEF, 4, "11259375", "abcdef"}, // 10*16^5 + 11*16^4 + 12*16^3 + 13*16^2 + 14*16 + 15
        {BIT_31, 4, "-2147483648", "80000000"},
        {MINUS_ONE, 4, "-1", "ffffffff"},
        {BIT_32 + 10, 4, "10", "a"},
    };
    for (const Number& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << " as type " << row.type);
        ExpectBoth(
            [&row](Serializer& out) {
                return out.output_field("N", row.value, static_cast<Serializer::eIntType>(row.type));
            },
            "<field name=\"N\">\n<int>" + std::string(row.xml) + "</int></field>\n",
            "N: " + std::string(row.text) + "\n");
    }
}

TEST(SerializerTest, WritesNoNumberOfAnUnknownType) {
    for (const VX_UINT32 type : {5u, 6u, UINT_MAX}) {
        ExpectBoth(
            [type](Serializer& out) { return out.output_field("N", 7ULL, static_cast<Serializer::eIntType>(type)); },
            "<field name=\"N\">\n</field>\n", "N: ");
    }
}

TEST(SerializerTest, WritesListsOfValues) {
    ExpectBoth(
        [](Serializer& out) {
            return out.output_list(std::vector<TavuString>{"a", "", "b c"});
        },
        "<string>a</string><string></string><string>b c</string>", "a,,b c,\n");
    ExpectBoth(
        [](Serializer& out) {
            return out.output_list(std::vector<int>{0, -7, INT_MAX, INT_MIN});
        },
        "<int>0</int><int>-7</int><int>2147483647</int><int>-2147483648</int>", "0,-7,2147483647,-2147483648,\n");
    ExpectBoth(
        [](Serializer& out) {
            return out.output_list(std::vector<bool>{true, false});
        },
        "<bool>true</bool><bool>false</bool>", "true,false,\n");
}

TEST(SerializerTest, WritesAnEmptyLineForAnEmptyListInText) {
    ExpectBoth([](Serializer& out) { return out.output_list(std::vector<TavuString>{}); }, "", "\n");
    ExpectBoth([](Serializer& out) { return out.output_list(std::vector<int>{}); }, "", "\n");
    ExpectBoth([](Serializer& out) { return out.output_list(std::vector<bool>{}); }, "", "\n");
}

TEST(SerializerTest, FormatsAStringWithoutALineEnd) {
    ExpectBoth([](Serializer& out) { return out.output_string(20, "%s=%d%%", "a", 5); }, "<string>a=5%</string>",
               "a=5%");
}

TEST(SerializerTest, CutsAStringAtItsLength) {
    for (const unsigned length : {4u, 5u}) {
        ExpectBoth([length](Serializer& out) { return out.output_string(length, "%s", "abcd"); },
                   "<string>abcd</string>", "abcd");
    }
    ExpectBoth([](Serializer& out) { return out.output_string(3, "%s", "abcd"); }, "<string>abc</string>", "abc");
    ExpectBoth([](Serializer& out) { return out.output_string(0, "%s", "abcd"); }, "<string></string>", "");
}

TEST(SerializerTest, TellsThatThereIsNoMemory) {
    Serializer out;
    Capture capture;
    out.begin_output(TEXT);
    VX_UINT32 result = 0;
    {
        // The string would take 4 GiB.
#ifndef __SANITIZE_ADDRESS__
        const LoweredLimit fault(RLIMIT_AS, rlim_t{3} << 30);
#endif
        result = out.output_string(UINT_MAX, "text");
    }
    EXPECT_EQ(result, RC_NO_MEMORY);
    EXPECT_EQ(capture.Stop(), Asterisks());
}

TEST(SerializerTest, WritesPercentSignsOfAReport) {
    const std::pair<const char*, std::string> rows[] = {
        {"100%", "100%"}, {"%s%n%1000d", "%s%n%1000d"},   {"%%", "%"},    {"%%%", "%%"},
        {"%%%%", "%%"},   {"a%%b%c%%%d", "a%b%c%%d"},     {"% %", "% %"}, {"", ""},
        {"%", "%"},       {"line\n  %\n", "line\n  %\n"},
    };
    for (const auto& [report, printed] : rows) {
        ExpectBoth([report = report](Serializer& out) { return out.output_text(report); },
                   "<string>" + printed + "</string>", printed);
    }
}

TEST(SerializerTest, WritesALongReportWhole) {
    const std::string report = std::string(10'000, 'x') + "%d" + std::string(10'000, 'y');
    ExpectBoth([&report](Serializer& out) { return out.output_text(report.c_str()); },
               "<string>" + report + "</string>", report);
}

/// The environment of a run with `ORFC_XML`.
class XmlVariable {
public:
    explicit XmlVariable(const char* value) { setenv("ORFC_XML", value, 1); }
    ~XmlVariable() { unsetenv("ORFC_XML"); }
    XmlVariable(const XmlVariable&) = delete;
    XmlVariable& operator=(const XmlVariable&) = delete;
};

TEST(SerializerTest, EscapesEveryTextInStrictXml) {
    const XmlVariable strict("strict");
    // A control byte and half a character become U+FFFD.
    const char* const raw = "<\"&\">\r\n\x01 %s\xC3";
    const std::string escaped = "&lt;&quot;&amp;&quot;&gt;&#13;\n\xEF\xBF\xBD %s\xEF\xBF\xBD";
    ExpectBoth([raw](Serializer& out) { return out.output_field(raw, raw); },
               "<field name=\"" + escaped + "\">\n<string>" + escaped + "</string></field>\n",
               std::string(raw) + ": " + raw + "\n");
    ExpectBoth([raw](Serializer& out) { return out.begin_struct_output(raw); },
               "<structure typeName=\"" + escaped + "\">\n", std::string(raw) + ":\n");
    ExpectBoth(
        [raw](Serializer& out) {
            return out.output_list(std::vector<TavuString>{raw, raw});
        },
        "<string>" + escaped + "</string><string>" + escaped + "</string>", std::string(raw) + "," + raw + ",\n");
    ExpectBoth([raw](Serializer& out) { return out.output_string(100, "%s", raw); }, "<string>" + escaped + "</string>",
               raw);
    ExpectBoth([raw](Serializer& out) { return out.output_text(raw); }, "<string>" + escaped + "</string>", raw);
}

/// Escaping is the last step: it changes neither where a text is cut nor which percent signs are a pair.
TEST(SerializerTest, CutsATextBeforeEscapingIt) {
    const XmlVariable strict("strict");
    ExpectBoth([](Serializer& out) { return out.output_string(4, "%s", "&&&&&"); },
               "<string>&amp;&amp;&amp;&amp;</string>", "&&&&");
    // Four bytes are the letters and one of the three of the euro sign.
    ExpectBoth([](Serializer& out) { return out.output_string(4, "%s", "abc\xE2\x82\xAC"); },
               "<string>abc\xEF\xBF\xBD</string>", "abc\xE2");
    ExpectBoth([](Serializer& out) { return out.output_text("%%&%%%<"); }, "<string>%&amp;%%&lt;</string>", "%&%%<");
    const std::string report(10'000, '&');
    std::string escaped;
    for (std::size_t at = 0; at < report.size(); ++at) {
        escaped += "&amp;";
    }
    ExpectBoth([&report](Serializer& out) { return out.output_text(report.c_str()); },
               "<string>" + escaped + "</string>", report);
}

TEST(SerializerTest, IsStrictForOneValueAlone) {
    for (const char* const value : {"", "STRICT", "Strict", "strict ", " strict", "stric", "strictly", "1", "true"}) {
        const XmlVariable other(value);
        ExpectBoth([](Serializer& out) { return out.output_string(1, "&"); }, "<string>&</string>", "&");
    }
}

TEST(SerializerTest, DecidesAtTheBeginningOfADocument) {
    const auto document = [](Serializer& out, const char* before, const char* within) {
        Capture capture;
        const XmlVariable first(before);
        out.begin_output(XML);
        const XmlVariable other(within);
        out.output_string(1, "&");
        out.end_output();
        return capture.Stop();
    };
    Serializer out;
    EXPECT_NE(document(out, "strict", "").find("&amp;"), std::string::npos);
    EXPECT_EQ(document(out, "", "strict").find("&amp;"), std::string::npos);
}

/// Every operation except the two that set the format.
const Operation OPERATIONS[] = {
    [](Serializer& out) { return out.begin_list_output(Serializer::LIST_STRUCTURE); },
    [](Serializer& out) { return out.end_list_output(); },
    [](Serializer& out) { return out.output_list(std::vector<TavuString>{"a"}); },
    [](Serializer& out) { return out.output_list(std::vector<int>{1}); },
    [](Serializer& out) { return out.output_list(std::vector<bool>{true}); },
    [](Serializer& out) { return out.begin_struct_output("S"); },
    [](Serializer& out) { return out.end_struct_output(); },
    [](Serializer& out) { return out.begin_field_output("F"); },
    [](Serializer& out) { return out.end_field_output(); },
    [](Serializer& out) { return out.output_field("F", "text"); },
    [](Serializer& out) { return out.output_field("F", 1ULL, Serializer::INT_U32); },
    [](Serializer& out) { return out.output_field("F", true); },
    [](Serializer& out) { return out.output_string(4, "%s", "text"); },
    [](Serializer& out) { return out.output_text("text"); },
    [](Serializer& out) { return out.end_output(); },
};

TEST(SerializerTest, RefusesEveryOperationInNoFormat) {
    Serializer out;
    Capture capture;
    for (const Operation& operation : OPERATIONS) {
        EXPECT_EQ(operation(out), RC_INVALID_FORMAT);
    }
    EXPECT_EQ(capture.Stop(), "");
}

TEST(SerializerTest, KeepsAnUnknownFormat) {
    for (const VX_UINT32 format : {0u, 3u, 255u, UINT_MAX}) {
        for (const Operation& operation : OPERATIONS) {
            Serializer out;
            Capture capture;
            out.begin_output(XML);
            capture.Stop();
            Capture behind;
            EXPECT_EQ(out.begin_output(static_cast<Serializer::eOutputFormat>(format)), RC_INVALID_FORMAT);
            EXPECT_EQ(operation(out), RC_INVALID_FORMAT);
            EXPECT_EQ(behind.Stop(), "");
        }
    }
}

TEST(SerializerTest, ForgetsTheFormatAtTheEnd) {
    Serializer out;
    Capture document;
    out.begin_output(TEXT);
    out.end_output();
    document.Stop();
    Capture behind;
    for (const Operation& operation : OPERATIONS) {
        EXPECT_EQ(operation(out), RC_INVALID_FORMAT);
    }
    EXPECT_EQ(behind.Stop(), "");
}

} // namespace
