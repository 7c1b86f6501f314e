#include "Options.h"

#include "Rules.h"
#include "Utf8.h"
#include "Version.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>

namespace orfc {

using nlohmann::ordered_json;

namespace {

constexpr char PROGRAM[] = "orfc";
constexpr double SHORTEST_INTERVAL = 0.1; // seconds
constexpr double LONGEST_INTERVAL = 86400;
constexpr char EXPECTED_INTERVAL[] = "from 0.1 to 86400 seconds";
constexpr double LARGEST_COUNT = 1e9;

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

/// A format by its name.
std::string TransformFormat(std::string& text) {
    const auto format = FORMATS.find(CLI::detail::to_lower(text));
    if (format == FORMATS.end()) {
        return text + " is no format";
    }
    text = std::to_string(static_cast<int>(format->second));
    return {};
}

/// Refuses what is no number from `least` to `most`.
CLI::Validator Between(double least, double most, const char* expected) {
    return {[=](std::string& text) {
                double number = 0;
                const bool isGood =
                    CLI::detail::lexical_cast(text, number) && number >= least && number <= most; // not a NaN either
                return isGood ? std::string() : text + " is not " + expected;
            },
            ""};
}

/// What an option takes, for completion.
enum class Argument { NONE, WORD, NUMBER, COLUMN, COLUMNS, LIBRARY, ROOT, FILE };
constexpr const char* ARGUMENT_NAMES[] = {"none", "word", "number", "column", "columns", "library", "root", "file"};

/// The command line, and what each option takes beyond what its parser knows.
struct CommandLine {
    struct Option {
        const CLI::Option* option;
        Argument argument;
        std::vector<std::string> words;
    };
    CLI::App app{"Shows Fibre Channel adapters, ports, storage and the paths to it.", PROGRAM};
    std::vector<Option> options;

