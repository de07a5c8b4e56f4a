// Tables of what stands for what:
//
//     constexpr Row<int, DWORD> s_aErrors[] = {{EACCES, WSAEACCES}, ...};
//     return ValueOf(s_aErrors, errno, WSAENETDOWN);
#pragma once

#include <cstddef>
#include <type_traits>

template <class Key, class Value>
struct Row
{
    Key key;
    Value value;
};

// The value of the first row with the key, or the other one.
template <class Key, class Value, std::size_t nRows>
constexpr Value ValueOf(const Row<Key, Value> (&aRows)[nRows], std::type_identity_t<Key> key,
                        std::type_identity_t<Value> otherwise)
{
    for (const auto& oRow : aRows)
        if (oRow.key == key)
            return oRow.value;
    return otherwise;
}
