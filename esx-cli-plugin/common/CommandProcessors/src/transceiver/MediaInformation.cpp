#include "MediaInformation.h"

#include "FieldDecoders.h"

#include <cstring>

namespace {

enum Matches : bool { LAST_MATCH = false, ALL_MATCHES = true };

TavuString BitTexts(const ModuleImage& image, const char* name, const SfpTable* table, Matches matches) {
    DecodedText text = "";
    return GetBitDataCodeTable(GetFieldEntry(image, name), image, table, text, matches);
}

/// The last match, without its blanks.
TavuString BitCode(const ModuleImage& image, const char* name, const SfpTable* table) {
    TavuString code = BitTexts(image, name, table, LAST_MATCH);
    std::erase(code, ' ');
    return code;
}

TavuString QsfpSpeed(const ModuleImage& image) {
    const unsigned base = image.Base();
    // In units of 250 MBd, or of 100 MBd where that byte is 0.
    const unsigned rate = image[base + 94] != 0 ? image[base + 94] * 250U : image[base + 12] * 100U;
    TavuString speed;
    if (rate != 0) {
        speed.Format("%u Gbits/Sec\n", rate / 1024 * 4); // four lanes
        return speed;
    }
    speed = BitTexts(image, "Ethernet Speed", EthernetSpeedQsfpTbl, LAST_MATCH);
    constexpr char extended[] = "Extended";
    const bool isExtended = TavuString(speed.substr(0, std::strlen(extended))).CompareNoCase(extended) == 0;
    if (speed.empty() || speed.CompareNoCase("Unspecified") == 0 || isExtended) {
        DecodedText text = "";
        speed = GetByteDataCodeTable(GetFieldEntry(image, "Extended Ethernet Speed"), image, EthernetExtSpeedTbl, text,
                                     LAST_MATCH);
    }
    return speed += "\n";
}

/// Codes of "Extended Compliance Codes" that stand for 64 Gbps in modules of an older compliance.
bool Is64GCode(int code) {
    return code == 81 || code == 82 || code == 128;
}

MediaInformation DescribeSfp(const ModuleImage& image) {
    constexpr int firstComplianceOfSpeed2 = 9;
    const TavuString speeds = BitTexts(image, "FC Speed", FCSpeedTbl, ALL_MATCHES);
    TavuString mediaType;
    TavuString speed;
    if (getDataValue(image, "FC Speed 2") != 0) {
        mediaType = BitTexts(image, "FC Speed 2", FCSpeed2CodeTbl, LAST_MATCH) + "-";
        speed = BitTexts(image, "FC Speed 2", FCSpeed2Tbl, ALL_MATCHES) + speeds;
    } else if (getDataValue(image, "SFF-8472 Compliance") < firstComplianceOfSpeed2 &&
               Is64GCode(getDataValue(image, "Extended Compliance Codes"))) {
        mediaType = "6400-";
        speed = "6400 MBytes/Sec " + speeds;
    } else {
        mediaType = BitTexts(image, "FC Speed", FCSpeedCodeTbl, LAST_MATCH) + "-";
        speed = speeds;
    }

    // Two dashes can only come up below: the test never holds. Clients know this order, in which an Ethernet module
    // has a media type like "-M5--" and no speed.
    if (mediaType.find("--") != TavuString::npos) {
        const TavuString ethernet = BitCode(image, "Ethernet Speed", EthernetSpeedTbl);
        if (!ethernet.empty()) {
            mediaType = ethernet;
            speed = BitTexts(image, "Ethernet Speed", EthernetSpeedTbl, ALL_MATCHES);
        }
    }

    std::erase(mediaType, ' ');
    mediaType += BitCode(image, "FC Transmission Media", FCTransMediaCodeTbl) + "-";
    mediaType += BitCode(image, "FC Transmitter Tech", FCTransTechCodeTbl) + "-";
    mediaType += BitCode(image, "FC Link Length", FCLinkLengthCodeTbl);
    return {mediaType, speed};
}

} // namespace

MediaInformation DescribeMedia(const ModuleImage& image) {
    return image.IsQsfp() ? MediaInformation{"\n", QsfpSpeed(image)} : DescribeSfp(image);
}
