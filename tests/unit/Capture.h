/// @file
/// Capture of standard output, and commands run as from the command line.
#pragma once

#include "MainCmdsProcessor.h"
#include "Output.h"
#include "ProgramMode.h"
#include "ResultCodes.h"
#include "Words.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

/// Captures standard output from construction until `Stop`, by replacing the `stdout` stream itself: output taken
/// by a library redirection is not captured.
class Capture {
public:
    Capture() : mSaved(stdout), mStream(open_memstream(&mText, &mSize)) { stdout = mStream; }
    ~Capture() { Stop(); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    /// Ends the capture and returns its text.
    std::string Stop() {
        if (mStream == nullptr) {
            return mCaptured;
        }
        if (stdout != mStream) {
            std::fclose(stdout);
            mWasLeftRedirected = true;
        }
        stdout = mSaved;
        std::fclose(mStream);
        mStream = nullptr;
        mCaptured.assign(mText, mSize);
        std::free(mText);
        return mCaptured;
    }
    /// After `Stop`: standard output was another stream, as after a redirection that stayed open.
    bool WasLeftRedirected() const { return mWasLeftRedirected; }

private:
    char* mText = nullptr;
    std::size_t mSize = 0;
    FILE* mSaved;
    FILE* mStream;
    std::string mCaptured;
    bool mWasLeftRedirected = false;
};

struct CommandRun {
    ResultCode code = RC_SUCCESS;   ///< what the command gave
    std::string output;             ///< what went to standard output
    bool wasLeftRedirected = false; ///< the command ended inside its redirection
};

/// Runs one command in its own session, as the command line does. `flags` are added to those of the run.
inline CommandRun RunCommand(const TavuStringArray& words, VX_UINT32 flags = 0) {
    CommandRun run;
    const VX_UINT32 flagsBefore = g_uFlags;
    g_uFlags = FLAG_COMMAND_LINE | flags;
    {
        Capture capture;
        MainCmdsProcessor* const root = MainCmdsProcessor::getMainCmdsProcessor();
        TavuStringArray args = words;
        run.code = static_cast<ResultCode>(root->Initialize(args));
        if (run.code == RC_SUCCESS) {
            run.code = static_cast<ResultCode>(root->DoCmd(args));
        }
        root->Uninitialize(args);
        MainCmdsProcessor::destroyMainCmdsProcessor();
        run.output = capture.Stop();
        run.wasLeftRedirected = capture.WasLeftRedirected();
    }
    g_uFlags = flagsBefore;
    return run;
}

/// Same for words separated by single blanks.
inline CommandRun RunCommand(const std::string& line, VX_UINT32 flags = 0) {
    TavuStringArray words;
    std::istringstream stream(line);
    for (std::string word; std::getline(stream, word, ' ');) {
        words.emplace_back(word);
    }
    return RunCommand(words, flags);
}
