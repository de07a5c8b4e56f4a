// Mail on a machine whose mail client is the test's own.
#include "ZevrinUtils/SimpleMapi.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace
{
constexpr char s_szClients[] = "Software\\Clients\\Mail";
constexpr char s_szOurs[] = "Software\\Clients\\Mail\\Zevrin Test";

// Registers the provider as the machine's client.
class Registration
{
public:
    Registration()
    {
        const char szPath[] = TEST_MAIL_PROVIDER;
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, s_szOurs, "DLLPath", REG_SZ, szPath, sizeof szPath);
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, s_szClients, nullptr, REG_SZ, "Zevrin Test", 12);
    }
    ~Registration()
    {
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, s_szOurs);
        RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, s_szClients, nullptr);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
};
}

TEST(MailProvider, ReceivesTheWholeMessageAndItsAnswerComesBack)
{
    const Registration oRegistration;
    const ScratchFolder oFolder;
    _putenv(("ZEVRIN_TEST_LOG=" + oFolder / "log").c_str());
    _putenv("ZEVRIN_TEST_RESULT=0");
    EXPECT_EQ(CSIMapi::HasEmail(), 1);
    CSIMapi oMail;
    oMail.To("-jane \"J\" <j@x>");
    oMail.Cc("joe; $(id)");
    oMail.Attach("C:\\a file.txt", "shown.txt");
    oMail.SetSubject("100% \xC3\xA4");
    oMail.SetText("one\r\ntwo");
    oMail.SetFrom("me");
    EXPECT_EQ(oMail.Send(0), 1);
    EXPECT_EQ(ScratchFolder::Read(oFolder / "log"),
              "flags 9 subject '100% \xC3\xA4' text 'one\r\ntwo '\nfrom 0 'me'\n1 '-jane \"J\" <j@x>'\n"
              "2 'joe; $(id)'\nat 8 'C:\\a file.txt' as 'shown.txt'\n");
    _putenv("ZEVRIN_TEST_RESULT=1");
    EXPECT_EQ(oMail.Send(0), 0);
    unsigned nCode = 0;
    CString strText;
    oMail.GetLastError(nCode, strText);
    EXPECT_EQ(strText, "The user canceled one of the dialog boxes. No message was sent.");
}
