/// @file
/// Preloaded, takes the place of the library's `VEXAPI_ExtSetScope`, so that the library reads everything.
#include "extensions.h"

VX_UINT32 VEXAPI_ExtSetScope(const VEXAPI_EXT_SCOPE* scope) {
    (void)scope;
    return 0;
}
