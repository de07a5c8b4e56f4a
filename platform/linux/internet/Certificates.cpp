// The judgement of a certificate, fault by fault, inside of OpenSSL: libcurl alone can forgive all of them or none.
#include "Certificates.h"

#include "util/Translation.h"

#include <new>

#include <openssl/ssl.h>
#include <openssl/x509_vfy.h>

namespace
{
struct Verdict
{
    DWORD nForgivenBy;   // 0: nothing forgives it
    DWORD nError;
};
constexpr Verdict oWrongDate{SECURITY_FLAG_IGNORE_CERT_DATE_INVALID, ERROR_INTERNET_SEC_CERT_DATE_INVALID};
constexpr Verdict oUnknownAuthority{SECURITY_FLAG_IGNORE_UNKNOWN_CA, ERROR_INTERNET_INVALID_CA};
constexpr Verdict oRevoked{0, ERROR_INTERNET_SEC_CERT_REVOKED};
constexpr Verdict oInvalid{0, ERROR_INTERNET_SEC_INVALID_CERT};

// By OpenSSL's number of the fault.
constexpr Translation<int, Verdict> s_aVerdicts[] = {
    {X509_V_ERR_CERT_HAS_EXPIRED, oWrongDate},
    {X509_V_ERR_CERT_NOT_YET_VALID, oWrongDate},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, oUnknownAuthority},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, oUnknownAuthority},
    {X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, oUnknownAuthority},
    {X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, oUnknownAuthority},
    {X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, oUnknownAuthority},
    {X509_V_ERR_CERT_UNTRUSTED, oUnknownAuthority},
    {X509_V_ERR_CERT_REVOKED, oRevoked},
};

int RulesIndex()
{
    static const int s_nIndex = SSL_CTX_get_ex_new_index(0, nullptr, nullptr, nullptr, nullptr);
    return s_nIndex;
}

// libcurl calls back for proxies and servers alike and does not say for which. To tell them apart, proxies alone get
// this upper limit, which is the highest there is; for servers libcurl sets none.
constexpr long nMarkOfProxies = CURL_SSLVERSION_MAX_TLSv1_3;

bool IsOfProxy(SSL_CTX* pSslContext)
{
    return SSL_CTX_get_max_proto_version(pSslContext) == TLS1_3_VERSION;
}
}

struct CertificateRules::Verification
{
    static CURLcode Prepare(CURL* /*pTransfer*/, void* pContext, void* pRules)
    {
        auto* const pSslContext = static_cast<SSL_CTX*>(pContext);
        if (!SSL_CTX_set_ex_data(pSslContext, RulesIndex(), pRules))
            return CURLE_OUT_OF_MEMORY;
        // The connection may outlive the request, and so the rules.
        SSL_CTX_set_options(pSslContext, SSL_OP_NO_RENEGOTIATION);
        SSL_CTX_set_verify(pSslContext, SSL_VERIFY_PEER, &Judge);
        return CURLE_OK;
    }

    // Called for each fault of each certificate of the chain. A forgiven one must leave no trace, because libcurl asks
    // for the verdict once more.
    static int Judge(int bAccepted, X509_STORE_CTX* pStore)
    {
        if (bAccepted)
            return bAccepted;
        const auto* const pSsl =
            static_cast<SSL*>(X509_STORE_CTX_get_ex_data(pStore, SSL_get_ex_data_X509_STORE_CTX_idx()));
        SSL_CTX* const pSslContext = SSL_get_SSL_CTX(pSsl);
        auto* const pRules = static_cast<CertificateRules*>(SSL_CTX_get_ex_data(pSslContext, RulesIndex()));
        const Verdict oVerdict = Translate(s_aVerdicts, X509_STORE_CTX_get_error(pStore), oInvalid);
        if (IsOfProxy(pSslContext) || !(pRules->m_nFlags & oVerdict.nForgivenBy))
        {
            pRules->m_nRefusal = oVerdict.nError;
            return 0;
        }
        X509_STORE_CTX_set_error(pStore, X509_V_OK);
        return 1;
    }
};

void CertificateRules::SetFlags(DWORD nFlags) noexcept
{
    m_nFlags = nFlags & (SECURITY_FLAG_IGNORE_UNKNOWN_CA | SECURITY_FLAG_IGNORE_CERT_CN_INVALID |
                         SECURITY_FLAG_IGNORE_CERT_DATE_INVALID);
}

void CertificateRules::Apply(CURL* pTransfer)
{
    m_nRefusal = 0;
    const auto set = [pTransfer](CURLoption nOption, auto value) {
        if (curl_easy_setopt(pTransfer, nOption, value) != CURLE_OK)
            throw std::bad_alloc();
    };
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, m_nFlags & SECURITY_FLAG_IGNORE_CERT_CN_INVALID ? 0L : 2L);
    set(CURLOPT_SSL_SESSIONID_CACHE, 0L);   // a session that is taken up again would skip the judgement
    set(CURLOPT_PROXY_SSLVERSION, nMarkOfProxies);
    set(CURLOPT_SSL_CTX_FUNCTION, &Verification::Prepare);
    set(CURLOPT_SSL_CTX_DATA, this);
}
