// Fails calls in turn: those of a test's own fakes that ask whether it strikes, and those of a platform table that it
// watches. A scenario runs once to count them, then once for each of them that fails, and again with all after it
// failing too. It makes what it needs, and checks what came out against what struck.
#pragma once

#include "platform/Errors.h"
#include "support/Substitution.h"

#include <map>
#include <string>

class FaultSweep
{
public:
    static constexpr DWORD nError = 5;

    template <class Calls, class Change, class Scenario>
    static int Over(Change watch, Scenario scenario)
    {
        const Substitution<Calls> oWatched(watch);
        return Over(scenario);
    }

    // How many calls there are.
    template <class Scenario>
    static int Over(Scenario scenario)
    {
        const int nCalls = Run(0, false, scenario);
        for (const bool bForGood : {false, true})
            for (int nFirst = 1; nFirst <= nCalls; ++nFirst)
                Run(nFirst, bForGood, scenario);
        Run(0, false, [] {});
        return nCalls;
    }

    static bool Strikes(const char* pszName)
    {
        ++s_nCalls;
        if (s_nFirst == 0 || s_nCalls < s_nFirst || (s_nCalls > s_nFirst && !s_bForGood))
            return false;
        if (s_strStruck.empty())
            s_strStruck = pszName;
        return true;
    }

    // Of this run: the call that fails, from 1 on, and whether all after it do; 0 for none.
    static inline int s_nFirst;
    static inline bool s_bForGood;
    // The first call of this run that failed; empty while none has.
    static inline std::string s_strStruck;
    // How often each call has succeeded in this run.
    static inline std::map<std::string, int> s_oDone;

    // A failing close closes all the same: let it be done.
    template <auto pMember, class Calls, class Failure>
    static void Watch(Calls& oCalls, const char* pszName, Failure failure, bool bDoneAllTheSame = false)
    {
        using Call = Watched<pMember>;
        Call::s_pszName = pszName;
        Call::s_failure = failure;
        Call::s_bDoneAllTheSame = bDoneAllTheSame;
        oCalls.*pMember = &Call::Answer;
    }

private:
    template <auto pMember>
    struct Watched;
    template <class Calls, class Result, class... Arguments, Result (WINAPI* Calls::*pMember)(Arguments...)>
    struct Watched<pMember>
    {
        static Result WINAPI Answer(Arguments... arguments)
        {
            const bool bFails = Strikes(s_pszName);
            const Result result =
                bFails && !s_bDoneAllTheSame ? s_failure : (PlatformService<Calls>::s_oNative.*pMember)(arguments...);
            if (bFails)
                Errors().SetLastError(nError);
            else if (result != s_failure)
                ++s_oDone[s_pszName];
            return bFails ? s_failure : result;
        }
        static inline const char* s_pszName;
        static inline Result s_failure;
        static inline bool s_bDoneAllTheSame;
    };

    template <class Scenario>
    static int Run(int nFirst, bool bForGood, Scenario scenario)
    {
        s_nFirst = nFirst;
        s_bForGood = bForGood;
        s_nCalls = 0;
        s_strStruck.clear();
        s_oDone.clear();
        scenario();
        return s_nCalls;
    }

    static inline int s_nCalls;
};
