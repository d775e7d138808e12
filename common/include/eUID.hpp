#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <string>
#include <utility>

/// A unique identifier of 64 bits (EUI-64, or a Fibre Channel world wide name), by default 0.
class IFHOST_API EUID {
public:
    EUID() = default;
    explicit EUID(unsigned long id) : m_id(id) {}
    /// Eight groups of one or two hexadecimal digits with ":" or with "-" between them, most significant byte first;
    /// anything else throws std::invalid_argument.
    explicit EUID(std::string const& text);

    void Empty() { m_id = 0; }
    void Swap(EUID& other) noexcept { std::swap(m_id, other.m_id); }
    /// The 8 bytes of the number as they lie in memory; never null here.
    unsigned char const* GetId() const { return reinterpret_cast<unsigned char const*>(&m_id); }
    unsigned long GetAsUint64() const { return m_id; }
    /// "00:11:22:33:44:55:66:77", most significant byte first.
    std::string GetAsString() const;
    bool operator==(EUID const& other) const { return m_id == other.m_id; }
    bool operator!=(EUID const& other) const { return m_id != other.m_id; }

private:
    unsigned long m_id = 0;
};

/// The number as `unsigned long`.
inline EArchive& operator<<(EArchive& archive, EUID const& uid)
{
    return archive << uid.GetAsUint64();
}
inline EArchive& operator>>(EArchive& archive, EUID& uid)
{
    unsigned long id = 0;
    archive >> id;
    uid = EUID(id);
    return archive;
}
