#include "CmdLineParser.h"

#include <cstdlib>

namespace {

bool Equals(const TavuString& word, const char* name) {
    return *name != '\0' && word.CompareNoCase(name) == 0;
}

} // namespace

int CmdLineParser::GetCommandValueFromArgs(const TavuStringArray& args, const char* shortName, const char* longName,
                                           TavuString& value) {
    for (std::size_t at = 0; at < args.size(); ++at) {
        if (Equals(args[at], shortName) || Equals(args[at], longName)) {
            if (at + 1 == args.size()) {
                return 0;
            }
            value = args[at + 1];
            return 1;
        }
    }
    return 0;
}

int IsCommandInArgs(const TavuStringArray& args, const char* option, const char* name, int& index) {
    index = -1;
    const bool hasOption = *option != '\0';
    for (std::size_t at = 0; at < args.size(); ++at) {
        if (args[at].CompareNoCase(hasOption ? option : name) != 0) {
            continue;
        }
        if (hasOption && at + 1 == args.size()) {
            return 0;
        }
        if (!hasOption || args[at + 1].CompareNoCase(name) == 0) {
            index = static_cast<int>(at);
            return 1;
        }
    }
    return 0;
}

bool FindWord(std::span<const CodeText> words, const char* value, VX_UINT32& number) {
    for (const CodeText& row : words) {
        if (CompareNoCase(value, row.text) == 0) {
            number = row.code;
            return true;
        }
    }
    return false;
}

VX_UINT32 ParseNumber(const char* text) {
    return static_cast<VX_UINT32>(std::strtoul(text, nullptr, 10));
}
