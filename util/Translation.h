// Tables of what stands for what in another world: error numbers, texts of errors.
//
//     constexpr Translation<int, DWORD> s_aErrors[] = {{EACCES, WSAEACCES}, ...};
//     return Translate(s_aErrors, errno, WSAENETDOWN);
//
// The first row that fits counts.
#pragma once

#include <cstddef>
#include <type_traits>

template <class From, class To>
struct Translation
{
    From from;
    To to;
};

// The other value is for what has no row.
template <class From, class To, std::size_t nRows>
constexpr To Translate(const Translation<From, To> (&aRows)[nRows], std::type_identity_t<From> from,
                       std::type_identity_t<To> otherwise)
{
    for (const auto& oRow : aRows)
        if (oRow.from == from)
            return oRow.to;
    return otherwise;
}

template <class From, class To, std::size_t nRows>
constexpr From TranslateBack(const Translation<From, To> (&aRows)[nRows], std::type_identity_t<To> to,
                             std::type_identity_t<From> otherwise)
{
    for (const auto& oRow : aRows)
        if (oRow.to == to)
            return oRow.from;
    return otherwise;
}
