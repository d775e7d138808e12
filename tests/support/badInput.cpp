#include "badInput.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>

static std::string BigEndian(unsigned long number, unsigned int width)
{
    std::string bytes;
    for (unsigned int i = width; i > 0; --i) bytes += static_cast<char>(number >> 8 * (i - 1) & 0xFF);
    return bytes;
}

static std::string NumberBytes(unsigned long number, Numbers numbers)
{
    if (numbers == Numbers::four) return BigEndian(number, number > 0xFFFFFFFF ? 8 : 4);
    if (number <= 0xF7) return BigEndian(number, 1);
    unsigned int width = 1;
    while (width < 8 && number >> 8 * width != 0) ++width;
    return BigEndian(0xF7 + width, 1) + BigEndian(number, width);
}

/// Bytes of the number at \p offset; those that are there when it is cut off.
static std::size_t NumberWidth(std::string const& good, std::size_t offset, Numbers numbers)
{
    auto const first = static_cast<unsigned char>(good[offset]);
    std::size_t const archived = first > 0xF7 ? first - 0xF7 + 1U : 1U;
    return std::min(numbers == Numbers::four ? 4 : archived, good.size() - offset);
}

namespace {

class Series {
public:
    Series(std::string const& good, Numbers numbers, std::function<void(BadInput const&)> const& check)
        : m_good(good), m_numbers(numbers), m_check(check)
    {
    }
    std::size_t Run()
    {
        for (std::size_t offset = 0; offset < m_good.size() && !m_failed; ++offset) {
            m_atOffset = {m_good};
            Check({m_good.substr(0, offset), offset, true});
            ReplaceByte(offset);
            ReplaceNumber(offset);
        }
        return m_calls;
    }

private:
    void ReplaceByte(std::size_t offset)
    {
        for (unsigned int const value : {0x00U, 0x7FU, 0x80U, 0xFFU})
            Replace(offset, 1, std::string(1, static_cast<char>(value)));
        for (unsigned int bit = 0; bit < 8; ++bit)
            Replace(offset, 1, std::string(1, static_cast<char>(m_good[offset] ^ 1 << bit)));
    }
    void ReplaceNumber(std::size_t offset)
    {
        std::size_t const width = NumberWidth(m_good, offset, m_numbers);
        unsigned long const behind = m_good.size() - offset - width;
        for (unsigned long const number : {0UL, 255UL, 0x7FFFFFFFUL, 0xFFFFFFFFUL,
                                           std::numeric_limits<unsigned long>::max(), behind - 1, behind, behind + 1}) {
            std::string const bytes = NumberBytes(number, m_numbers);
            Replace(offset, m_numbers == Numbers::four ? bytes.size() : width, bytes);
        }
    }
    void Replace(std::size_t offset, std::size_t count, std::string const& bytes)
    {
        std::string changed = m_good;
        changed.replace(offset, count, bytes);
        if (m_atOffset.insert(changed).second) Check({std::move(changed), offset, false});
    }
    void Check(BadInput const& input)
    {
        if (m_failed) return;
        ++m_calls;
        try {
            m_check(input);
        } catch (std::exception const& error) {
            ADD_FAILURE() << "exception: " << error.what();
        } catch (int error) {
            ADD_FAILURE() << "exception: int " << error;
        }
        m_failed = testing::Test::HasFailure();
        if (m_failed) ADD_FAILURE() << "offset " << input.offset << (input.isCut ? ", cut: " : ": ") << Hex(input);
    }
    static std::string Hex(BadInput const& input)
    {
        static char const* const digits = "0123456789abcdef";
        std::string hex;
        for (char const c : input.bytes) {
            hex += digits[static_cast<unsigned char>(c) >> 4];
            hex += digits[c & 0xF];
        }
        return hex;
    }

    std::string const& m_good;
    Numbers m_numbers;
    std::function<void(BadInput const&)> const& m_check;
    std::set<std::string> m_atOffset; // the good input, and what was checked at this offset
    std::size_t m_calls = 0;
    bool m_failed = false;
};

} // namespace

std::size_t ForEachBadInput(std::string const& good, Numbers numbers, std::function<void(BadInput const&)> const& check)
{
    return Series(good, numbers, check).Run();
}

std::vector<std::string> GoldenNames(std::string const& folder)
{
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(IFCORE_GOLDEN_DIR "/" + folder))
        if (entry.path().extension() == ".hex") names.push_back(folder + entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
