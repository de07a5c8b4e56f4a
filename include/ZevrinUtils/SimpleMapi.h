/// @file
/// Mail: one message, handed to the mail client of the machine.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/MapiTypes.h"
#include "ZevrinUtils/Types.h"
#include "ZevrinUtils/framework/String.h"

/// Gathers one mail message and hands it to the machine's mail system, Simple MAPI, which always shows it to the
/// user first: nothing is sent silently.
///
///     CSIMapi oMail;               // GetLastError tells whether there is a mail system
///     oMail.To("jane@example.com");
///     oMail.SetSubject("Report");
///     oMail.SetText("Here it is.\r\n");
///     oMail.Attach("C:\\report.pdf", "report.pdf");
///     oMail.Send(0);
///
/// An object is for one message: nothing removes a recipient or an attachment. Sent again, its text grows by another
/// blank for each attachment.
///
/// Texts: SetText copies; all others are borrowed, and must live until Send has returned.
///
/// Failures: an operation gives 0 and leaves a code and a text, which GetLastError gives once. No success clears
/// them. The codes: 1 there is no MAPI32.DLL; 2 it has no MAPISendMail; 3, 4, 5 no memory for To, Cc, Attach; 6 the
/// message was not sent.
///
/// Threads: an object belongs to one thread. All objects share the loaded MAPI32.DLL, unguarded, and the first to be
/// destroyed unloads it for all: what others would still send goes nowhere and ends the process. An object made
/// after that loads it anew.
///
/// On Linux the mail system is the program xdg-email, which opens the desktop's mail client. The sender is the
/// account that the user has there, and an attachment goes under its file's name. Send waits until the client is
/// open: what the user does with the message is not known. A name that ends in a single quote or has one before a
/// comma is refused, and so is such a path of an attachment.
class ZEVRINUTILS_API CSIMapi
{
public:
    /// Loads MAPI32.DLL, unless another object has. Throws nothing; a failure leaves code 1 or 2, and the object is
    /// good for everything but Send.
    CSIMapi();

    /// Member by member: recipients and attachments are shared, and freed by both. Only one of the two may be used
    /// and destroyed.
    CSIMapi(const CSIMapi& oOther);
    CSIMapi& operator=(const CSIMapi& oOther);   ///< likewise

    virtual ~CSIMapi();

    /// 1 if the machine has a Simple MAPI mail system, otherwise 0. The first answer holds for the life of the
    /// process. Loads nothing. Not guarded: the first call must be over before a second thread asks.
    static int HasEmail();

    /// Adds a main recipient: 1, or 0 if memory is short, and then those before are lost.
    int To(const char* pszName);
    int Cc(const char* pszName);   ///< adds a copy recipient likewise

    /// Adds an attachment: 1, or 0 if memory is short, and then those before are lost.
    ///
    /// @param pszPathName  path of the file
    /// @param pszFileName  name under which the message shows it
    int Attach(const char* pszPathName, const char* pszFileName);

    void SetSubject(const char* pszSubject);   ///< in place of any before; borrowed; null: none
    void SetText(const char* pszText);         ///< in place of any before; copied; null: an empty text
    void SetFrom(const char* pszName);         ///< the sender, in place of any before; borrowed; null: none

    /// Shows the message in the mail client and waits for the user: 1 if it was sent, otherwise 0.
    ///
    /// Tests nothing before: not to be called while the constructor's failure stands, or the process ends.
    ///
    /// @param nFlags  of MAPISendMail; MAPI_LOGON_UI and MAPI_DIALOG are always added
    int Send(unsigned long nFlags);

    /// Gives the last failure and forgets it; 0 and an empty text if there is none.
    void GetLastError(unsigned int& nCode, CString& strText);

protected:
    /// Adds a recipient's slot, all zero, without counting it: 1, or 0 if memory is short.
    int AllocNewTo();

    /// The text for a result of MAPISendMail.
    void GetErrorDescription(unsigned long nCode, CString& strText);

private:
    friend struct CSIMapiPeer;   // the tests: the layout

    unsigned int m_nLastError = 0;
    CString m_strLastError;
    MapiMessage m_oMessage{};
    MapiRecipDesc m_oOriginator{};
    CString m_strText;
    LPMAPISENDMAIL m_lpfnSendMail = nullptr;

    static int m_bIsMailAvail;
    static HMODULE m_hInstMail;
};
