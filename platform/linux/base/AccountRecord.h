// A record of the system's accounts, with the texts that it points to.
#pragma once

#include <cerrno>
#include <vector>

// Looked up by a function of the C library that fills a buffer, such as getpwnam_r.
template <class Record>
class AccountRecord
{
public:
    template <class Key>
    AccountRecord(int (*pfnFind)(Key, Record*, char*, std::size_t, Record**), Key key)
    {
        while ((m_nErrno = pfnFind(key, &m_oRecord, m_achTexts.data(), m_achTexts.size(), &m_pFound)) == ERANGE ||
               m_nErrno == EINTR)
            if (m_nErrno == ERANGE)
                m_achTexts.resize(m_achTexts.size() * 2);
    }
    AccountRecord(const AccountRecord&) = delete;
    AccountRecord& operator=(const AccountRecord&) = delete;

    explicit operator bool() const noexcept { return m_pFound; }
    const Record* operator->() const noexcept { return m_pFound; }

    // Why the system cannot tell; 0 if it can. Some systems say by one of these numbers that there is none.
    int Errno() const noexcept
    {
        const bool bNone = m_nErrno == ENOENT || m_nErrno == ESRCH || m_nErrno == EBADF || m_nErrno == EPERM;
        return bNone ? 0 : m_nErrno;
    }

private:
    std::vector<char> m_achTexts = std::vector<char>(1024);
    Record m_oRecord{};
    Record* m_pFound = nullptr;
    int m_nErrno = 0;
};
