/// @file
/// Builds the host from its description.
#pragma once

#include "description/Fields.h"
#include "host/Host.h"

#include <memory>
#include <string>

namespace sim {

/// Builds the host from the description at `path`, or the lab host if `path` is empty. Throws `std::runtime_error`
/// with the file, the JSON pointer and the reason.
std::unique_ptr<Host> ReadHost(const std::string& path);

/* State that changes at run time is read and written under the keys of the description. */

/// Reads changed keys of the host, an adapter or a port, as written by `WriteChanged...`. Throws `Refusal`.
void ReadChangedHost(const Json& object, const std::string& path, Host& host);
void ReadChangedAdapter(const Json& object, const std::string& path, Adapter& adapter);
void ReadChangedPort(const Json& object, const std::string& path, Port& port);

/// The current value of a key.
Json WriteChangedHost(const std::string& key, const Host& host);
Json WriteChangedAdapter(const std::string& key, const Adapter& adapter);
Json WriteChangedPort(const std::string& key, const Port& port);

} // namespace sim
