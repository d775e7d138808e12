#pragma once

#include "eArchiveOperators.hpp"
#include "eBlob.hpp"
#include "ifcoreExport.hpp"

/// One free-form option: a DHCP option (RFC 2132), a DHCPv6 option or a FIP descriptor, whichever list it stands in.
class IFCORE_API EDHCPTLV {
public:
    EDHCPTLV() = default;
    EDHCPTLV(EDHCPTLV const&) = default;
    EDHCPTLV(EDHCPTLV&&) = default;
    ~EDHCPTLV() = default;
    EDHCPTLV& operator=(EDHCPTLV const& other)
    {
        if (this != &other) Copy(other);
        return *this;
    }
    EDHCPTLV& operator=(EDHCPTLV&&) = default;
    void Copy(EDHCPTLV const& other);
    bool operator!=(EDHCPTLV const& other) const;

    unsigned char GetType() const { return m_values.type; }
    void SetType(unsigned char type) { m_values.type = type; }
    EBlob const& GetValue() const { return m_values.value; }
    void SetValue(EBlob const& value) { m_values.value = value; }

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< An unknown version ends the process.

private:
    struct Values {
        unsigned char type = 0; // option code
        EBlob value;            // opaque
    };
    Values m_values;
};
