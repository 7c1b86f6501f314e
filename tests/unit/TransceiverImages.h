/// @file
/// Memory images of transceivers, built byte by byte or read from real modules.
#pragma once

#include "TransceiverReport.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>

namespace transceiver_test {

/// Offset of byte n of address A2h.
constexpr std::size_t A2h(std::size_t n) {
    return 256 + n;
}

/// 512 bytes, all zero at first.
struct Image : _VEXAPI_SFP_DATA {
    Image() : _VEXAPI_SFP_DATA{} {}

    Image& Set(std::size_t offset, std::initializer_list<int> bytes) {
        for (const int byte : bytes) {
            Data[offset++] = static_cast<VX_UINT8>(byte);
        }
        return *this;
    }
    Image& Set(std::size_t offset, const std::string& text) {
        std::memcpy(Data + offset, text.data(), text.size());
        return *this;
    }
    ModuleImage View() const { return ModuleImage(*this); }
};

/// An image of tests/data/transceivers: two digits per byte, "#" comments, and the pages as in a description of
/// the simulated host.
inline Image LoadImage(const std::string& name) {
    Image image;
    std::ifstream file(TEST_DATA "/transceivers/" + name + ".hex");
    EXPECT_TRUE(file.is_open()) << name;
    std::size_t at = 0;
    for (std::string line; std::getline(file, line);) {
        if (line == "# A0h" || line == "# lower page") {
            at = 0;
        } else if (line == "# A2h") {
            at = 256;
        } else if (line == "# upper page") {
            at = 128;
        } else if (!line.starts_with("#")) {
            std::istringstream words(line);
            for (std::string word; words >> word && at < sizeof image.Data;) {
                image.Data[at++] = static_cast<VX_UINT8>(std::stoul(word, nullptr, 16));
            }
        }
    }
    return image;
}

/// The report of an image, without its document.
inline std::string ReportOf(const Image& image, std::size_t blockSize = 16384) {
    ReportBlock block(blockSize, ReportBlock::SizeRule::FULL);
    TransceiverReport report(block, image.View());
    report.CalculateDMIData();
    report.PrintSFPDMI(true);
    report.PrintSFP();
    return block.GetText();
}

/// The fields of a report, after the media information and the summary.
inline std::string FieldsOf(const std::string& report) {
    const std::size_t start = report.find("\nOptical Transceiver Digital Diagnostic Data:\n");
    EXPECT_NE(start, std::string::npos);
    return start == std::string::npos ? "" : report.substr(start);
}
inline std::string HeadOf(const std::string& report) {
    return report.substr(0, report.size() - FieldsOf(report).size());
}

/// A label as fields print it, right-aligned in 30 columns: "LABEL: ".
inline std::string Label(const std::string& label) {
    return std::string(30 - label.size(), ' ') + label + ": ";
}

} // namespace transceiver_test
