/// @file
/// The command line.
#pragma once

#include "Command.h"
#include "Json.h"

namespace orfc {

enum class Format { TABLE, WIDE, JSON, CSV, ESXCLI };

/// What the program prints instead of a host.
enum class Special { NONE, SCHEMA, DESCRIPTION, EXPLANATION };

struct Options {
    const CommandRow* command = nullptr;
    Special special = Special::NONE;
    std::vector<std::string> names;
    Format format = Format::TABLE;
    std::vector<std::string> columns;
    bool hasNoHeadings = false;
    std::string sort;
    std::string color = "auto";
    std::string library;
    std::optional<std::string> root;
    bool isFar = false;
    double interval = 0;     ///< seconds; 0: once
    unsigned long count = 0; ///< of readings; 0: no end
    HealthOptions health;
    CaptureOptions capture;
    std::string explained; ///< name of the rule to explain
};

/// Parses the command line. Returns nothing where the program has done its job with it, after help, a version or a
/// usage error; `status` is the exit status then.
std::optional<Options> ParseOptions(int count, char* words[], int& status);

/// The commands and options, for the manual page and completion.
nlohmann::ordered_json DescribeCommandLine();

} // namespace orfc
