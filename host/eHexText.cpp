#include "eHexText.hpp"

int HexDigitValue(char digit)
{
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

std::string FormatHexBytes(unsigned char const* bytes, std::size_t count, std::string const& separator)
{
    static char const kDigits[] = "0123456789abcdef";
    std::string text;
    if (count == 0) return text;
    text.reserve(count * (2 + separator.size()) - separator.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) text += separator;
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 0xF];
    }
    return text;
}

bool ParseHexBytes(std::string const& text, unsigned char* bytes, std::size_t count)
{
    char separator = '\0';
    std::size_t position = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) {
            if (position == text.size()) return false;
            char const found = text[position++];
            if (i == 1 && (found == ':' || found == '-')) separator = found;
            if (separator == '\0' || found != separator) return false;
        }
        unsigned int value = 0;
        std::size_t digits = 0;
        for (; digits < 2 && position < text.size(); ++digits, ++position) {
            int const digit = HexDigitValue(text[position]);
            if (digit < 0) break;
            value = value << 4 | static_cast<unsigned int>(digit);
        }
        if (digits == 0) return false;
        bytes[i] = static_cast<unsigned char>(value);
    }
    return position == text.size();
}
