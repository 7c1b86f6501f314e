#include "FileOps.h"

#include "Limits.h"
#include "TraceLog.h"
#include "families/FamilyTest.h"

#include <cerrno>
#include <unistd.h>

using family_test::ReadFile;
using family_test::TemporaryFolder;

namespace {

bool s_renameFails = false;

} // namespace

// Replacement of a C library function that no file system makes fail for a privileged user.
extern "C" int rename(const char* from, const char* to) noexcept {
    if (s_renameFails) {
        errno = EPERM;
        return -1;
    }
    return renameat(AT_FDCWD, from, AT_FDCWD, to);
}

namespace {

/// Result of a reader, and the value: "<none>" if nothing was written.
struct Reading {
    int result;
    std::string value;
    bool operator==(const Reading&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Reading& reading) {
    return out << reading.result << " \"" << reading.value << '"';
}
const Reading NOT_FOUND = {FileOps::KEY_NOT_FOUND, "<none>"};
Reading Found(const std::string& value) {
    return {FileOps::KEY_FOUND, value};
}

class FileOpsTest : public ::testing::Test {
protected:
    ~FileOpsTest() override { s_renameFails = false; }

    Reading Read(const std::string& content, const char* key, char delimiter = '=') const {
        char value[2048] = "<none>";
        const std::string path = folder.Write("read", content);
        const int result = FileOps::read_key_value(path.c_str(), key, value, sizeof value, delimiter);
        return {result, value};
    }
    /// Content of the file after an update.
    std::string Update(const std::string& content, const char* key, const char* value) const {
        const std::string path = folder.Write("update", content);
        EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, key, value), RC_SUCCESS);
        EXPECT_EQ(ReadFile(path + "_tmp"), std::nullopt);
        return ReadFile(path).value_or("no file");
    }

    TemporaryFolder folder;
};

TEST_F(FileOpsTest, ReaderTakesTheForms) {
    struct Case {
        const char* content;
        const char* key;
        Reading expected;
    };
    const Case cases[] = {
        {"Speed=8\n", "Speed", Found("8")},
        {"Speed=8", "Speed", Found("8")}, // no last newline
        {"Speed=8\r\n", "Speed", Found("8")},
        // Letter case
        {"speed=8\n", "Speed", Found("8")},
        {"SPEED=8\n", "speed", Found("8")},
        {"Speed=Eight\n", "Speed", Found("Eight")},
        // The whole key, and no other
        {"MaxSpeed=8\n", "Speed", NOT_FOUND},
        {"Speed2=8\n", "Speed", NOT_FOUND},
        {"Spee=8\n", "Speed", NOT_FOUND},
        {"Speed", "Speed", NOT_FOUND},
        {"", "Speed", NOT_FOUND},
        // White space before the key, around the delimiter and after the value
        {" \t\v\f\rSpeed \t = \t 8 \t\n", "Speed", Found("8")},
        {"Speed of light=8\n", "Speed", Found("8")},
        {"Speed=8 9\n", "Speed", Found("8")},
        {"Speed=8\t9\n", "Speed", Found("8")},
        // Comments
        {"#Speed=8\n", "Speed", NOT_FOUND},
        {"  \t# Speed=8\n", "Speed", NOT_FOUND},
        {"#Speed=8\nSpeed=9\n", "Speed", Found("9")},
        {"Speed=8#9\n", "Speed", Found("8")},
        {"Speed = 8 # the fast one\n", "Speed", Found("8")},
        {"Speed=#9\n", "Speed", Found("")},
        {"Speed#=8\n", "Speed", NOT_FOUND},
        {"Speed #=8\n", "Speed", Found("8")},
        // Nothing after the delimiter
        {"Speed=\n", "Speed", Found("")},
        {"Speed=", "Speed", Found("")},
        {"Speed=   \n", "Speed", Found("")},
        // Lines without a delimiter or without anything are skipped
        {"\n  \n\t\nSpeed\nSpeed 7\nSpeed=8\n", "Speed", Found("8")},
        // The first delimiter, and the first line
        {"Speed=8=9\n", "Speed", Found("8=9")},
        {"Speed=8\nSpeed=9\n", "Speed", Found("8")},
        {"speed=8\nSpeed=9\n", "Speed", Found("8")},
        {"=8\n", "", Found("8")},
        {"=8\n", "Speed", NOT_FOUND},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(Read(row.content, row.key), row.expected) << row.content;
    }
}

