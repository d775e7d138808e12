#include "eArchive.hpp"

#include "eBlob.hpp"

#include <algorithm>
#include <new>

/// Bytes. Blocks from this size on are those of realloc: they mostly grow where they are, or move as whole pages, and
/// what is written is not copied again and again.
static std::size_t const kLarge = 64U << 10;

/// The least integer that takes \p width bytes behind the first.
static unsigned long LeastPattern(unsigned int width)
{
    static unsigned long const kLeast[] = {0,         0xF8,      1UL << 8,  1UL << 16, 1UL << 24,
                                           1UL << 32, 1UL << 40, 1UL << 48, 1UL << 56};
    return kLeast[width];
}

EArchiveError::EArchiveError(std::size_t offset, std::string const& wanted, std::string const& found)
    : std::runtime_error("archive offset " + std::to_string(offset) + ": wanted " + wanted + ", found " + found),
      m_offset(offset)
{
}

EArchiveError::~EArchiveError() = default;

EArchive::EArchive(EArchive const& other)
{
    std::size_t const size = other.GetSize();
    Reserve(size + kReserve);
    std::memcpy(m_begin, other.m_begin, size);
    m_storing = other.m_storing;
    Place(size, other.GetOffset());
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
    if (m_begin != m_local) ReleaseHeap();
    std::size_t const size = other.GetSize();
    std::size_t const position = other.GetOffset();
    if (other.m_begin == other.m_local) {
        m_begin = m_local;
        std::memcpy(m_local, other.m_local, size);
    } else {
        m_begin = std::exchange(other.m_begin, other.m_local);
    }
    m_capacity = std::exchange(other.m_capacity, kLocalCapacity);
    m_storing = std::exchange(other.m_storing, true);
    Place(size, position);
    other.Place(0, 0);
    return *this;
}

void EArchive::SetFromEBlob(EBlob const& blob, bool replace)
{
    std::size_t const start = replace ? 0 : GetSize();
    std::size_t const size = start + blob.GetSize();
    Reserve(size + kReserve);
    if (blob.GetSize() > 0) std::memcpy(m_begin + start, blob.GetData(), blob.GetSize());
    Place(size, replace ? 0 : GetOffset());
}

void EArchive::SetMode(int mode)
{
    if (mode != 1 && mode != 2) throw std::invalid_argument("archive mode " + std::to_string(mode));
    std::size_t const size = GetSize();
    m_storing = mode == 1;
    Place(size, 0);
}

EBlob EArchive::GetAsEBlob() const
{
    std::size_t const size = GetSize();
    if (size > std::numeric_limits<unsigned int>::max()) throw std::length_error("an archive of 4 GiB or more");
    return EBlob(m_begin, static_cast<unsigned int>(size));
}

void EArchive::Fail(std::size_t offset, std::string const& wanted, std::string const& found)
{
    if (!m_storing) m_read = m_begin + offset;
    throw EArchiveError(offset, wanted, found);
}

/// Of an integer that begins in the last bytes, or has no wide form; and of an archive that is being written, 0.
unsigned long EArchive::ReadLastPattern(unsigned long largest, char const* type)
{
    if (m_storing) return 0;
    if (AtEnd()) FailPattern(largest, type, 0, 0);
    unsigned int const width = *m_read > kLargestSingle ? *m_read - kLargestSingle : 0;
    if (GetRemaining() <= width) FailPattern(largest, type, width, 0);
    unsigned long pattern = width == 0 ? *m_read : 0;
    for (unsigned int i = 1; i <= width; ++i) pattern = pattern << 8 | m_read[i];
    if (pattern < LeastPattern(width) || pattern > largest) FailPattern(largest, type, width, pattern);
    m_read += 1 + width;
    return pattern;
}

/// Says why the integer at the position cannot be read: \p width bytes behind the first, which make \p pattern.
void EArchive::FailPattern(unsigned long largest, char const* type, unsigned int width, unsigned long pattern)
{
    std::size_t const start = GetOffset();
    if (AtEnd()) Fail(start, type, "the end");
    std::size_t const present = GetRemaining() - 1;
    if (present < width)
        Fail(start, type, std::to_string(present) + " of the " + std::to_string(width) + " bytes of a number");
    if (pattern < LeastPattern(width))
        Fail(start, type, std::to_string(pattern) + " in a form longer than its shortest");
    Fail(start, std::string(type) + " of at most " + std::to_string(largest), std::to_string(pattern));
}

void EArchive::FailCount(unsigned char const* start, unsigned long count)
{
    Fail(static_cast<std::size_t>(start - m_begin),
         "a count of at most the " + std::to_string(GetRemaining()) + " bytes that remain", std::to_string(count));
}

unsigned char const* EArchive::FailBytes(std::size_t count)
{
    if (m_storing) return nullptr;
    Fail(GetOffset(), std::to_string(count) + " bytes", std::to_string(GetRemaining()));
}

bool EArchive::MakeRoom(std::size_t count)
{
    if (!m_storing) return false;
    std::size_t const least = GetSize() + count + kReserve;
    // A large block may have to be copied to grow: seldom, then. What is not written of it takes no memory, but where
    // address space is scarce less may do.
    std::size_t const ample = (m_capacity < kLarge ? 2 : 4) * m_capacity;
    for (std::size_t capacity = std::max(least, ample);; capacity = std::max(least, capacity / 2)) {
        try {
            Reserve(capacity);
            return true;
        } catch (std::bad_alloc const&) {
            if (capacity == least || capacity < kLarge) throw;
        }
    }
}

void EArchive::ReleaseHeap() noexcept
{
    if (m_capacity < kLarge)
        delete[] m_begin;
    else
        std::free(m_begin);
}

void EArchive::Reserve(std::size_t capacity)
{
    if (capacity <= m_capacity) return;
    std::size_t const size = GetSize();
    std::size_t const position = GetOffset();
    bool const isLarge = m_capacity >= kLarge;
    void* const data =
        capacity < kLarge ? new unsigned char[capacity] : std::realloc(isLarge ? m_begin : nullptr, capacity);
    if (!data) throw std::bad_alloc();
    if (!isLarge) {
        std::memcpy(data, m_begin, size);
        if (m_begin != m_local) ReleaseHeap();
    }
    m_begin = static_cast<unsigned char*>(data);
    m_capacity = capacity;
    Place(size, position);
}

void EArchive::Place(std::size_t size, std::size_t position)
{
    m_next = m_storing ? m_begin + size : m_begin;
    m_writeEnd = m_storing ? m_begin + (m_capacity - kReserve) : m_begin;
    m_read = m_storing ? &m_nothing : m_begin + position;
    m_readEnd = m_storing ? &m_nothing : m_begin + size;
    if (!m_storing) m_begin[size] = kNothing;
}
