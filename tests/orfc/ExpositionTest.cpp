/// @file
/// Text exposition: what collectors refuse or drop silently doesn't come about.
#include "Exposition.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace orfc;

namespace {

constexpr auto GAUGE = Exposition::Type::GAUGE;

TEST(ExpositionTest, FamiliesAreTogether) {
    Exposition exposition;
    exposition.Add("a_total", Exposition::Type::COUNTER, "Help.", {{"l", "1"}}, 1);
    exposition.Add("b", GAUGE, "Other help.", {}, -2.5);
    exposition.Add("a_total", Exposition::Type::COUNTER, "Help.", {{"l", "2"}, {"m", "x"}}, 3);
    EXPECT_EQ(exposition.Text(),
              "# HELP a_total Help.\n# TYPE a_total counter\na_total{l=\"1\"} 1\na_total{l=\"2\",m=\"x\"} 3\n"
              "# HELP b Other help.\n# TYPE b gauge\nb -2.5\n");
}

TEST(ExpositionTest, UnknownValuesHaveNoSample) {
    Exposition exposition;
    for (const std::optional<double> value :
         {std::optional<double>(), std::optional(std::nan("")), std::optional(HUGE_VAL)}) {
        exposition.Add("a", GAUGE, "Help.", {}, value);
    }
    EXPECT_EQ(exposition.Text(), "");
}

TEST(ExpositionTest, DuplicatesAreLeftOut) {
    Exposition exposition;
    exposition.Add("a", GAUGE, "Help.", {{"l", "\x01"}}, 1);
    exposition.Add("a", GAUGE, "Help.", {{"l", "\x02"}}, 2); // the same once it is written
    exposition.Add("a", GAUGE, "Help.", {{"l", "\x01"}, {"empty", ""}}, 3);
    EXPECT_EQ(exposition.Text(), "# HELP a Help.\n# TYPE a gauge\na{l=\"\xEF\xBF\xBD\"} 1\n");
}

TEST(ExpositionTest, LabelsAreEscapedText) {
    Exposition exposition;
    exposition.Add("a", GAUGE, "Help.", {{"l", "\"\\\n\xFF{}\xC3\xA4"}}, 1);
    EXPECT_EQ(exposition.Text(),
              "# HELP a Help.\n# TYPE a gauge\na{l=\"\\\"\\\\\xEF\xBF\xBD\xEF\xBF\xBD{}\xC3\xA4\"} 1\n");
}

TEST(ExpositionTest, NumbersKeepTheirDigits) {
    Exposition exposition;
    int number = 0;
    for (const double value : {0.1, 1e9 / 8, 4294967296., 1700000000.25, 1 / 3., 9007199254740993., -0.}) {
        exposition.Add("a", GAUGE, "", {{"n", std::to_string(++number)}}, value);
    }
    std::string text = exposition.Text();
    for (const char* const expected : {"} 0.1\n", "} 125000000\n", "} 4294967296\n", "} 1700000000.25\n",
                                       "} 0.33333333333333331\n", "} 9007199254740992\n", "} -0\n"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << text;
    }
}

} // namespace
