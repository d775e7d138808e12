#include "eBlob.hpp"

#include "eHexText.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

EBlob::EBlob(void const* bytes, unsigned int count)
{
    if (bytes)
        m_bytes.assign(static_cast<char const*>(bytes), count); // not cleared first
    else
        m_bytes.resize(count);
}

void EBlob::SetSize(unsigned int size, bool keep)
{
    if (!keep) m_bytes.clear();
    m_bytes.resize(size);
}

void EBlob::Memset(unsigned char value, unsigned int offset, unsigned int count)
{
    unsigned int const start = std::min(offset, GetSize());
    std::fill_n(m_bytes.begin() + start, std::min(count, GetSize() - start), static_cast<char>(value));
}

void EBlob::GetAt(EBlob& out, unsigned int offset, unsigned int count) const
{
    unsigned int const start = std::min(offset, GetSize());
    std::string range(m_bytes, start, count);
    out.m_bytes = std::move(range);
}

void EBlob::RemoveLeadingBytes(unsigned int count)
{
    m_bytes.erase(0, count);
}

std::string EBlob::GetHexString() const
{
    return FormatHexBytes(GetData(), GetSize(), "");
}

static bool IsWhiteSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool EBlob::SetHexString(std::string const& text)
{
    std::size_t position = 0;
    while (position < text.size() && IsWhiteSpace(text[position])) ++position;
    if (text.compare(position, 2, "0x") == 0 || text.compare(position, 2, "0X") == 0) position += 2;

    std::vector<unsigned char> digits;
    for (; position < text.size(); ++position) {
        char const character = text[position];
        int const digit = HexDigitValue(character);
        if (digit >= 0)
            digits.push_back(static_cast<unsigned char>(digit));
        else if (character != ':' && character != '.' && character != '-' && !IsWhiteSpace(character))
            break;
    }

    if (digits.size() % 2 != 0) digits.insert(digits.begin(), 0);
    m_bytes.resize(digits.size() / 2);
    for (std::size_t i = 0; i < m_bytes.size(); ++i)
        m_bytes[i] = static_cast<char>(digits[2 * i] << 4 | digits[2 * i + 1]);
    return position == text.size();
}

EArchive& operator<<(EArchive& archive, EBlob const& blob)
{
    archive << static_cast<unsigned long>(blob.GetSize());
    return archive.WriteBytes(blob.GetData(), blob.GetSize());
}

EArchive& operator>>(EArchive& archive, EBlob& blob)
{
    std::size_t const start = archive.GetOffset();
    std::size_t const size = archive.ReadCount();
    unsigned int const most = std::numeric_limits<unsigned int>::max();
    if (size > most) archive.Fail(start, "a blob of at most " + std::to_string(most) + " bytes", std::to_string(size));
    blob = EBlob(archive.ReadBytes(size), static_cast<unsigned int>(size));
    return archive;
}
