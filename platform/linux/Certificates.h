// What a request forgives the certificate of a server.
#pragma once

#include "system/Internet.h"

#include <curl/curl.h>

class CertificateRules
{
public:
    // Of the security flags, those that forgive something: a wrong name, a wrong date, an unknown authority. All else
    // that is wrong with a certificate is never forgiven.
    DWORD Flags() const noexcept { return m_nFlags; }
    void SetFlags(DWORD nFlags) noexcept { m_nFlags = nFlags; }

    // Holds the transfer to these rules, which must outlive it.
    void Apply(CURL* pTransfer);

    // The error of a certificate that was refused since the last Apply; 0 if none was.
    DWORD Refusal() const noexcept { return m_nRefusal; }

private:
    struct Verification;
    friend struct Verification;

    DWORD m_nFlags = 0;
    DWORD m_nRefusal = 0;
};
