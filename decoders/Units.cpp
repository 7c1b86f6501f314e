#include "Units.h"

#include <cmath>

namespace decoders {

std::optional<Dbm> DbmOf(Milliwatts power) {
    if (!(power.value > 0)) {
        return std::nullopt;
    }
    return Dbm{10 * std::log10(power.value)};
}

} // namespace decoders
