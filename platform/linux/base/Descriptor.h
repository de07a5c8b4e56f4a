// A file of the kernel, closed with its owner.
#pragma once

#include <cstddef>
#include <utility>

#include <unistd.h>

class Descriptor
{
public:
    explicit Descriptor(int nDescriptor) noexcept : m_nDescriptor(nDescriptor) {}   // negative: none
    ~Descriptor()
    {
        if (*this)
            ::close(m_nDescriptor);
    }
    Descriptor(Descriptor&& oOther) noexcept : m_nDescriptor(std::exchange(oOther.m_nDescriptor, -1)) {}
    Descriptor& operator=(Descriptor&& oOther) noexcept
    {
        std::swap(m_nDescriptor, oOther.m_nDescriptor);
        return *this;
    }

    explicit operator bool() const noexcept { return m_nDescriptor >= 0; }
    int Get() const noexcept { return m_nDescriptor; }

private:
    int m_nDescriptor;
};

// Writes all of it, whatever signals come: the count that was written, with errno where it is less.
std::size_t WriteAll(int nDescriptor, const void* pData, std::size_t nCount);
