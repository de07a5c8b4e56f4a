// An object in static storage that is built but never destroyed, for what must serve until the very end of
// the process:
//
//     static Immortal<Table> s_oTable;
//
// It takes no memory of its own from the heap, so a module that is unloaded leaves none behind, as long as
// the object holds none by then.
#pragma once

#include <new>

template <class Object>
class Immortal
{
public:
    Immortal() { ::new (m_aStorage) Object; }
    Immortal(const Immortal&) = delete;
    Immortal& operator=(const Immortal&) = delete;

    Object& operator*() noexcept { return *std::launder(reinterpret_cast<Object*>(m_aStorage)); }

private:
    alignas(Object) unsigned char m_aStorage[sizeof(Object)];
};