    void Describe(CLI::Option* option, const char* name, Argument argument, std::vector<std::string> words = {}) {
        options.push_back({option->option_text(name), argument, std::move(words)});
    }
};

/// Adds the options that every command takes, before or after its name.
void AddCommonOptions(CommandLine& line, Options& options) {
    CLI::App& app = line.app;
    line.Describe(app.add_option("-o,--output", options.format, "Format: table, wide, json, csv or esxcli")
                      ->transform(CLI::Validator(TransformFormat, "")),
                  "FORMAT", Argument::WORD, {"table", "wide", "json", "csv", "esxcli"});
    line.Describe(
        app.add_option("--columns", options.columns, "Columns of a table or CSV: keys, with commas between them")
            ->delimiter(',')
            ->allow_extra_args(false),
        "KEY,KEY", Argument::COLUMNS);
    line.Describe(app.add_flag("--no-headings", options.hasNoHeadings, "No line of headings in a table or CSV"), "",
                  Argument::NONE);
    line.Describe(app.add_option("--sort", options.sort, "Sort by a column: its key, after a - in descending order"),
                  "KEY", Argument::COLUMN);
    const std::vector<std::string> whens = {"auto", "always", "never"};
    line.Describe(app.add_option("--color", options.color, "Mark verdicts with colours: auto, always or never")
                      ->check(CLI::IsMember(whens).description("")),
                  "WHEN", Argument::WORD, whens);
    line.Describe(
        app.add_option("--library", options.library, "Management library: linux, simulator or the path of one"),
        "LIBRARY", Argument::LIBRARY, {"linux", "simulator"});
    line.Describe(
        app.add_option("--root", options.root, "Capture, or folder with a captured sys/, instead of this machine's"),
        "FILE", Argument::ROOT);
}

/// The options of commands that judge.
void AddRules(CommandLine& line, CLI::App& command, const CommandRow& row, Options& options) {
    HealthOptions& health = options.health;
    line.Describe(command.add_option("--rules", health.rules, "File that changes bounds and switches rules off"),
                  "FILE", Argument::FILE);
    line.Describe(command.add_option("--state", health.state,
                                     "File of earlier readings, to compare with; an empty name for none"),
                  "FILE", Argument::FILE);
    if (row.isExposition) {
        std::vector<std::string> parts;
        for (const Part& part : row.parts) {
            parts.emplace_back(part.name);
        }
        line.Describe(command.add_option("--part", health.part, "One part of it: counters or transceivers")
                          ->check(CLI::IsMember(parts).description("")),
                      "PART", Argument::WORD, parts);
        line.Describe(command.add_option("--output", health.output, "File to replace; its name ends in .prom")
                          ->check(CLI::Validator(
                              [](const std::string& name) {
                                  return name.ends_with(".prom") ? "" : name + " doesn't end in .prom";
                              },
                              "")),
                      "FILE", Argument::FILE);
        return;
    }
    std::vector<std::string> names;
    for (const Rule& rule : Rules()) {
        names.emplace_back(rule.name);
    }
    line.Describe(command.add_option("--explain", options.explained, "Tell what a rule means and what to do")
                      ->each([&options](const std::string&) { options.special = Special::EXPLANATION; }),
                  "RULE", Argument::WORD, names);
    line.Describe(command.add_flag("--nagios", health.isNagios,
                                   "One line with performance data for a checker, and its exit status"),
                  "", Argument::NONE);
}

void AddCommand(CommandLine& line, const CommandRow& row, Options& options) {
    CLI::App* const command = line.app.add_subcommand(row.name, row.summary);
    command->footer(row.description +
                    ("\n\nThe options of every command: orfc --help\n\n" + ExamplesText(row.examples)));
    command->callback([&options, &row] { options.command = &row; });
    if (row.takesNames) {
        command->add_option("NAME", options.names, "Names of objects, in any spelling")
            ->required(row.needsNames)
            ->option_text("");
    }
    if (row.isCapture) {
        command->add_option("FILE", options.capture.file, "File to write; its name should end in .tar.xz")
            ->option_text("");
        line.Describe(command->add_flag("--force", options.capture.isForced, "Replace an existing file"), "",
                      Argument::NONE);
    }
    if (row.hasFar) {
        line.Describe(
            command->add_flag("--far", options.isFar, "Ask the far end of each link too, which sends a frame"), "",
            Argument::NONE);
    }
    if (row.hasRules) {
        AddRules(line, *command, row, options);
    }
    if (row.repeats == Repeats::COMPARISON) {
        line.Describe(command
                          ->add_option("--interval", options.interval,
                                       "Compare with a reading so many seconds before, and not with the kept ones")
                          ->check(Between(SHORTEST_INTERVAL, LONGEST_INTERVAL, EXPECTED_INTERVAL)),
                      "SECONDS", Argument::NUMBER);
    } else if (row.repeats != Repeats::NOTHING) {
        const bool isOfFrames = row.repeats == Repeats::FRAMES;
        CLI::Option* const interval = command
                                          ->add_option("--interval", options.interval,
                                                       isOfFrames ? "Seconds between two frames, 1 if not given"
                                                                  : "Read again every so many seconds")
                                          ->check(Between(SHORTEST_INTERVAL, LONGEST_INTERVAL, EXPECTED_INTERVAL));
        line.Describe(interval, "SECONDS", Argument::NUMBER);
        CLI::Option* const count =
            command
                ->add_option("--count", options.count,
                             isOfFrames ? "Frames to each remote port, 5 if not given" : "End after so many readings")
                ->check(Between(1, LARGEST_COUNT, "from 1 to 1000000000"));
        line.Describe(isOfFrames ? count : count->needs(interval), "N", Argument::NUMBER);
    }
}

/// The whole command line.
std::unique_ptr<CommandLine> MakeCommandLine(Options& options) {
    auto line = std::make_unique<CommandLine>();
    CLI::App& app = line->app;
    app.set_version_flag("--version", std::string("orfc ") + TOOL_VERSION, "Show the version");
    app.set_help_flag("-h,--help", "Show this help");
    app.require_subcommand(0, 1);
    app.fallthrough();
    AddCommonOptions(*line, options);
    for (const CommandRow& row : Commands()) {
        if (*row.name != '\0') {
            AddCommand(*line, row, options);
        } else {
            options.command = &row;
            app.footer(ExamplesText(row.examples));
        }
    }
    app.add_subcommand("schema", "the JSON schema of all output")
        ->footer("Prints the JSON schema of everything that -o json writes.")
        ->callback([&options] { options.special = Special::SCHEMA; });
    app.add_subcommand("describe", "the program's commands, options and records as JSON")
        ->group("") // for generators
        ->callback([&options] { options.special = Special::DESCRIPTION; });
    return line;
}

ordered_json DescribeOptions(const CommandLine& line, const CLI::App& app) {
    ordered_json described = ordered_json::array();
    for (const CommandLine::Option& option : line.options) {
        const std::vector<const CLI::Option*> own = app.get_options();
        if (std::find(own.begin(), own.end(), option.option) != own.end()) {
            const std::vector<std::string>& shortNames = option.option->get_snames();
            described.push_back({{"name", "--" + option.option->get_lnames().front()},
                                 {"short_name", shortNames.empty() ? "" : "-" + shortNames.front()},
                                 {"argument_name", option.option->get_option_text()},
                                 {"argument", ARGUMENT_NAMES[static_cast<int>(option.argument)]},
                                 {"words", option.words},
                                 {"description", option.option->get_description()}});
        }
    }
    return described;
}

} // namespace

std::optional<Options> ParseOptions(int count, char* words[], int& status) {
    Options options;
    const std::unique_ptr<CommandLine> line = MakeCommandLine(options);
    try {
        line->app.parse(count, words);
        const bool isTable = options.format == Format::TABLE || options.format == Format::WIDE;
        if (!options.columns.empty() && !isTable && options.format != Format::CSV) {
            throw CLI::ValidationError("--columns", "is for tables and CSV; the other formats have every key");
        }
        if (options.command->isDetailed && options.format == Format::ESXCLI) {
            throw CLI::ValidationError("--output", "esxcli is for lists");
        }
        if ((options.command->isExposition || options.command->isCapture) &&
            (options.format != Format::TABLE || !options.columns.empty() || !options.sort.empty())) {
            throw CLI::ValidationError(options.command->name, "has a format of its own");
        }
        if (options.health.isNagios && (options.format != Format::TABLE || !options.columns.empty())) {
            throw CLI::ValidationError("--nagios", "has a format of its own");
        }
        if (options.root && !options.health.state) { // another host's readings
            options.health.state = "";
        }
        return options;
    } catch (const CLI::Success& success) { // help or the version
        line->app.exit(success);
        status = 0;
    } catch (const CLI::Error& error) {
        std::cerr << PROGRAM << ": " << LineText(error.what()) << "; see " << PROGRAM << " --help\n";
        status = Failure::USAGE;
        const bool isChecked = std::find(words, words + count, std::string_view("--nagios")) != words + count;
        if (const auto text = FailHealth({.isNagios = isChecked}, error.what())) { // checkers have other statuses
            std::cout << text->text;
            status = *text->status;
        }
    }
    return std::nullopt;
}

ordered_json DescribeCommandLine() {
    Options options;
    const std::unique_ptr<CommandLine> line = MakeCommandLine(options);
    ordered_json commands = ordered_json::array();
    for (const CommandRow& row : Commands()) {
        const bool hasName = *row.name != '\0';
        commands.push_back(
            {{"name", row.name},
             {"summary", row.summary},
             {"description", row.description},
             {"takes_names", row.takesNames},
             {"needs_names", row.needsNames},
             {"takes_file", row.isCapture},
             {"options", hasName ? DescribeOptions(*line, *line->app.get_subcommand(row.name)) : ordered_json::array()},
             {"examples", std::vector<std::string>(row.examples.begin(), row.examples.end())}});
    }
    const CLI::App& schema = *line->app.get_subcommand("schema");
    commands.push_back({{"name", schema.get_name()},
                        {"summary", schema.get_description()},
                        {"description", schema.get_footer()},
                        {"takes_names", false},
                        {"needs_names", false},
                        {"takes_file", false},
                        {"options", ordered_json::array()},
                        {"examples", {"orfc schema"}}});
    ordered_json rules = ordered_json::array();
    for (const Rule& rule : Rules()) {
        ordered_json bounds = ordered_json::array();
        for (const Bound& bound : rule.bounds) {
            bounds.push_back({{"name", bound.name}, {"value", bound.value}, {"description", bound.description}});
        }
        rules.push_back({{"name", rule.name},
                         {"subject", SubjectText(rule.subject)},
                         {"severity", SeverityText(rule.severity)},
                         {"bounds", bounds},
                         {"text", rule.text},
                         {"meaning", rule.meaning},
                         {"remedy", rule.remedy},
                         {"compares_readings", rule.Is(COMPARES_READINGS)},
                         {"slow", rule.Is(IS_SLOW)}});
    }
    return {{"program", PROGRAM},
            {"version", TOOL_VERSION},
            {"description", line->app.get_description()},
            {"options", DescribeOptions(*line, line->app)},
            {"commands", commands},
            {"rules", rules}};
}

} // namespace orfc
