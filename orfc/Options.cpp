#include "Options.h"

#include "Json.h"
#include "Version.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

namespace orfc {

namespace {

constexpr char PROGRAM[] = "orfc";
constexpr double SHORTEST_INTERVAL = 0.1; // seconds

const std::map<std::string, Format> FORMATS = {{"table", Format::TABLE},
                                               {"wide", Format::WIDE},
                                               {"json", Format::JSON},
                                               {"csv", Format::CSV},
                                               {"esxcli", Format::ESXCLI}};

std::string ExamplesText(std::span<const char* const> examples) {
    std::string text = "Examples:";
    for (const char* example : examples) {
        text += "\n  " + std::string(example);
    }
    return text;
}

/// Adds the options that every command takes, before or after its name.
void AddCommonOptions(CLI::App& app, Options& options) {
    app.add_option("-o,--output", options.format, "Format: table, wide, json, csv or esxcli")
        ->transform(CLI::CheckedTransformer(FORMATS, CLI::ignore_case).description(""))
        ->type_name("FORMAT")
        ->option_text("FORMAT");
    app.add_option("--columns", options.columns, "Columns of a table or CSV: keys, with commas between them")
        ->delimiter(',')
        ->option_text("KEY,KEY");
    app.add_flag("--no-headings", options.hasNoHeadings, "No line of headings in a table or CSV");
    app.add_option("--sort", options.sort, "Sort by a column: its key, after a - in descending order")
        ->option_text("KEY");
    app.add_option("--color", options.color, "Mark verdicts with colours: auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->option_text("WHEN");
    app.add_option("--library", options.library, "Management library: linux, simulator or the path of one")
        ->option_text("LIBRARY");
    app.add_option("--root", options.root, "Folder with a captured sys/, instead of this machine's")
        ->option_text("FOLDER");
}

/// The whole command line.
std::unique_ptr<CLI::App> MakeApp(Options& options) {
    auto app = std::make_unique<CLI::App>("Shows Fibre Channel adapters, ports, storage and the paths to it.", PROGRAM);
    app->set_version_flag("--version", std::string("orfc ") + TOOL_VERSION, "Show the version");
    app->set_help_flag("-h,--help", "Show this help");
    app->require_subcommand(0, 1);
    app->fallthrough();
    AddCommonOptions(*app, options);
    for (const CommandRow& row : Commands()) {
        if (*row.name == '\0') {
            options.command = &row;
            app->footer(ExamplesText(row.examples));
            continue;
        }
        CLI::App* const command = app->add_subcommand(row.name, row.summary);
        command->footer(row.description +
                        ("\n\nThe options of every command: orfc --help\n\n" + ExamplesText(row.examples)));
        command->callback([&options, &row] { options.command = &row; });
        if (row.takesNames) {
            command->add_option("NAME", options.names, "Names of objects, in any spelling")
                ->required(row.needsNames)
                ->option_text("");
        }
        if (row.hasInterval) {
            auto* const interval =
                command->add_option("--interval", options.interval, "Read again every so many seconds")
                    ->check(CLI::Range(SHORTEST_INTERVAL, 86400.0).description(""))
                    ->option_text("SECONDS");
            command->add_option("--count", options.count, "End after so many readings")
                ->check(CLI::PositiveNumber.description(""))
                ->needs(interval)
                ->option_text("N");
        }
    }
    CLI::App* const schema = app->add_subcommand("schema", "the JSON schema of all output");
    schema->callback([&options] { options.isSchema = true; });
    return app;
}

} // namespace

std::optional<Options> ParseOptions(int count, char* words[], int& status) {
    Options options;
    const std::unique_ptr<CLI::App> app = MakeApp(options);
    try {
        app->parse(count, words);
        const bool isTable = options.format == Format::TABLE || options.format == Format::WIDE;
        if (!options.columns.empty() && !isTable && options.format != Format::CSV) {
            throw CLI::ValidationError("--columns", "is for tables and CSV; the other formats have every key");
        }
        if (options.command->isDetailed && options.format == Format::ESXCLI) {
            throw CLI::ValidationError("--output", "esxcli is for lists");
        }
        return options;
    } catch (const CLI::Success& success) { // help or the version
        app->exit(success);
        status = 0;
    } catch (const CLI::Error& error) {
        std::cerr << PROGRAM << ": " << error.what() << "\nTry: " << PROGRAM << " --help\n";
        status = Failure::USAGE;
    }
    return std::nullopt;
}

} // namespace orfc
