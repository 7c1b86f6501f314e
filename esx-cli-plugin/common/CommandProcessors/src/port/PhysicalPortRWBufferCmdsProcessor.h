#pragma once

#include "Family.h"
#include "FrameDiagnostics.h"

/// `port -s rwbuffer`: writes a pattern to the buffers of a port's targets and reads it back.
class PhysicalPortRWBufferCmdsProcessor final : public Family<PhysicalPortRWBufferCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct RWBuffer {
        _VEXAPI_ReadWriteBufferTestResult* results = nullptr; ///< of the last iteration; owned by the library
        FrameTestCounts counts;
    };

    static ResultCode CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode Run(const TavuStringArray& args, RWBuffer& buffer);
    static void DisplayRWBufferTestResult(MultipleCmdsProcessor* self, const RWBuffer& buffer, eOutputFormat format);
};