TEST_F(FileOpsTest, ReaderTakesAnyDelimiter) {
    EXPECT_EQ(Read("Speed:8=9\n", "Speed", ':'), Found("8=9"));
    EXPECT_EQ(Read("Speed:8\n", "Speed", '='), NOT_FOUND);
    EXPECT_EQ(Read("Speed=8\n", "Speed", ':'), NOT_FOUND);
}

TEST_F(FileOpsTest, ReaderRefusesNullAndMissing) {
    const std::string path = folder.Write("read", "Speed=8\n");
    char value[8] = "before";
    EXPECT_EQ(FileOps::read_key_value(nullptr, "Speed", value, sizeof value, '='), FileOps::READ_INVALID);
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), nullptr, value, sizeof value, '='), FileOps::READ_INVALID);
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", nullptr, 8, '='), FileOps::READ_INVALID);
    EXPECT_EQ(FileOps::read_key_value(folder.Path("other").c_str(), "Speed", value, sizeof value, '='),
              FileOps::READ_NO_FILE);
    EXPECT_EQ(FileOps::read_key_value(nullptr, nullptr, nullptr, 0, '='), FileOps::READ_INVALID);
    EXPECT_STREQ(value, "before");
}

TEST_F(FileOpsTest, ReaderLeavesAFullValueUnterminated) {
    const std::string path = folder.Write("read", "Speed=abcdefgh\n");
    char value[8] = {'1', '2', '3', '4', '5', '6', '7', '8'};
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, 4, '='), FileOps::KEY_FOUND);
    EXPECT_EQ(std::string(value, sizeof value), "abcd5678");
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, 8, '='), FileOps::KEY_FOUND);
    EXPECT_EQ(std::string(value, sizeof value), "abcdefgh");
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, 0, '='), FileOps::KEY_FOUND);
    EXPECT_EQ(std::string(value, sizeof value), "abcdefgh");
}

/// A buffer of 1024 bytes holds 1023 of a line: 1022 characters and their newline in one piece.
TEST_F(FileOpsTest, ReaderTakesLongLinesInPieces) {
    const auto line = [](std::size_t length) { return "Key=" + std::string(length - 4, 'v') + "\n"; };
    EXPECT_EQ(Read(line(1022), "Key"), Found(std::string(1018, 'v')));
    EXPECT_EQ(Read(line(1023), "Key"), Found(std::string(1019, 'v')));
    EXPECT_EQ(Read(line(1024), "Key"), Found(std::string(1019, 'v')));
    EXPECT_EQ(Read(line(5000), "Key"), Found(std::string(1019, 'v')));

    // What follows the 1023rd character is a line of its own, even of a comment.
    const auto behind = [](std::size_t length) { return "#" + std::string(length - 1, ' ') + "Key=1\n"; };
    EXPECT_EQ(Read(behind(1021), "Key"), NOT_FOUND); // "#...Ke", "y=1"
    EXPECT_EQ(Read(behind(1021), "y"), Found("1"));
    EXPECT_EQ(Read(behind(1022), "Key"), NOT_FOUND); // "#...K", "ey=1"
    EXPECT_EQ(Read(behind(1022), "ey"), Found("1"));
    EXPECT_EQ(Read(behind(1023), "Key"), Found("1"));
    EXPECT_EQ(Read(behind(1024), "Key"), Found("1")); // "#...", " Key=1"

    // A line that fits leaves the next one whole.
    for (const std::size_t length : {1022u, 1023u, 1024u}) {
        EXPECT_EQ(Read(std::string(length, 'x') + "\nKey=1\n", "Key"), Found("1")) << length;
    }
}

