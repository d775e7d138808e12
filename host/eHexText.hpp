#pragma once

#include <cstddef>
#include <string>

/// The value of a hexadecimal digit, -1 for any other character.
int HexDigitValue(char digit);
/// Two lower-case digits a byte with \p separator between the bytes.
std::string FormatHexBytes(unsigned char const* bytes, std::size_t count, std::string const& separator);
/// Reads exactly \p count groups of one or two digits that are all joined by ":" or all by "-". False for any other
/// text.
bool ParseHexBytes(std::string const& text, unsigned char* bytes, std::size_t count);
