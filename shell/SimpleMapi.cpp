// One message, gathered in the records of Simple MAPI so that they can be handed over as they are: texts are borrowed,
// arrays are C's. The loaded library is one for all objects of the process, unguarded.
#include "ZevrinUtils/SimpleMapi.h"

#include "platform/Memory.h"
#include "platform/Modules.h"
#include "platform/Profile.h"
#include "util/Translation.h"

#include <algorithm>
#include <cstdlib>

namespace
{
constexpr char s_szLibrary[] = "MAPI32.DLL";

// The framework's own texts, which have the numbers 61840 and 61841 among its resources.
constexpr char s_szLoadFailed[] = "The mail system of this machine could not be loaded.";
constexpr char s_szEntryMissing[] = "The mail system of this machine is not valid: it cannot send a message.";

enum eMailError : unsigned
{
    eNoLibrary = 1,
    eNoEntry,
    eNoTo,
    eNoCc,
    eNoAttachment,
    eNotSent
};

constexpr Translation<unsigned long, const char*> s_aDescriptions[] = {
    {MAPI_E_USER_ABORT, "The user canceled one of the dialog boxes. No message was sent."},
    {MAPI_E_FAILURE, "One or more unspecified errors occurred. No message was sent."},
    {MAPI_E_LOGIN_FAILURE, "There was no default logon, and the user failed to log on successfully when the logon "
                           "dialog box was displayed. No message was sent."},
    {MAPI_E_INSUFFICIENT_MEMORY, "There was insufficient memory to proceed. No message was sent."},
    {MAPI_E_TOO_MANY_FILES, "There were too many file attachments. No message was sent."},
    {MAPI_E_TOO_MANY_RECIPIENTS, "There were too many recipients. No message was sent."},
    {MAPI_E_ATTACHMENT_NOT_FOUND, "The specified attachment was not found. No message was sent."},
    {MAPI_E_ATTACHMENT_OPEN_FAILURE, "The specified attachment could not be opened. No message was sent."},
    {MAPI_E_UNKNOWN_RECIPIENT, "A recipient did not appear in the address list. No message was sent."},
    {MAPI_E_BAD_RECIPTYPE, "The type of a recipient was not MAPI_TO, MAPI_CC, or MAPI_BCC. No message was sent."},
    {MAPI_E_TEXT_TOO_LARGE, "The text in the message was too large. No message was sent."},
    {MAPI_E_AMBIGUOUS_RECIPIENT, "A recipient matched more than one of the recipient descriptor structures and "
                                 "MAPI_DIALOG was not set. No message was sent."},
    {MAPI_E_INVALID_RECIPS, "One or more recipients were invalid or did not resolve to any address."},
};

// The records want texts that may be written; no mail system writes them.
char* Borrowed(const char* pszText) noexcept
{
    return const_cast<char*>(pszText);
}

// Grows an array by one slot, which is zeroed. Without memory the old array is lost, as hosts know, and the next
// addition starts from nothing: all slots before its own are then zero too. False if there is no memory.
template <class Slot>
bool AddSlot(Slot*& pSlots, ULONG nCount)
{
    const ULONG nKept = pSlots ? nCount : 0;
    pSlots = static_cast<Slot*>(Memory().realloc(pSlots, (std::size_t{nCount} + 1) * sizeof(Slot)));
    if (pSlots)
        std::fill(pSlots + nKept, pSlots + nCount + 1, Slot{});
    return pSlots != nullptr;
}

// Main and copy recipients stand in one array, in the order of the calls.
int FillNewSlot(MapiMessage& oMessage, ULONG nClass, const char* pszName)
{
    MapiRecipDesc& oRecipient = oMessage.lpRecips[oMessage.nRecipCount++];
    oRecipient.ulRecipClass = nClass;
    oRecipient.lpszName = Borrowed(pszName);
    return 1;
}
}

int CSIMapi::m_bIsMailAvail = -1;
HMODULE CSIMapi::m_hInstMail = nullptr;

