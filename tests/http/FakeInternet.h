// An internet of prepared answers, for what real servers cannot be brought to do. It notes what is asked of it.
#pragma once

#include "ZevrinUtils/HttpServices.h"
#include "framework/Internet.h"
#include "platform/Errors.h"
#include "support/FaultSweep.h"

#include <cstring>
#include <deque>
#include <set>
#include <string>

// The answer to one send. Status 0: there is none.
struct Answer
{
    DWORD nStatus = 200;
    std::string strHeaders = "HTTP/1.1 200 OK\r\n\r\n";
    std::string strBody;
    DWORD nLength = ~0u;   // of the header; ~0: there is none
};

class FakeInternet
{
public:
    static inline std::deque<Answer> s_oAnswers;   // of the sends to come; the last one serves all further ones
    static inline std::deque<DWORD> s_oDialogResults;
    static inline std::string s_strLog;
    static inline std::set<char> s_oOpen;   // handles: s, c, r

    FakeInternet(std::deque<Answer> oAnswers, std::deque<DWORD> oDialogResults = {})
    {
        s_oAnswers = std::move(oAnswers);
        s_oDialogResults = std::move(oDialogResults);
        s_strLog.clear();
    }

private:
    static inline Answer s_oAnswer;
    static inline DWORD s_nSecurity = 0;

    static bool Fails(const std::string& strNote)
    {
        s_strLog += strNote;
        Errors().SetLastError(12004);
        return FaultSweep::Strikes("call");
    }
    static HINTERNET Open(char chKind, const std::string& strNote)
    {
        static char s_achHandles[] = "scr";
        if (Fails(strNote))
            return nullptr;
        s_oOpen.insert(chKind);
        return std::strchr(s_achHandles, chKind);
    }

    Substitution<InternetCalls> m_oCalls{[](InternetCalls& o) {
        o.InternetOpenA = [](LPCSTR pszAgent, DWORD nType, LPCSTR, LPCSTR, DWORD nFlags) WINAPI -> HINTERNET {
            return Open('s', std::string("as ") + pszAgent + " " + std::to_string(nType + nFlags) + ";");
        };
        o.InternetConnectA = [](HINTERNET, LPCSTR pszServer, INTERNET_PORT nPort, LPCSTR pszUser, LPCSTR pszPassword,
                                DWORD, DWORD, DWORD_PTR) WINAPI -> HINTERNET {
            return Open('c', std::string("to ") + pszUser + ":" + pszPassword + "@" + pszServer + ":" +
                                 std::to_string(nPort) + ";");
        };
        o.HttpOpenRequestA = [](HINTERNET, LPCSTR pszVerb, LPCSTR pszObject, LPCSTR, LPCSTR, LPCSTR*, DWORD nFlags,
                                DWORD_PTR) WINAPI -> HINTERNET {
            char achFlags[12];
            std::snprintf(achFlags, sizeof achFlags, "%lX", static_cast<unsigned long>(nFlags));
            s_nSecurity = nFlags & 0x3000;
            return Open('r', std::string(pszVerb) + " " + pszObject + " " + achFlags + ";");
        };
        o.HttpSendRequestA = [](HINTERNET, LPCSTR, DWORD, LPVOID, DWORD) WINAPI -> BOOL {
            s_oAnswer = s_oAnswers.front();
            if (s_oAnswers.size() > 1)
                s_oAnswers.pop_front();
            if (Fails("send;"))
                s_oAnswer.nStatus = 0;
            return s_oAnswer.nStatus != 0;
        };
        o.HttpQueryInfoA = [](HINTERNET, DWORD nLevel, LPVOID pBuffer, LPDWORD pnSize, LPDWORD) WINAPI -> BOOL {
            const bool bLength = nLevel == (HTTP_QUERY_FLAG_NUMBER | HTTP_QUERY_CONTENT_LENGTH);
            if (Fails("") || s_oAnswer.nStatus == 0 || (bLength && s_oAnswer.nLength == ~0u))
                return FALSE;
            if (nLevel != HTTP_QUERY_RAW_HEADERS_CRLF)
                return std::memcpy(pBuffer, bLength ? &s_oAnswer.nLength : &s_oAnswer.nStatus, sizeof(DWORD)) !=
                       nullptr;
            const auto nLength = static_cast<DWORD>(s_oAnswer.strHeaders.size());
            const bool bFits = *pnSize > nLength;
            *pnSize = nLength + (bFits ? 0 : 1);
            Errors().SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return bFits && std::memcpy(pBuffer, s_oAnswer.strHeaders.c_str(), nLength + 1);
        };
        o.InternetReadFile = [](HINTERNET, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead) WINAPI -> BOOL {
            *pnRead = static_cast<DWORD>(s_oAnswer.strBody.copy(static_cast<char*>(pBuffer), nCount));
            s_oAnswer.strBody.erase(0, *pnRead);
            return !Fails("");
        };
        o.InternetQueryDataAvailable = [](HINTERNET, LPDWORD pnAvailable, DWORD, DWORD_PTR) WINAPI -> BOOL {
            *pnAvailable = static_cast<DWORD>(s_oAnswer.strBody.size());
            return !Fails("");
        };
        o.InternetQueryOptionA = [](HINTERNET, DWORD, LPVOID pBuffer, LPDWORD) WINAPI -> BOOL {
            return !Fails("") && std::memcpy(pBuffer, &s_nSecurity, sizeof s_nSecurity);
        };
        o.InternetSetOptionA = [](HINTERNET, DWORD nOption, LPVOID pBuffer, DWORD) WINAPI -> BOOL {
            DWORD nValue = 0;
            std::memcpy(&nValue, pBuffer, sizeof nValue);
            return !Fails("set " + std::to_string(nOption) + "=" + std::to_string(nValue) + ";");
        };
        o.InternetCloseHandle = [](HINTERNET hAny) WINAPI -> BOOL {
            s_oOpen.erase(*static_cast<char*>(hAny));
            return !Fails(std::string("close ") + *static_cast<char*>(hAny) + ";");
        };
        o.InternetErrorDlg = [](HWND, HINTERNET, DWORD, DWORD nFlags, LPVOID*) WINAPI -> DWORD {
            const DWORD nResult = s_oDialogResults.front();
            s_oDialogResults.pop_front();
            s_strLog += "dialog " + std::to_string(nFlags) + ";";
            return nResult;
        };
    }};
};

struct CHttpServicesPeer : CHttpServices
{
    using C = CHttpServices;
    using C::bIsURLHostCached, C::bOpenGetRequest, C::CloseGetRequest, C::m_oHostNameToIp, C::m_pObserver;
    using C::sGetCachedURL, C::sGetCachedURLHostAndPort, C::sGetHost, C::sGetStrippedURL;
};

// Notes what it hears, and answers as told.
struct NotingObserver : CHTTPRequestObserver
{
    std::string strHeard;
    bool bGoOn = true;
    bool bRunning = true;

    void OnContentLength(unsigned long nBytes) override { strHeard += "length " + std::to_string(nBytes) + ";"; }
    bool bOnDataBlock(unsigned long nBytes) override
    {
        strHeard += "block " + std::to_string(nBytes) + ";";
        return bGoOn;
    }
    bool bKeepRunning() override
    {
        strHeard += "poll;";
        return bRunning;
    }
    void OnRequestEnd(bool bSuccess) override { strHeard += bSuccess ? "end 1;" : "end 0;"; }
    void OnDialogShown(bool bShown) override { strHeard += bShown ? "dialog 1;" : "dialog 0;"; }
};
