// Puts a changed table of platform calls in force for a scope, with another call in place of one, or of several:
//
//     const Substitution oNone(&MemoryCalls::malloc, [](std::size_t) -> void* { return nullptr; });
//     const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
//         oCalls.CreateThread = [](...) WINAPI -> HANDLE { return nullptr; };
//     });
//
// Scopes nest, each on top of the one around it. Install before the thread that calls starts, and let the
// scope end after that thread has.
#pragma once

#include "platform/Service.h"

#include <cstdlib>

template <class Object, class Member>
using MemberOf = Member Object::*;

template <class Calls>
class Substitution
{
public:
    template <class Change>
    explicit Substitution(Change change) : m_oCalls(PlatformService<Calls>::InForce())
    {
        change(m_oCalls);
        m_pBefore = PlatformService<Calls>::Exchange(&m_oCalls);
    }

    template <class Call, class Fake>
    Substitution(MemberOf<Calls, Call> pCall, Fake fake) : Substitution([&](Calls& oCalls) { oCalls.*pCall = fake; })
    {
    }

    // Taking away the table from under an inner scope would leave that one's fakes in force for good.
    ~Substitution()
    {
        if (PlatformService<Calls>::Exchange(m_pBefore) != &m_oCalls)
            std::abort();
    }

    Substitution(const Substitution&) = delete;
    Substitution& operator=(const Substitution&) = delete;

private:
    Calls m_oCalls;
    const Calls* m_pBefore;
};