CSIMapi::CSIMapi()
{
    m_oMessage.lpOriginator = &m_oOriginator;
    if (!m_hInstMail)
        m_hInstMail = Modules().LoadLibraryA(s_szLibrary);
    if (!m_hInstMail)
    {
        m_strLastError = s_szLoadFailed;
        m_nLastError = eNoLibrary;
        return;
    }
    // By way of void*, since compilers warn of a cast from one type of function to another.
    m_lpfnSendMail = reinterpret_cast<LPMAPISENDMAIL>(
        reinterpret_cast<void*>(Modules().GetProcAddress(m_hInstMail, "MAPISendMail")));
    if (!m_lpfnSendMail)
    {
        m_strLastError = s_szEntryMissing;
        m_nLastError = eNoEntry;
    }
}

CSIMapi::CSIMapi(const CSIMapi& oOther) = default;

CSIMapi& CSIMapi::operator=(const CSIMapi& oOther) = default;

// The first object to go unloads the library for all.
CSIMapi::~CSIMapi()
{
    if (m_hInstMail)
        Modules().FreeLibrary(m_hInstMail);
    m_hInstMail = nullptr;
    std::free(m_oMessage.lpFiles);
    std::free(m_oMessage.lpRecips);
}

int CSIMapi::HasEmail()
{
    if (m_bIsMailAvail == -1)
        m_bIsMailAvail = Profile().GetProfileIntA("MAIL", "MAPI", 0) != 0 &&
                         Modules().SearchPathA(nullptr, s_szLibrary, nullptr, 0, nullptr, nullptr) != 0;
    return m_bIsMailAvail;
}

int CSIMapi::AllocNewTo()
{
    return AddSlot(m_oMessage.lpRecips, m_oMessage.nRecipCount);
}

int CSIMapi::To(const char* pszName)
{
    if (AllocNewTo())
        return FillNewSlot(m_oMessage, MAPI_TO, pszName);
    m_nLastError = eNoTo;
    m_strLastError = "Failed to add a recipient to the TO section";
    return 0;
}

int CSIMapi::Cc(const char* pszName)
{
    if (AllocNewTo())
        return FillNewSlot(m_oMessage, MAPI_CC, pszName);
    m_nLastError = eNoCc;
    m_strLastError = "Failed to add a recipient to the CC section";
    return 0;
}

int CSIMapi::Attach(const char* pszPathName, const char* pszFileName)
{
    if (!AddSlot(m_oMessage.lpFiles, m_oMessage.nFileCount))
    {
        m_nLastError = eNoAttachment;
        m_strLastError = "Failed to attach a file to the Email";
        return 0;
    }
    MapiFileDesc& oFile = m_oMessage.lpFiles[m_oMessage.nFileCount++];
    oFile.lpszPathName = Borrowed(pszPathName);
    oFile.lpszFileName = Borrowed(pszFileName);
    return 1;
}

void CSIMapi::SetSubject(const char* pszSubject)
{
    m_oMessage.lpszSubject = Borrowed(pszSubject);
}

void CSIMapi::SetText(const char* pszText)
{
    m_strText = pszText;
}

void CSIMapi::SetFrom(const char* pszName)
{
    m_oOriginator.lpszName = Borrowed(pszName);
}

int CSIMapi::Send(unsigned long nFlags)
{
    // Each attachment stands in the text, in place of a blank of its own at the end.
    for (ULONG nFile = 0; nFile < m_oMessage.nFileCount; ++nFile)
    {
        m_oMessage.lpFiles[nFile].nPosition = static_cast<ULONG>(m_strText.GetLength());
        m_strText += ' ';
    }
    m_oMessage.lpszNoteText = Borrowed(m_strText);

    // Whatever the caller passes, the user has the last word. That the entry is there is not looked at.
    const ULONG nResult =
        m_lpfnSendMail(0, 0, &m_oMessage, static_cast<FLAGS>(nFlags) | MAPI_LOGON_UI | MAPI_DIALOG, 0);
    if (nResult == SUCCESS_SUCCESS)
        return 1;
    m_nLastError = eNotSent;
    GetErrorDescription(nResult, m_strLastError);
    return 0;
}

void CSIMapi::GetLastError(unsigned int& nCode, CString& strText)
{
    nCode = m_nLastError;
    strText = m_strLastError;
    m_nLastError = 0;
    m_strLastError.Empty();
}

void CSIMapi::GetErrorDescription(unsigned long nCode, CString& strText)
{
    strText = Translate(s_aDescriptions, nCode, "Unknown error.");
}
