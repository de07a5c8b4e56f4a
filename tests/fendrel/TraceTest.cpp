#include "Fendrel/Trace.h"

#include "support/TraceCapture.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
void Trace(CSTrace::eTraceSeverity eSeverity, const char* pszText)
{
    CSTrace::instance()->Trace(eSeverity, pszText, "Class", "Class::Method", ".\\File", 7);
}

void TraceOneOfEach()
{
    Trace(CSTrace::eError, "error");
    Trace(CSTrace::eWarning, "warning");
    Trace(CSTrace::eInformation, "information");
    Trace(CSTrace::eDebug, "debug");
}
}

TEST(Trace, PassesRecordsUpToTheThreshold)
{
    EXPECT_EQ(CSTrace::instance()->GetThreshold(), CSTrace::eWarning);
    const TraceCapture oCapture(CSTrace::eInformation);
    TraceOneOfEach();
    CSTrace::instance()->SetThreshold(CSTrace::eNothing);
    TraceOneOfEach();
    EXPECT_THAT(oCapture.Messages(), ElementsAre("1 error", "2 warning", "3 information"));
}

TEST(Trace, TakesNullTextsAsEmpty)
{
    const TraceCapture oCapture;
    CSTrace::instance()->Trace(CSTrace::eError, nullptr, nullptr, nullptr, nullptr, 1);
    EXPECT_THAT(oCapture.Records(), ElementsAre(TraceRecord{1, "", "", "", "", 1}));
}

TEST(Trace, ACallbackMayTraceAndThrow)
{
    static int s_nCalls = 0;
    CSTrace::instance()->TraceToCallback(
        [](const CSTrace::Record& oRecord, void*) {
            ++s_nCalls;
            if (oRecord.nLine == 7)
                CSTrace::instance()->Trace(CSTrace::eError, "from the callback", "", "", "", 8);
            throw s_nCalls;
        },
        nullptr);
    Trace(CSTrace::eError, "outer");
    EXPECT_EQ(s_nCalls, 2);
    CSTrace::instance()->TraceToNothing();
    Trace(CSTrace::eError, "to nobody");
    EXPECT_EQ(s_nCalls, 2);
}

TEST(Trace, WritesALineForEachRecordToAFile)
{
    const std::string strPath = testing::TempDir() + "zevrin-trace-test.log";
    std::remove(strPath.c_str());
    ASSERT_TRUE(CSTrace::instance()->TraceToFile(strPath.c_str()));
    TraceOneOfEach();   // two pass the threshold
    CSTrace::instance()->TraceToNothing();

    std::ifstream oFile(strPath);
    std::vector<std::string> oLines;
    for (std::string strLine; std::getline(oFile, strLine);)
        oLines.push_back(strLine);
    EXPECT_THAT(oLines, ElementsAre(HasSubstr(" error   [Class] Class::Method (.\\File:7) error"),
                                    HasSubstr(" warning [Class] Class::Method (.\\File:7) warning")));
    std::remove(strPath.c_str());
}

TEST(Trace, ASinkThatCannotBeMadeLeavesTheOneInForce)
{
    const TraceCapture oCapture;
    EXPECT_FALSE(CSTrace::instance()->TraceToFile("/dev/null/no/such/place.log"));
    EXPECT_FALSE(CSTrace::instance()->TraceToFile(nullptr));
    EXPECT_FALSE(CSTrace::instance()->TraceToCallback(nullptr, nullptr));
    Trace(CSTrace::eError, "still captured");
    EXPECT_THAT(oCapture.Messages(), ElementsAre("1 still captured"));
}

TEST(Trace, WritesToStandardError)
{
    testing::internal::CaptureStderr();
    ASSERT_TRUE(CSTrace::instance()->TraceToStandardError());
    Trace(CSTrace::eError, "seen by the user");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Class::Method (.\\File:7) seen by the user"));
}

TEST(Trace, ServesManyThreadsWhileItsSinksChange)
{
    static std::atomic<int> s_nRecords = 0;
    const auto count = [](const CSTrace::Record&, void*) { ++s_nRecords; };
    CSTrace::instance()->TraceToCallback(count, nullptr);
    std::vector<std::thread> oThreads;
    for (int nThread = 0; nThread < 4; ++nThread)
        oThreads.emplace_back([] {
            for (int n = 0; n < 2000; ++n)
                Trace(CSTrace::eError, "text");
        });
    for (int n = 0; n < 200; ++n)
    {
        CSTrace::instance()->SetThreshold(n % 2 ? CSTrace::eError : CSTrace::eDebug);
        CSTrace::instance()->TraceToCallback(count, nullptr);
    }
    for (auto& oThread : oThreads)
        oThread.join();
    EXPECT_EQ(s_nRecords, 8000);   // no record was lost between two sinks
}
