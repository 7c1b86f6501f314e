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
std::unique_ptr<Host> ReadHost(const std::string& path);

/* What changes at run time is read and written under the keys of the description. */

/// Reads the changed keys of the host, an adapter or a port, as `WriteChanged...` gives them. Throws `Refusal`.
void ReadChangedHost(const Json& object, const std::string& path, Host& host);
void ReadChangedAdapter(const Json& object, const std::string& path, Adapter& adapter);
void ReadChangedPort(const Json& object, const std::string& path, Port& port);

/// The present value of a key.
Json WriteChangedHost(const std::string& key, const Host& host);
Json WriteChangedAdapter(const std::string& key, const Adapter& adapter);
Json WriteChangedPort(const std::string& key, const Port& port);

} // namespace sim
