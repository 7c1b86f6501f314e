/// @file
/// The common function of `list` leaves.
#pragma once

#include "Document.h"
#include "HostTree.h"
#include "MultipleCmdsProcessor.h"

/// Preparation of a `list` leaf. Returns `RC_SUCCESS` and the host; `RC_HELP_REQUESTED` for a help word;
/// `RC_HOST_NOT_FOUND` without an adapter list.
ResultCode AdmitList(const TavuStringArray& args, const VX_ADAPTER_LIST*& host);

/// Writes a list whose structures `rows(document, host)` writes. If `AdmitList` refuses, there is no document.
template <typename Rows>
ResultCode ListHost(MultipleCmdsProcessor* self, const TavuStringArray& args, Serializer::eOutputFormat format,
                    Rows rows) {
    const VX_ADAPTER_LIST* host = nullptr;
    const ResultCode code = AdmitList(args, host);
    if (code == RC_SUCCESS) {
        Document document(*self, format);
        document.List([&] { rows(document, *host); });
    }
    return code;
}
