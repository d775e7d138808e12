#pragma once

#include "eFormatUtils.hpp"

#include <string>

// What the Fibre Channel records share.

/// Whether any of the bits is set.
template <class Word> bool HasBits(Word word, Word bits)
{
    return (word & bits) != 0;
}
/// The word with these bits set or cleared; its other bits stay, those without a meaning too.
template <class Word> Word WithBits(Word word, Word bits, bool set)
{
    return static_cast<Word>(set ? word | bits : word & ~bits);
}

/// An address identifier or an OUI: its 3 bytes, "01.b6.69". Higher bits are not shown.
inline std::string ThreeBytesAsString(unsigned int value)
{
    return EFormatUtils::GetEDWORDAsFormattedString(value, 3, ".");
}