TEST_F(FileOpsTest, UpdaterReplacesOrAppends) {
    struct Case {
        const char* content;
        const char* expected; ///< after "Speed" was set to "9"
    };
    const Case cases[] = {
        {"Speed=8\n", "Speed=9\n"},
        {"A=1\nSpeed=8\nB=2\n", "A=1\nSpeed=9\nB=2\n"},
        {"A=1\n", "A=1\nSpeed=9\n"},
        {"", "Speed=9\n"},
        // Every line that contains the key, at any position
        {"Speed=8\nA=1\nSpeed=7\n", "Speed=9\nA=1\nSpeed=9\n"},
        {"MaxSpeed=8\n", "Speed=9\n"},
        {"Speed=8\nMaxSpeed=8\nSpeedy=8\n", "Speed=9\nSpeed=9\nSpeed=9\n"},
        {"A=Speed\n", "Speed=9\n"},
        {"# Speed was 7\n", "Speed=9\n"},
        {"  Speed = 8 # fast\n", "Speed=9\n"},
        // Case-sensitively
        {"speed=8\n", "speed=8\nSpeed=9\n"},
        {"SPEED=8\nMAXspeed=1\n", "SPEED=8\nMAXspeed=1\nSpeed=9\n"},
        // All other lines unchanged
        {"# note\n\n  A = 1 # one\n\tB=2\r\n", "# note\n\n  A = 1 # one\n\tB=2\r\nSpeed=9\n"},
        // A last line without a newline
        {"A=1", "A=1\nSpeed=9\n"},
        {"Speed=8", "Speed=9\n"},
        {"Speed=8\nA=1", "Speed=9\nA=1"},
        {"\n", "\nSpeed=9\n"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(Update(row.content, "Speed", "9"), row.expected) << row.content;
    }
}

/// Some keys of a cache file differ only in the case of two letters.
TEST_F(FileOpsTest, UpdaterKeepsKeysApartByCase) {
    constexpr char FILE[] = "Enable_Hard_Loop_Id=0\nHard_Loop_ID=5\n";
    EXPECT_EQ(Update(FILE, "Hard_Loop_ID", "7"), "Enable_Hard_Loop_Id=0\nHard_Loop_ID=7\n");
    EXPECT_EQ(Update(FILE, "Enable_Hard_Loop_Id", "1"), "Enable_Hard_Loop_Id=1\nHard_Loop_ID=5\n");
    EXPECT_EQ(Update(FILE, "Hard_Loop_Id", "9"), "Hard_Loop_Id=9\nHard_Loop_ID=5\n");
}

/// A buffer of 512 bytes holds 511 of a line: 510 characters and their newline in one piece.
TEST_F(FileOpsTest, UpdaterTakesLongLinesInPieces) {
    const auto line = [](std::size_t length) { return "Key=" + std::string(length - 5, 'v') + "z\n"; };
    EXPECT_EQ(Update(line(510), "Key", "1"), "Key=1\n");
    EXPECT_EQ(Update(line(511), "Key", "1"), "Key=1\n\n");
    EXPECT_EQ(Update(line(512), "Key", "1"), "Key=1\nz\n");

    // A key that spans two pieces isn't found; if it follows the border, only its piece is replaced.
    const auto behind = [](std::size_t length) { return std::string(length, 'x') + "Key=2\n"; };
    EXPECT_EQ(Update(behind(508), "Key", "1"), "Key=1\n=2\n");
    EXPECT_EQ(Update(behind(509), "Key", "1"), behind(509) + "Key=1\n");
    EXPECT_EQ(Update(behind(510), "Key", "1"), behind(510) + "Key=1\n");
    EXPECT_EQ(Update(behind(511), "Key", "1"), std::string(511, 'x') + "Key=1\n");

    // Copied byte by byte, with a line end added if it was missing.
    for (const std::size_t length : {509u, 510u, 511u, 512u, 1021u, 1022u, 1023u, 5000u}) {
        const std::string text(length, 'x');
        EXPECT_EQ(Update(text + "\nA=1\n", "Key", "1"), text + "\nA=1\nKey=1\n") << length;
        EXPECT_EQ(Update(text, "Key", "1"), text + "\nKey=1\n") << length;
    }
}

TEST_F(FileOpsTest, UpdaterCreatesTheFile) {
    const std::string path = folder.Path("new");
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "8"), RC_SUCCESS);
    EXPECT_EQ(ReadFile(path), "Speed=8\n");
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Data_Rate", ""), RC_SUCCESS);
    EXPECT_EQ(ReadFile(path), "Speed=8\nData_Rate=\n");
    EXPECT_EQ(ReadFile(path + "_tmp"), std::nullopt);
}

TEST_F(FileOpsTest, UpdaterOverwritesALeftTemporaryFile) {
    folder.Write("update_tmp", "rubbish that is longer than all of the new file\n");
    EXPECT_EQ(Update("A=1\n", "Speed", "8"), "A=1\nSpeed=8\n");
}

