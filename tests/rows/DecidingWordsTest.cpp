/// @file
/// Holds `Argument::appliesWith` to what the commands do: with the words of its row an option is taken, with any other
/// word it is refused or ignored.
#include "Rows.h"

#include "Capture.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>

namespace {

constexpr char JOURNAL[] = "/tmp/rows-journal";

/// Ports on which commands can be tried with every word.
struct Place {
    const char* host;
    const char* port;
};
constexpr Place PLACES[] = {{"boot", "FC_21:00:00:24:ff:60:00:01"}, {"diagnostics", "FC_21:00:00:24:ff:70:00:01"}};

/// Values that these ports accept and do not have, for options whose row names none.
struct Sample {
    std::string_view option; ///< or its beginning
    std::string_view word;   ///< the deciding one; empty for any
    const char* value;
};
constexpr Sample SAMPLES[] = {
    {"--drive-", "", "50:06:0e:80:12:4a:7c:10-300"},
    {"--boot-target-wwpn", "NVME", "50:0a:09:81:a1:c3:40:10"},
    {"--boot-target-wwpn", "", "50:06:0e:80:12:4a:7c:10"},
    {"--boot-disk-num", "NVME", "2"},
    {"--boot-disk-num", "", "3"},
    {"--data-pattern", "", "O-r-v-a-n-e-F-C"},
};

Words SamplesOf(const Argument& option, std::string_view word) {
    for (const Sample& sample : SAMPLES) {
        if (std::string_view(option.name).starts_with(sample.option) && (sample.word.empty() || sample.word == word)) {
            return {sample.value};
        }
    }
    return ValuesOf(option);
}

bool AppliesWith(const Argument& argument, std::string_view word) {
    return argument.appliesWith.empty() || std::any_of(argument.appliesWith.begin(), argument.appliesWith.end(),
                                                       [&](const CodeText& with) { return word == with.text; });
}

/// What a call does as far as it can be seen: its document and its calls of the library.
struct Outcome {
    ResultCode code;
    std::string effect;
};

/// A command of which some options apply only with some words, on a port.
class Limited {
public:
    Limited(const CommandPath& path, const Place& place) : mPath(path), mPlace(place) {
        for (const Argument& limited : mPath.command->arguments) {
            for (const Argument& argument : mPath.command->arguments) {
                const bool decides = !limited.appliesWith.empty() &&
                                     std::any_of(argument.words.begin(), argument.words.end(),
                                                 [&](const CodeText& word) { return AppliesWith(limited, word.text); });
                mDeciding = decides ? &argument : mDeciding;
            }
        }
    }

    std::span<const Argument> Arguments() const { return mPath.command->arguments; }
    /// Null if all options always apply.
    const Argument* Deciding() const { return mDeciding; }

    /// The options that apply with a word, each with a value.
    std::map<std::string, std::string> OptionsWith(std::string_view word) const {
        std::map<std::string, std::string> options;
        for (const Argument& argument : Arguments()) {
            if (IsOption(argument) && &argument != mDeciding && AppliesWith(argument, word)) {
                options[argument.name] = SamplesOf(argument, word).back();
            }
        }
        return options;
    }

    Outcome Run(std::string_view word, const std::map<std::string, std::string>& options) const {
        std::filesystem::remove(JOURNAL);
        for (const char* const group : {"BootConfig", "BootConfigExt"}) {
            std::filesystem::remove(std::string("/tmp/") + group + "_" + mPlace.port);
        }
        std::ostringstream line;
        line << mPath.words << mPath.command->names.plain << ' ' << mPlace.port;
        for (const Argument& argument : Arguments()) {
            if (&argument == mDeciding) {
                line << ' ' << (IsOption(argument) ? std::string(argument.name) + " " : "") << word;
            } else if (!IsOption(argument) && !IsIdentifier(argument)) {
                line << ' ' << ValuesOf(argument).front();
            }
        }
        for (const auto& [name, value] : options) {
            line << ' ' << name << ' ' << value;
        }
        setenv("VEXAPI_SIM_HOST", (std::string(TEST_DATA "/") + mPlace.host + ".json").c_str(), 1);
        const CommandRun run = RunCommand(line.str());
        std::ostringstream effect;
        effect << run.output << std::ifstream(JOURNAL).rdbuf();
        return {run.code, effect.str()};
    }

private:
    const CommandPath& mPath;
    const Place& mPlace;
    const Argument* mDeciding = nullptr;
};

class DecidingWordsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv("VEXAPI_SIM_STATE", "", 1);
        setenv("VEXAPI_SIM_JOURNAL", JOURNAL, 1);
    }
    static void TearDownTestSuite() { unsetenv("VEXAPI_SIM_JOURNAL"); }

    /// Calls `check(command, word)` for each word of each command, on the port where the command works with all.
    template <typename Check> static void ForEachWord(Check check) {
        std::vector<CommandPath> paths;
        Gather("", CommandTree<DescribedRows>::ROOT, paths);
        std::size_t count = 0;
        for (const CommandPath& path : paths) {
            SCOPED_TRACE(path.words + path.command->names.plain);
            bool isTried = Limited(path, PLACES[0]).Deciding() == nullptr;
            count += isTried ? 0 : 1;
            for (const Place& place : PLACES) {
                const Limited command(path, place);
                if (isTried || !WorksWithAll(command)) {
                    continue;
                }
                isTried = true;
                for (const CodeText& word : command.Deciding()->words) {
                    SCOPED_TRACE(word.text);
                    check(command, word.text);
                }
            }
            EXPECT_TRUE(isTried) << "works on none of the ports with every word";
        }
        EXPECT_NE(count, 0u);
    }

    static bool WorksWithAll(const Limited& command) {
        const auto words = command.Deciding()->words;
        return std::all_of(words.begin(), words.end(), [&](const CodeText& word) {
            return command.Run(word.text, command.OptionsWith(word.text)).code == RC_SUCCESS;
        });
    }
};

TEST_F(DecidingWordsTest, OptionsAreTakenWithTheirWords) {
    ForEachWord([](const Limited& command, const char* word) {
        for (const Argument& argument : command.Arguments()) {
            auto options = command.OptionsWith(word);
            if (!AppliesWith(argument, word) || options.erase(argument.name) == 0) {
                continue;
            }
            const std::string without = command.Run(word, options).effect;
            bool isTaken = false;
            for (const std::string& value : SamplesOf(argument, word)) {
                options[argument.name] = value;
                isTaken = isTaken || command.Run(word, options).effect != without;
            }
            EXPECT_TRUE(isTaken) << argument.name;
        }
    });
}

TEST_F(DecidingWordsTest, OptionsAreRefusedOrIgnoredWithOtherWords) {
    ForEachWord([](const Limited& command, const char* word) {
        const auto all = command.OptionsWith(word);
        const std::string effect = command.Run(word, all).effect;
        for (const Argument& argument : command.Arguments()) {
            if (AppliesWith(argument, word)) {
                continue;
            }
            const auto row = all.find(argument.name); // the same option with another range
            for (const std::string& value : SamplesOf(argument, word)) {
                if (row != all.end() && std::stoul(value) <= std::stoul(row->second)) {
                    continue;
                }
                auto options = all;
                options[argument.name] = value;
                const Outcome outcome = command.Run(word, options);
                EXPECT_TRUE(outcome.code != RC_SUCCESS || outcome.effect == effect) << argument.name << ' ' << value;
            }
        }
    });
}

} // namespace
