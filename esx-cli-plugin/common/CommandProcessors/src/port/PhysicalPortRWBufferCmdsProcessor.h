#pragma once

#include "Family.h"
#include "FrameTest.h"

/// `port -s rwbuffer`: writes a pattern to the buffers of a port's targets and reads it back.
class PhysicalPortRWBufferCmdsProcessor final : public Family<PhysicalPortRWBufferCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct RWBuffer {
        _VEXAPI_ReadWriteBufferTestResult* results = nullptr; ///< of the last iteration; the library's
        FrameTestCounts counts;
    };

    static VX_UINT32 CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 Run(const TavuStringArray& args, RWBuffer& buffer);
    static void DisplayRWBufferTestResult(MultipleCmdsProcessor* self, const RWBuffer& buffer, eOutputFormat format);
    static const Leaf LEAVES[];
};
