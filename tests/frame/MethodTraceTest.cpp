#include "frame/MethodTrace.h"

#include "support/TraceCapture.h"

#include <stdexcept>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
const TraceRecord oEntry{4, "Entered Method", "Class", "Class::Method", ".\\File", 10};
const TraceRecord oExit{4, "Exited Method", "", "Class::Method", ".\\File", 0};

TraceRecord Message(int nSeverity, const char* pszText, int nLine)
{
    return {nSeverity, pszText, "Class", "Class::Method", ".\\File", nLine};
}

// What a method traces that does this with its scope.
template <class Body>
std::vector<TraceRecord> Traced(Body body)
{
    const TraceCapture oCapture;
    try
    {
        CSMethodTrace oTrace(".\\File", 10, "Class", "Class::Method");
        body(oTrace);
    }
    catch (const std::runtime_error&)
    {
    }
    return oCapture.Records();
}
}

TEST(MethodTrace, ReportsEntryMessagesAndExit)
{
    const auto oRecords = Traced([](CSMethodTrace& o) {
        o.SetLine(11) << "a" << std::string("b") << "END_WARNING_MESSAGE";
        o << "c"
          << "END_ERROR_MESSAGE";
        o.SetLine(12) << "d"
                      << "END_INFO_MESSAGE"
                      << "e"
                      << "END_DEBUG_MESSAGE";
    });
    EXPECT_THAT(oRecords, ElementsAre(oEntry, Message(2, "ab", 11), Message(1, "c", 11), Message(3, "d", 12),
                                      Message(4, "e", 12), oExit));
}

TEST(MethodTrace, TakesATerminatorFromAnywhereAndOnlyExactly)
{
    const auto oRecords = Traced([](CSMethodTrace& o) {
        o.SetLine(1) << "END_INFO_MESSAGE";
        o << std::string("END_WARNING_MESSAGE");
        o << "end_info_message" << std::string("END_INFO_MESSAGE ") << static_cast<const char*>(nullptr);
        o << "END_ERROR_MESSAGE";
    });
    EXPECT_THAT(oRecords, ElementsAre(oEntry, Message(3, "", 1), Message(2, "", 1),
                                      Message(1, "end_info_messageEND_INFO_MESSAGE NULL", 1), oExit));
}

TEST(MethodTrace, DropsTextThatWasNotFinishedAndReportsTheExitOfAnException)
{
    const auto oRecords = Traced([](CSMethodTrace& o) {
        o.SetLine(1) << "never finished";
        throw std::runtime_error("leaves the method");
    });
    EXPECT_THAT(oRecords, ElementsAre(oEntry, oExit));
}
