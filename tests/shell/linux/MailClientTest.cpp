// Mail on a desktop whose xdg-email writes down what it is given.
#include "ZevrinUtils/SimpleMapi.h"
#include "support/ScratchFolder.h"

#include <cstdlib>

#include <csignal>
#include <sys/stat.h>

#include <gtest/gtest.h>

namespace
{
class MailClientTest : public testing::Test
{
protected:
    MailClientTest()
    {
        ScratchFolder::Write(m_oFolder / "xdg-email", "#!/bin/sh\nprintf '%s\\0' \"$@\" >\"$ZEVRIN_TEST_LOG\"\n"
                                                      "eval \"$ZEVRIN_TEST_END\"\n");
        ::chmod(Path("xdg-email").c_str(), 0700);
        ::setenv("PATH", (Path("") + ":/usr/bin:/bin").c_str(), 1);
        ::setenv("ZEVRIN_TEST_LOG", Path("log").c_str(), 1);
    }

    std::string Path(const char* pszName) const { return ScratchFolder::Native(m_oFolder / pszName); }

    // What the client was given, with a bar behind each argument.
    std::string Arguments() const
    {
        std::string strLog = ScratchFolder::Read(m_oFolder / "log");
        for (char& ch : strLog)
            ch = ch ? ch : '|';
        return strLog;
    }

    ScratchFolder m_oFolder;
};
}

TEST_F(MailClientTest, ReceivesTextAndNamesWhole)
{
    // A thread of the library blocks signals; the client must not.
    sigset_t oAll;
    sigfillset(&oAll);
    pthread_sigmask(SIG_BLOCK, &oAll, nullptr);
    ::setenv("ZEVRIN_TEST_END", "grep '^SigBlk' /proc/$$/status | grep -q 0000000000000000 || exit 4", 1);
    ScratchFolder::Write(m_oFolder / "-a \"'$(x)", "");
    EXPECT_EQ(CSIMapi::HasEmail(), 1);
    CSIMapi oMail;
    const std::string strPath = m_oFolder / "-a \"'$(x)";
    oMail.To("-jane@example.com");
    oMail.To("O'Neil, \"J\" <j@x>");
    oMail.Cc("`id`&cc=z");
    oMail.Attach(strPath.c_str(), "shown");
    oMail.SetSubject("--subject $HOME; 100% \xC3\xA4?");
    oMail.SetText("one\ntwo\r\n\\three");
    EXPECT_EQ(oMail.Send(0), 1);
    EXPECT_EQ(Arguments(),
              "--utf8|--attach|" + Path("-a \"'$(x)") +
                  "|mailto:-jane@example.com,O%27Neil%2C%20%22J%22%20%3Cj@x%3E?cc=%60id%60%26cc%3Dz"
                  "&subject=--subject%20%24HOME%3B%20100%25%20%C3%A4%3F&body=one%0D%0Atwo%0D%0A%5Cthree%20|");
    ::setenv("PATH", "/nowhere:relative", 1);
    EXPECT_EQ(oMail.Send(0), 0);   // it is gone
    unsigned nCode = 0;
    CString strText;
    CSIMapi().GetLastError(nCode, strText);
    EXPECT_EQ(nCode, 0u);   // a second object takes what the first has loaded ...
    CSIMapi().GetLastError(nCode, strText);
    EXPECT_EQ(nCode, 1u);   // ... and unloads it
}

TEST_F(MailClientTest, FailuresAreThoseOfTheMailSystem)
{
    ::mkdir(Path("folder").c_str(), 0700);
    struct Row
    {
        const char *pszEnd, *pszTo, *pszAttachment, *pszText, *pszFailure;
    };
    const std::string strLong(200'000, 'x');
    for (const Row& o : {Row{"", nullptr, nullptr, "", ""},
                         {"exit 1", "a", nullptr, "", "One or more unspecified errors"},
                         {"exit 2", "a", nullptr, "", "The specified attachment was not found"},
                         {"exit 3", "a", nullptr, "", "One or more unspecified errors"},
                         {"exit 5", "a", nullptr, "", "The specified attachment could not be opened"},
                         {"exit 130", "a", nullptr, "", "The user canceled"},
                         {"kill -TERM $$", "a", nullptr, "", "The user canceled"},
                         {"", "a", "missing", "", "The specified attachment was not found"},
                         {"", "a", "folder", "", "The specified attachment could not be opened"},
                         {"", "", nullptr, "", "One or more recipients were invalid"},
                         {"", "a", nullptr, strLong.c_str(), "The text in the message was too large"}})
    {
        ::setenv("ZEVRIN_TEST_END", o.pszEnd, 1);
        CSIMapi oMail;
        const std::string strAttachment = o.pszAttachment ? Path(o.pszAttachment) : "";
        if (o.pszTo)
            oMail.To(o.pszTo);
        if (o.pszAttachment)
            oMail.Attach(strAttachment.c_str(), "name");
        oMail.SetText(o.pszText);
        EXPECT_EQ(oMail.Send(0), !*o.pszFailure) << o.pszFailure;
        unsigned nCode = 0;
        CString strText;
        oMail.GetLastError(nCode, strText);
        EXPECT_EQ(strText.Find(o.pszFailure), 0) << strText;
    }
    EXPECT_EQ(Arguments(), "--utf8|mailto:a|");   // the last that was reached
}
