#include "eIPMaskedAddress.hpp"

EIPAddress EIPMaskedAddress::GetNetworkAddress() const
{
    std::array<unsigned char, 16> network = {};
    for (unsigned int i = 0; i < network.size(); ++i) { // the bytes behind an IPv4 address are zero anyway
        unsigned int const bits = m_prefix <= 8 * i ? 0 : m_prefix - 8 * i;
        unsigned int const mask = bits >= 8 ? 0xFFU : 0xFF00U >> bits;
        network[i] = static_cast<unsigned char>(GetBytes()[i] & mask);
    }
    EIPAddress address;
    address.SetAddress(network.data(), GetFamily());
    return address;
}
