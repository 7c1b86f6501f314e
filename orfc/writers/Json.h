/// @file
/// JSON as the program writes it.
#pragma once

#include "Records.h"

#include <nlohmann/json.hpp>

namespace orfc {

/// Of everything that is written as JSON. The first number moves when a reader must, the second when keys are added.
inline constexpr int JSON_FORMAT_VERSION[] = {1, 1};

/// The text of a value, on one line without an indent. Bytes that are no UTF-8 are U+FFFD, and nothing but ASCII is in
/// it, so that it does no harm on a terminal.
std::string DumpJson(const nlohmann::ordered_json& json, int indent = -1);

/// The schema of everything that `WriteJson` writes, given a set of records of each kind, which may be empty.
nlohmann::ordered_json SchemaOf(const std::vector<const Records*>& kinds);
/// The columns of each kind: key, heading, type and description.
nlohmann::ordered_json DescribeColumns(const std::vector<const Records*>& kinds);

} // namespace orfc
