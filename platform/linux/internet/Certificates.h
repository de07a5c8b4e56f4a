// The faults that a request forgives the certificate of a server.
#pragma once

#include "win32/Internet.h"

#include <curl/curl.h>

class CertificateRules
{
public:
    // Those of the security flags count that are for a wrong name, a wrong date and an unknown authority. All else
    // that is wrong with a certificate is never forgiven, and to the certificate of a proxy nothing is.
    DWORD Flags() const noexcept { return m_nFlags; }
    void SetFlags(DWORD nFlags) noexcept;

    // Holds the transfer to these rules, which must outlive it. Throws std::bad_alloc.
    void Apply(CURL* pTransfer);

    // The error of a certificate that was refused since the last Apply; 0 if none was.
    DWORD Refusal() const noexcept { return m_nRefusal; }

private:
    struct Verification;
    friend struct Verification;

    DWORD m_nFlags = 0;
    DWORD m_nRefusal = 0;
};
