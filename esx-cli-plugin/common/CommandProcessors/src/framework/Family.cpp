#include "Family.h"

VX_UINT32 ShowFamilyHelp(MultipleCmdsProcessor* self, TavuStringArray& args, const char* helpWord) {
    Output(OUTPUT_HEADING,
           "\r\nFollowing is the list of available commands in the %s command mode.\r\n"
           "For detailed information of each command, please type 'command ?'\r\n",
           helpWord);
    Output(OUTPUT_NOTE, "All commands are case insensitive.\r\n\r\n");
    self->ListChildren(args, true);
    return RC_SUCCESS;
}

VX_UINT32 ShowUsage(std::span<const UsageText> usages, VX_UINT32 cmdId) {
    for (const UsageText& usage : usages) {
        if (usage.id == cmdId) {
            Output(OUTPUT_LIST, "%s", usage.text);
            return RC_SUCCESS;
        }
    }
    return RC_NO_USAGE;
}