TEST_F(FileOpsTest, UpdaterFailsToCreate) {
    const TraceLog log("4");
    const std::string path = folder.Path("no folder/new");
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "8"), RC_FILE_ERROR);
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{
                                     "DEBUG: FileOps::UpdateKeyValueInFile: File open failed in read mode, creating it",
                                     "DEBUG: FileOps::UpdateKeyValueInFile: File open failed in write mode",
                                 }));
}

TEST_F(FileOpsTest, AFullDiskLosesNothing) {
    const std::string content = "A=1\nSpeed=8\n"; // 12 bytes; the new file has 13
    const std::string path = folder.Write("update", content);
    for (const rlim_t size : {0u, 1u, 12u}) {
        const FullDisk disk(size);
        EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "16"), RC_FILE_ERROR);
        EXPECT_EQ(ReadFile(path), content);
        EXPECT_EQ(ReadFile(path + "_tmp"), std::nullopt);
        EXPECT_EQ(FileOps::UpdateKeyValueInFile(folder.Path("new"), "Speed_of_light", "1"), RC_FILE_ERROR);
        EXPECT_EQ(ReadFile(folder.Path("new")), std::nullopt);
    }
    const FullDisk disk(13);
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "16"), RC_SUCCESS);
    EXPECT_EQ(ReadFile(path), "A=1\nSpeed=16\n");
}

TEST_F(FileOpsTest, UpdaterReplacesALinkAtTheTemporaryName) {
    const std::string path = folder.Write("update", "Speed=8\n");
    const std::string target = folder.Write("target", "Speed=7\n");
    ASSERT_EQ(symlink(target.c_str(), (path + "_tmp").c_str()), 0);
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_SUCCESS);
    EXPECT_EQ(ReadFile(path), "Speed=9\n");
    EXPECT_EQ(ReadFile(target), "Speed=7\n");
}

/// A NUL ends a line, for the updater as for the reader; two settings are never joined.
TEST_F(FileOpsTest, UpdaterKeepsSettingsApartAtANul) {
    const auto content = [](std::initializer_list<std::string> pieces) {
        std::string text;
        for (const std::string& piece : pieces) {
            text += piece + '\0';
        }
        return text.substr(0, text.size() - 1);
    };
    EXPECT_EQ(Update(content({"A=1", "\n", "x"}), "Speed", "9"), "A=1\nSpeed=9\n");
    EXPECT_EQ(Update(content({"A=1", "\nB=2\n"}), "Speed", "9"), "A=1\nB=2\nSpeed=9\n");
    EXPECT_EQ(Update(content({"A=1\n", "Speed=8\n"}), "Speed", "9"), "A=1\nSpeed=9\n");
    EXPECT_EQ(Update(content({"A=1\n", ""}), "Speed", "9"), "A=1\nSpeed=9\n");
    EXPECT_EQ(Update(content({"", "x"}), "Speed", "9"), "Speed=9\n");
    EXPECT_EQ(Read(content({"A=1", "\n", "x\nB=2\n"}), "B"), Found("2"));
}

/// Anything but a file of our own can't be read, edited or created anew.
TEST_F(FileOpsTest, TakesNoFileThatIsNotOurOwn) {
    const std::string target = folder.Write("target", "Speed=8\n");
    const std::string link = folder.Path("link");
    ASSERT_EQ(symlink(target.c_str(), link.c_str()), 0);
    const std::string dangling = folder.Path("dangling");
    ASSERT_EQ(symlink(folder.Path("missing").c_str(), dangling.c_str()), 0);
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string hardLinked = folder.Write("one", "Speed=8\n");
    ASSERT_EQ(::link(hardLinked.c_str(), folder.Path("two").c_str()), 0);
    for (const std::string& path : {link, dangling, pipe, hardLinked}) {
        char value[8] = "before";
        EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, sizeof value, '='), FileOps::READ_NO_FILE)
            << path;
        EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_FILE_ERROR) << path;
    }
    EXPECT_EQ(ReadFile(target), "Speed=8\n");
    EXPECT_EQ(ReadFile(hardLinked), "Speed=8\n");
    EXPECT_EQ(ReadFile(folder.Path("missing")), std::nullopt);
    EXPECT_EQ(FileOps::IsFilePresent(link), 0);
    EXPECT_EQ(FileOps::IsFilePresent(hardLinked), 1);
}

