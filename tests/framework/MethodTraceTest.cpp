// A method trace reports its entry, its messages with their lines, and its exit.
#include "framework/MethodTrace.h"

#include "support/TraceCapture.h"

#include <gmock/gmock.h>

namespace
{
TraceRecord Message(int nSeverity, const char* pszText, int nLine)
{
    return {nSeverity, pszText, "Class", "Class::Method", ".\\File", nLine};
}
}

TEST(MethodTrace, ReportsEntryMessagesAndExit)
{
    const TraceCapture oCapture;
    try
    {
        CSMethodTrace oTrace(".\\File", 10, "Class", "Class::Method");
        oTrace.SetLine(11) << "a" << std::string("b") << "END_WARNING_MESSAGE";
        oTrace << static_cast<const char*>(nullptr) << "END_ERROR_MESSAGE";
        oTrace.SetLine(12) << "end_info_message" << std::string("END_INFO_MESSAGE ") << "END_INFO_MESSAGE";
        oTrace << std::string("END_DEBUG_MESSAGE");   // from data, and with no text before it
        oTrace << "never finished";
        throw 1;   // the exit is reported all the same
    }
    catch (int)
    {
    }
    EXPECT_THAT(oCapture.Records(),
                testing::ElementsAre(Message(4, "Entered Method", 10), Message(2, "ab", 11), Message(1, "NULL", 11),
                                     Message(3, "end_info_messageEND_INFO_MESSAGE ", 12), Message(4, "", 12),
                                     TraceRecord{4, "Exited Method", "", "Class::Method", ".\\File", 0}));
}
