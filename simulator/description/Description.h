/// @file
/// Builds the host from its description.
#pragma once

#include "description/Fields.h"
#include "host/Host.h"

#include <memory>
#include <string>

namespace sim {

/// Builds the host that the description at `path` tells of, or the lab host when `path` is empty.
/// Throws `std::runtime_error` whose text names the file, the place in it and the reason.
std::unique_ptr<Host> readHost(const std::string& path);

/* What changes at run time is read and written under the keys of the description. */

/// Reads the changed keys of the host, an adapter or a port, as `writeChanged...` gives them. Throws `Refusal`.
void readChangedHost(const Json& object, const std::string& path, Host& host);
void readChangedAdapter(const Json& object, const std::string& path, Adapter& adapter);
void readChangedPort(const Json& object, const std::string& path, Port& port);

/// The present value of a key.
Json writeChangedHost(const std::string& key, const Host& host);
Json writeChangedAdapter(const std::string& key, const Adapter& adapter);
Json writeChangedPort(const std::string& key, const Port& port);

} // namespace sim
