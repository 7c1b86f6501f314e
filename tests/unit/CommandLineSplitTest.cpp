#include "Output.h"
#include "ProgramMode.h"
#include "Words.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace {

using Words = std::vector<std::string>;

/// The words of a line; nullopt if its quotes stay open.
std::optional<Words> Split(const std::string& line) {
    int count = -1;
    char** const argv = ParseCommandLineToArgv(line.c_str(), count);
    if (argv == nullptr) {
        EXPECT_EQ(count, 0);
        return std::nullopt;
    }
    EXPECT_EQ(argv[count], nullptr);
    Words words(argv, argv + count);
    std::free(argv);
    return words;
}

void ExpectWords(const std::string& line, const Words& words) {
    const std::optional<Words> split = Split(line);
    ASSERT_TRUE(split.has_value()) << line;
    EXPECT_EQ(*split, words) << line;
}

TEST(ParseCommandLineToArgvTest, SplitsAtBlanksTabsAndLineEnds) {
    ExpectWords("one", {"one"});
    ExpectWords("one two\tthree\rfour\nfive", {"one", "two", "three", "four", "five"});
    ExpectWords(" \t\r\n one \t\r\n two \t\r\n ", {"one", "two"});
    ExpectWords("a\vb\fc", {"a\vb\fc"}); // no other character splits
}

TEST(ParseCommandLineToArgvTest, GivesNoWordsForAnEmptyLine) {
    ExpectWords("", {});
    ExpectWords(" ", {});
    ExpectWords(" \t\r\n", {});
}

TEST(ParseCommandLineToArgvTest, KeepsWhatStandsInQuotes) {
    ExpectWords("\"one two\"", {"one two"});
    ExpectWords("\" a\tb\r\nc \" d", {" a\tb\r\nc ", "d"});
    ExpectWords("x \"one\"", {"x", "one"});
}

TEST(ParseCommandLineToArgvTest, TakesQuotesInsideAWordForAPartOfIt) {
    ExpectWords("ab\"c d\"e", {"abc de"});
    ExpectWords("ab\"\"cd", {"abcd"});
    ExpectWords("\"a\"\"b\"", {"ab"});
    ExpectWords("\"a\" \"b\"", {"a", "b"});
    ExpectWords("\"a\"b\"c\"", {"abc"});
}

TEST(ParseCommandLineToArgvTest, MakesEmptyWordsOfEmptyQuotes) {
    ExpectWords("\"\"", {""});
    ExpectWords("\"\"\"\"", {""});
    ExpectWords("\"\" \"\"", {"", ""});
    ExpectWords("a \"\" b", {"a", "", "b"});
    ExpectWords("a \"\"", {"a", ""});
}

TEST(ParseCommandLineToArgvTest, HasNoEscapeCharacter) {
    ExpectWords("a\\ b", {"a\\", "b"});
    ExpectWords("\"a\\\" b", {"a\\", "b"});
    ExpectWords("'a b'", {"'a", "b'"});
}

TEST(ParseCommandLineToArgvTest, RefusesOpenQuotes) {
    EXPECT_FALSE(Split("\"").has_value());
    EXPECT_FALSE(Split("a \"").has_value());
    EXPECT_FALSE(Split("a\"b c").has_value());
    EXPECT_FALSE(Split("\"a\" \"b").has_value());
    EXPECT_FALSE(Split("\"\"\"").has_value());
    EXPECT_FALSE(Split("\"a\\\"\"").has_value()); // the backslash is a character, and the third quote opens
}

TEST(ParseCommandLineToArgvTest, TakesBytesAbove127ForCharacters) {
    std::string word;
    for (int byte = 128; byte < 256; ++byte) {
        word += static_cast<char>(byte);
    }
    ExpectWords(word + " " + word, {word, word});
    ExpectWords("\"" + word + "\"", {word});
}

TEST(ParseCommandLineToArgvTest, TakesThousandsOfWords) {
    // The maximum number of words for the length of a line: single characters separated by blanks.
    std::string line;
    Words words;
    for (int number = 0; number < 50'000; ++number) {
        words.emplace_back(1, static_cast<char>('a' + number % 26));
        line += (number == 0 ? "" : " ") + words.back();
    }
    ExpectWords(line, words);
    ExpectWords(line + " ", words);
}

TEST(ParseCommandLineToArgvTest, TakesThousandsOfEmptyWords) {
    std::string line;
    for (int number = 0; number < 5'000; ++number) {
        line += "\"\" ";
    }
    ExpectWords(line, Words(5'000));
}

TEST(ParseCommandLineToArgvTest, TakesLongWords) {
    const std::string word(100'000, 'x');
    ExpectWords(word, {word});
    ExpectWords("a " + word + " b", {"a", word, "b"});
    ExpectWords("\"" + word + " " + word + "\"", {word + " " + word});
}

} // namespace
