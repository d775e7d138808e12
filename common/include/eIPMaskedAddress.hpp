#pragma once

#include "eIPAddress.hpp"
#include "ifhostExport.hpp"

#include <limits>

/// An address with a prefix length. The default is IPv4 0.0.0.0 under a mask of ones.
class IFHOST_API EIPMaskedAddress : public EIPAddress {
public:
    EIPMaskedAddress() = default;
    explicit EIPMaskedAddress(EIPAddress const& address) : EIPAddress(address) {}

    /// In bits. Kept as given; more than the address has stands for all of them.
    void SetMaskPrefixNumber(unsigned int bits) { m_prefix = bits; }
    /// The number as given.
    unsigned int GetMaskPrefixNumber() const { return m_prefix; }
    /// The address with the bits behind the prefix cleared. The family is that of the moment of the call, so prefix
    /// and address may be set in any order.
    EIPAddress GetNetworkAddress() const;

private:
    unsigned int m_prefix = std::numeric_limits<unsigned int>::max(); // bits
};
