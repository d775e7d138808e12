#include "eArchive.hpp"

#include "eBlob.hpp"

#include <algorithm>
#include <new>

/// Bytes. Blocks from this size on are those of realloc: they mostly grow where they are, or move as whole pages, and
/// what is written is not copied again and again.
static std::size_t const kLarge = 64U << 10;

EArchiveError::EArchiveError(std::size_t offset, std::string const& wanted, std::string const& found)
    : std::runtime_error("archive offset " + std::to_string(offset) + ": wanted " + wanted + ", found " + found),
      m_offset(offset)
{
}

EArchiveError::~EArchiveError() = default;

EArchive::EArchive(EArchive const& other)
{
    Reserve(other.m_size);
    std::memcpy(m_data, other.m_data, other.m_size);
    m_size = other.m_size;
    m_position = other.m_position;
    m_storing = other.m_storing;
    SetLimits();
}

EArchive::EArchive(EArchive&& other) noexcept
{
    *this = std::move(other);
}

EArchive& EArchive::operator=(EArchive const& other)
{
    if (this != &other) *this = EArchive(other);
    return *this;
}

EArchive& EArchive::operator=(EArchive&& other) noexcept
{
    if (this == &other) return *this;
    if (m_data != m_local) ReleaseHeap();
    if (other.m_data == other.m_local) {
        m_data = m_local;
        std::memcpy(m_local, other.m_local, other.m_size);
    } else {
        m_data = std::exchange(other.m_data, other.m_local);
    }
    m_capacity = std::exchange(other.m_capacity, kLocalCapacity);
    m_size = std::exchange(other.m_size, 0);
    m_position = std::exchange(other.m_position, 0);
    m_storing = std::exchange(other.m_storing, true);
    SetLimits();
    other.SetLimits();
    return *this;
}

void EArchive::SetFromEBlob(EBlob const& blob, bool replace)
{
    std::size_t const start = replace ? 0 : m_size;
    Reserve(start + blob.GetSize());
    if (blob.GetSize() > 0) std::memcpy(m_data + start, blob.GetData(), blob.GetSize());
    m_size = start + blob.GetSize();
    if (replace) m_position = 0;
    SetLimits();
}

void EArchive::SetMode(int mode)
{
    if (mode != 1 && mode != 2) throw std::invalid_argument("archive mode " + std::to_string(mode));
    m_storing = mode == 1;
    m_position = 0;
    SetLimits();
}

EBlob EArchive::GetAsEBlob() const
{
    if (m_size > std::numeric_limits<unsigned int>::max()) throw std::length_error("an archive of more than 4 GiB");
    return EBlob(m_data, static_cast<unsigned int>(m_size));
}

void EArchive::Fail(std::size_t offset, std::string const& wanted, std::string const& found)
{
    m_position = offset;
    throw EArchiveError(offset, wanted, found);
}

unsigned long EArchive::ReadWidePattern(unsigned long largest, char const* type)
{
    if (m_position == m_readLimit) {
        if (m_storing) return 0;
        FailPattern(largest, type, 0, 0);
    }
    unsigned char const* const bytes = m_data + m_position;
    std::size_t const present = m_readLimit - m_position - 1; // behind the first
    unsigned int const width = bytes[0] > kLargestSingle ? bytes[0] - kLargestSingle : 0;
    unsigned long pattern = bytes[0];
    if (width > 0) {
        if (present >= sizeof pattern) { // one load, whatever the width
            std::memcpy(&pattern, bytes + 1, sizeof pattern);
            pattern = be64toh(pattern) >> (64 - 8 * width);
        } else {
            if (present < width) FailPattern(largest, type, width, 0);
            pattern = 0;
            for (unsigned int i = 1; i <= width; ++i) pattern = pattern << 8 | bytes[i];
        }
    }
    if (pattern < LeastPattern(width) || pattern > largest) FailPattern(largest, type, width, pattern);
    m_position += 1 + width;
    return pattern;
}

/// Says why the integer at the position cannot be read: \p width bytes behind the first, which make \p pattern.
void EArchive::FailPattern(unsigned long largest, char const* type, unsigned int width, unsigned long pattern)
{
    std::size_t const start = m_position;
    if (AtEnd()) Fail(start, type, "the end");
    std::size_t const present = GetRemaining() - 1;
    if (present < width)
        Fail(start, type, std::to_string(present) + " of the " + std::to_string(width) + " bytes of a number");
    if (pattern < LeastPattern(width))
        Fail(start, type, std::to_string(pattern) + " in a form longer than its shortest");
    Fail(start, std::string(type) + " of at most " + std::to_string(largest), std::to_string(pattern));
}

void EArchive::FailCount(std::size_t offset, unsigned long count)
{
    Fail(offset, "a count of at most the " + std::to_string(GetRemaining()) + " bytes that remain",
         std::to_string(count));
}

unsigned char const* EArchive::FailBytes(std::size_t count)
{
    if (m_storing) return nullptr;
    Fail(m_position, std::to_string(count) + " bytes", std::to_string(GetRemaining()));
}

bool EArchive::MakeRoom(std::size_t count)
{
    if (!m_storing) return false;
    Reserve(std::max(m_size + count, 2 * m_capacity));
    SetLimits();
    return true;
}

void EArchive::ReleaseHeap() noexcept
{
    if (m_capacity < kLarge)
        delete[] m_data;
    else
        std::free(m_data);
}

void EArchive::Reserve(std::size_t capacity)
{
    if (capacity <= m_capacity) return;
    bool const isLarge = m_capacity >= kLarge;
    void* const data =
        capacity < kLarge ? new unsigned char[capacity] : std::realloc(isLarge ? m_data : nullptr, capacity);
    if (!data) throw std::bad_alloc();
    if (!isLarge) {
        std::memcpy(data, m_data, m_size);
        if (m_data != m_local) ReleaseHeap();
    }
    m_data = static_cast<unsigned char*>(data);
    m_capacity = capacity;
}

void EArchive::SetLimits()
{
    m_writeLimit = m_storing ? m_capacity : 0;
    m_readLimit = m_storing ? 0 : m_size;
}
