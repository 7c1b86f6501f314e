#include "MediaInformation.h"

#include "FieldDecoders.h"
#include "QsfpMemory.h"
#include "SfpMemory.h"

#include <cstring>

namespace {

namespace sff8472 = decoders::sff8472;
namespace sff8636 = decoders::sff8636;

enum Matches : bool { LAST_MATCH = false, ALL_MATCHES = true };

TavuString BitTexts(VX_UINT8 byte, const SfpTable* table, Matches matches) {
    DecodedText text = "";
    return GetBitDataCodeTable(byte, table, text, matches);
}

/// The last match, without its blanks.
TavuString BitCode(VX_UINT8 byte, const SfpTable* table) {
    TavuString code = BitTexts(byte, table, LAST_MATCH);
    std::erase(code, ' ');
    return code;
}

/// The byte that the standard uses only if the other one is FFh comes first here, and the rate of four lanes is
/// converted to Gbps by dividing by 1024.
TavuString QsfpSpeed(const ModuleImage& image) {
    const unsigned exact = image[sff8636::SIGNALING_RATE_250];
    const unsigned rate = exact != 0 ? exact * 250U : image[sff8636::SIGNALING_RATE] * 100U;
    TavuString speed;
    if (rate != 0) {
        speed.Format("%u Gbits/Sec\n", rate / 1024 * 4); // four lanes
        return speed;
    }
    speed = BitTexts(image[sff8636::ETHERNET_COMPLIANCE], EthernetSpeedQsfpTbl, LAST_MATCH);
    constexpr char EXTENDED[] = "Extended";
    const bool isExtended = TavuString(speed.substr(0, std::strlen(EXTENDED))).CompareNoCase(EXTENDED) == 0;
    if (speed.empty() || speed.CompareNoCase("Unspecified") == 0 || isExtended) {
        DecodedText text = "";
        speed = GetByteDataCodeTable(image[sff8636::EXTENDED_COMPLIANCE], EthernetExtSpeedTbl, text, LAST_MATCH);
    }
    return speed += "\n";
}

/// Codes of "Extended Compliance Codes" that mean 64 Gbps in modules of an older compliance.
bool Is64GCode(int code) {
    return code == 81 || code == 82 || code == 128;
}

MediaInformation DescribeSfp(const ModuleImage& image) {
    constexpr int FIRST_COMPLIANCE_OF_SPEED_2 = 9;
    const VX_UINT8 speedCode = image[sff8472::FC_SPEED];
    const VX_UINT8 speedCode2 = image[sff8472::FC_SPEED_2];
    const TavuString speeds = BitTexts(speedCode, FCSpeedTbl, ALL_MATCHES);
    TavuString mediaType;
    TavuString speed;
    if (speedCode2 != 0) {
        mediaType = BitTexts(speedCode2, FCSpeed2CodeTbl, LAST_MATCH) + "-";
        speed = BitTexts(speedCode2, FCSpeed2Tbl, ALL_MATCHES) + speeds;
    } else if (image[sff8472::COMPLIANCE] < FIRST_COMPLIANCE_OF_SPEED_2 &&
               Is64GCode(image[sff8472::EXTENDED_COMPLIANCE])) {
        mediaType = "6400-";
        speed = "6400 MBytes/Sec " + speeds;
    } else {
        mediaType = BitTexts(speedCode, FCSpeedCodeTbl, LAST_MATCH) + "-";
        speed = speeds;
    }

    // Required: the Ethernet code is not consulted, so a module with that code alone has a media type like "-M5--" and
    // no speed. Parsers depend on it.
    std::erase(mediaType, ' ');
    mediaType += BitCode(image[sff8472::TRANSMISSION_MEDIA], FCTransMediaCodeTbl) + "-";
    mediaType += BitCode(image[sff8472::TRANSMITTER_TECH], FCTransTechCodeTbl) + "-";
    mediaType += BitCode(image[sff8472::LINK_LENGTH], FCLinkLengthCodeTbl);
    return {mediaType, speed};
}

} // namespace

MediaInformation DescribeMedia(const ModuleImage& image) {
    return image.IsQsfp() ? MediaInformation{"\n", QsfpSpeed(image)} : DescribeSfp(image);
}
