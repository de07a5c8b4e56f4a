// The trace service passes records up to its threshold to the sink in force, one line each, and loses none.
#include "Fendrel/Trace.h"

#include "support/ScratchFolder.h"
#include "support/TraceCapture.h"

#include <atomic>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
CSTrace& Service()
{
    return *CSTrace::instance();
}

void Trace(CSTrace::eTraceSeverity eSeverity, const char* pszText)
{
    Service().Trace(eSeverity, pszText, "Class", "Class::Method", ".\\File", 7);
}
}

TEST(Trace, PassesRecordsUpToTheThresholdToACallback)
{
    EXPECT_EQ(Service().GetThreshold(), CSTrace::eWarning);
    const TraceCapture oCapture(CSTrace::eInformation);
    Trace(CSTrace::eInformation, "information");
    Trace(CSTrace::eDebug, "debug");
    Service().Trace(CSTrace::eError, nullptr, nullptr, nullptr, nullptr, 1);
    // A sink that cannot be made leaves the one in force.
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "no folder");
    EXPECT_FALSE(Service().TraceToFile(ScratchFolder::Native(oFolder / "file\\log").string().c_str()) ||
                 Service().TraceToFile(nullptr) || Service().TraceToCallback(nullptr, nullptr));
    Trace(CSTrace::eError, "still captured");
    Service().SetThreshold(CSTrace::eNothing);
    Trace(CSTrace::eError, "error");
    EXPECT_THAT(oCapture.Records(),
                ElementsAre(TraceRecord{3, "information", "Class", "Class::Method", ".\\File", 7},
                            TraceRecord{1, "", "", "", "", 1},
                            TraceRecord{1, "still captured", "Class", "Class::Method", ".\\File", 7}));
}

TEST(Trace, ACallbackMayTraceAndThrow)
{
    static int s_nCalls = 0;
    Service().TraceToCallback(
        [](const CSTrace::Record& oRecord, void*) {
            if (++s_nCalls == 1)
                Trace(CSTrace::eError, oRecord.pszText);
            throw s_nCalls;
        },
        nullptr);
    Trace(CSTrace::eError, "outer");
    EXPECT_EQ(s_nCalls, 2);
}

// The texts of records come from callers, so a line feed in them must not forge a line.
TEST(Trace, WritesOneLineForEachRecord)
{
    const ScratchFolder oFolder;
    const std::string strLog = ScratchFolder::Native(oFolder / "log").string();
    ASSERT_TRUE(Service().TraceToFile(strLog.c_str()));
    Trace(CSTrace::eError, "first\nline");
    Trace(CSTrace::eWarning, "second");
    testing::internal::CaptureStderr();
    ASSERT_TRUE(Service().TraceToStandardError());
    Trace(CSTrace::eError, "third");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(" error   [Class] Class::Method (.\\File:7) third"));
    Service().TraceToNothing();

    const std::string strLines = ScratchFolder::Read(strLog);
    EXPECT_THAT(strLines, HasSubstr(" error   [Class] Class::Method (.\\File:7) first\\x0aline"));
    EXPECT_THAT(strLines, HasSubstr(" warning [Class] Class::Method (.\\File:7) second"));
    EXPECT_EQ(std::ranges::count(strLines, '\n'), 2);
}

TEST(Trace, LosesNothingWhileItsSinkChanges)
{
    static std::atomic<int> s_nRecords = 0;
    const auto count = [](const CSTrace::Record&, void*) { ++s_nRecords; };
    Service().TraceToCallback(count, nullptr);
    std::vector<std::jthread> oThreads;
    for (int nThread = 0; nThread < 4; ++nThread)
        oThreads.emplace_back([] {
            for (int n = 0; n < 2000; ++n)
                Trace(CSTrace::eError, "text");
        });
    for (int n = 0; n < 200; ++n)
        Service().TraceToCallback(count, nullptr);
    oThreads.clear();   // waits
    EXPECT_EQ(s_nRecords, 8000);
}
