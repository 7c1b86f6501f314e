#include "FamilyTest.h"

using namespace family_test;

namespace {

class NvramUpdateTest : public FamilyTest {
protected:
    NvramUpdateTest() : file(folder.Write("nvram.bin", "data")) {
        Fake().onUpdateAdapterNVRAMFromFile = [](VX_PORT_HANDLE*, const char*) {
            Chatter();
            return 0u;
        };
        Fake().onIsRebootRequired = [this](VX_UINT32* required) {
            given = *required;
            *required = rebootWord;
            return 0u;
        };
    }
    static std::string Document(const Format& format, bool reboot, const std::string& message) {
        return format.Flat("UpdateNVRAM", {Flag("Reboot Required", reboot), {"Message", message}});
    }
    void Expect(const std::string& rest, ResultCode code, bool reboot, const std::string& message,
                const Calls& calls) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t port " + format.Leaf("updatenvram") + rest);
            EXPECT_EQ(run.code, code) << rest;
            EXPECT_EQ(run.output, Document(format, reboot, message)) << rest;
            EXPECT_EQ(PortCalls(), calls) << rest;
        }
    }

    TemporaryFolder folder;
    std::string file;
    VX_UINT32 rebootWord = 0;
    VX_UINT32 given = 0;
    const std::string id = " FC_21:00:0a:0b:0c:0d:00:01";
    const Calls both = {"VEXAPI_UpdateAdapterNVRAMFromFile(21:00:0a:0b:0c:0d:00:01, \"" + file + "\")",
                        "VEXAPI_IsRebootRequired()"};
};

TEST_F(NvramUpdateTest, IsByteExact) {
    rebootWord = 1;
    EXPECT_EQ(Run("-t port updatenvram" + id + " " + file).output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"UpdateNVRAM\">\n"
              "<field name=\"Reboot Required\">\n<bool>true</bool></field>\n"
              "<field name=\"Message\">\n<string>Success</string></field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(Run("-t port updatenvramcli" + id + " " + folder.Path("none")).output,
              "****************************************************\n"
              "UpdateNVRAM:\n"
              "Reboot Required: false\n"
              "Message: Failed, File not found\n"
              "****************************************************\n");
}

TEST_F(NvramUpdateTest, OnlyOneNeedsAReboot) {
    for (const VX_UINT32 word : {0u, 1u, 2u, 0x101u, 0xFFFFFFFFu}) {
        rebootWord = word;
        given = 77;
        Expect(id + " " + file, RC_SUCCESS, word == 1, "Success", both);
        EXPECT_EQ(given, 1u); // the word starts as 1
    }
    // If the library can't tell, a reboot is required, whatever it wrote.
    rebootWord = 0;
    Fake().onIsRebootRequired = [](VX_UINT32* required) {
        *required = 0;
        return 5u;
    };
    Expect(id + " " + file, RC_SUCCESS, true, "Success", both);
}

/// The query is made outside the redirection: output of the library reaches the client.
TEST_F(NvramUpdateTest, AsksForTheRebootOutsideTheRedirection) {
    Fake().onIsRebootRequired = [](VX_UINT32* required) {
        Chatter();
        *required = 0;
        return 0u;
    };
    EXPECT_EQ(Run("-t port updatenvram" + id + " " + file).output,
              "library: working\n" + Document(XML, false, "Success"));
}

TEST_F(NvramUpdateTest, RefusesInOrder) {
    Expect(id, RC_FILE_ERROR, false, "Failed, File not found", {}); // no path
    Expect(id + " " + folder.Path("none"), RC_FILE_ERROR, false, "Failed, File not found", {});
    port->PortInterfaceType = 3; // before the file
    Expect(id + " " + folder.Path("none"), RC_NOT_SUPPORTED_FOR_VPORT, false,
           "Failed, feature not supported for virtual port", {});
    LoseHost();
    Expect(id + " " + file, RC_HOST_NOT_FOUND, false, "Failed, Host not found", {});
    // These two would print a usage, but the usage function doesn't know this leaf.
    Expect(" FD_x " + file, RC_INVALID_PARAMETER, false, "Failed, Invalid parameter", {});
    Expect(" help", RC_HELP_REQUESTED, false, "Failed, Unknown", {});
    Expect("", RC_INVALID_PARAMETER, false, "Failed, Invalid parameter", {});
}

TEST_F(NvramUpdateTest, EveryChipTakesAnUpdate) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        Expect(id + " " + file, RC_SUCCESS, false, "Success", both);
    }
}

TEST_F(NvramUpdateTest, LibraryFailureIsAFailedUpdate) {
    for (const VX_UINT32 status : {1u, 19u, 201u, 0x80000000u}) {
        Fake().Return("VEXAPI_UpdateAdapterNVRAMFromFile", status);
        Expect(id + " " + file, RC_CFG_UPDATE_FAILED, false, "Failed, NVRAM update failed", {both[0]});
    }
}

TEST_F(NvramUpdateTest, WithoutTheRedirection) {
    // The file is checked with `stat`, which opens nothing.
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = Run("-t port updatenvram" + id + " " + file);
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Document(XML, false, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
