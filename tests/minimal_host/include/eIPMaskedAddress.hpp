#pragma once

#include "eIPAddress.hpp"

class MINIMAL_HOST_API EIPMaskedAddress : public EIPAddress {
public:
    void SetMaskPrefixNumber(unsigned int bits) { m_prefix = bits; }
    EIPAddress GetNetworkAddress() const;

private:
    unsigned int m_prefix = 0;
};
