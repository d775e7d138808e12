#pragma once

#include "eArchive.hpp"

#include <string>

class MINIMAL_HOST_API EUID {
public:
    EUID() = default;
    explicit EUID(unsigned long id) : m_id(id) {}

    void Empty() { m_id = 0; }
    void Swap(EUID& other);
    unsigned char const* GetId() const { return nullptr; } // a host may have none to point at
    unsigned long GetAsUint64() const { return m_id; }
    std::string GetAsString() const;
    bool operator==(EUID const& other) const { return m_id == other.m_id; }
    bool operator!=(EUID const& other) const { return m_id != other.m_id; }

private:
    unsigned long m_id = 0;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EUID const& uid);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EUID& uid);