TEST_F(FileOpsTest, TakesNoFileWithoutABound) {
    const std::string path = folder.Write("large", "Speed=8\n");
    std::filesystem::resize_file(path, 1 << 20);
    char value[8] = "before";
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, sizeof value, '='), FileOps::KEY_FOUND);
    std::filesystem::resize_file(path, (1 << 20) + 1);
    EXPECT_EQ(FileOps::read_key_value(path.c_str(), "Speed", value, sizeof value, '='), FileOps::READ_NO_FILE);
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_FILE_ERROR);
    EXPECT_EQ(std::filesystem::file_size(path), (1U << 20) + 1);
}

TEST_F(FileOpsTest, LetsNobodyElseWriteANewFile) {
    const std::string path = folder.Path("new");
    const mode_t before = umask(0);
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "8"), RC_SUCCESS);
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0644));
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_SUCCESS);
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0644));
    umask(before);
}

TEST_F(FileOpsTest, UpdaterKeepsTheOldFileWithoutATemporaryOne) {
    const TraceLog log("4");
    const std::string path = folder.Write("update", "Speed=8\n");
    std::filesystem::create_directory(path + "_tmp");
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_FILE_ERROR);
    EXPECT_EQ(ReadFile(path), "Speed=8\n");
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{"DEBUG: FileOps::UpdateKeyValueInFile: temp file open failed"}));
}

TEST_F(FileOpsTest, UpdaterLeavesBothFilesWhenTheNewOneIsNotRenamed) {
    const TraceLog log("4");
    const std::string path = folder.Write("update", "Speed=8\nA=1\n");
    s_renameFails = true;
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_FILE_ERROR);
    EXPECT_EQ(ReadFile(path), "Speed=8\nA=1\n");
    EXPECT_EQ(ReadFile(path + "_tmp"), "Speed=9\nA=1\n");
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{"DEBUG: FileOps::UpdateKeyValueInFile: rename file failed"}));
}

TEST_F(FileOpsTest, UpdaterRefusesAFolder) {
    const std::string path = folder.Path("folder");
    std::filesystem::create_directory(path);
    EXPECT_EQ(FileOps::UpdateKeyValueInFile(path, "Speed", "9"), RC_FILE_ERROR);
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST_F(FileOpsTest, PresentIsARegularFile) {
    const TraceLog log("5");
    const std::string path = folder.Write("present", "");
    const std::string folderPath = folder.Path("folder");
    const std::string missing = folder.Path("missing");
    std::filesystem::create_directory(folderPath);
    EXPECT_EQ(FileOps::IsFilePresent(path), 1);
    EXPECT_EQ(FileOps::IsFilePresent(folderPath), 0);
    EXPECT_EQ(FileOps::IsFilePresent(missing), 0);
    // The success is traced at the level of failures.
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{
                                     "INFORMATION: FileOps::IsFilePresent: Entered for file=" + path,
                                     "DEBUG: FileOps::IsFilePresent: " + path + " file present",
                                     "INFORMATION: FileOps::IsFilePresent: Entered for file=" + folderPath,
                                     "DEBUG: FileOps::IsFilePresent: File not present",
                                     "INFORMATION: FileOps::IsFilePresent: Entered for file=" + missing,
                                     "DEBUG: FileOps::IsFilePresent: File not present",
                                 }));
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(FileOps::IsFilePresent(folder.Path("pipe")), 0);
}

TEST_F(FileOpsTest, ANameThatCantBeExaminedIsNotMissing) {
    const TraceLog log("4");
    const std::string path = folder.Write("file", "") + "/below"; // ENOTDIR
    EXPECT_EQ(FileOps::IsFilePresent(path), -1);
    EXPECT_EQ(TraceLog::Lines(),
              std::vector<std::string>{"DEBUG: FileOps::IsFilePresent: " + path + " can't be examined"});
}

TEST_F(FileOpsTest, DeletesAFileAndTracesAMissingOneAsTheUpdater) {
    const TraceLog log("4");
    const std::string path = folder.Write("present", "Speed=8\n");
    EXPECT_EQ(FileOps::DeleteFile(path), RC_SUCCESS);
    EXPECT_EQ(ReadFile(path), std::nullopt);
    EXPECT_TRUE(TraceLog::Lines().empty());
    EXPECT_EQ(FileOps::DeleteFile(path), RC_FILE_ERROR);
    // It traces as if it were the updater.
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{"DEBUG: FileOps::UpdateKeyValueInFile: remove file failed"}));
}

} // namespace
