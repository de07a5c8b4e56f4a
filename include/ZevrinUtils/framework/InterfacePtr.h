/// @file
/// CInterfacePtr: owns a reference to an object of the shell.
#pragma once

/// Null, or one reference, which goes with the object.
template <class Interface>
class CInterfacePtr
{
public:
    CInterfacePtr() noexcept = default;
    ~CInterfacePtr()
    {
        if (m_pInterface)
            m_pInterface->Release();
    }
    CInterfacePtr(const CInterfacePtr&) = delete;
    CInterfacePtr& operator=(const CInterfacePtr&) = delete;

    /// The place for a call that gives a reference. Only while there is none.
    Interface** operator&() noexcept { return &m_pInterface; }

    Interface* operator->() const noexcept { return m_pInterface; }               ///< only while there is one
    explicit operator bool() const noexcept { return m_pInterface != nullptr; }   ///< whether there is one

private:
    Interface* m_pInterface = nullptr;
};
