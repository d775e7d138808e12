#pragma once

#include "kernelSnapshot.hpp"

#include "eBlob.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"

namespace ifcoreTool {

inline EIPAddress AsAddress(KernelIP const& address)
{
    EIPAddress result;
    result.SetAddress(address.bytes.data(), address.GetSize(), address.isIPv6 ? EIPAddress::kIPv6 : EIPAddress::kIPv4);
    return result;
}

inline EMACAddress AsMac(KernelMac const& mac)
{
    EMACAddress result;
    result.SetMACAddress(EBlob(mac.data(), static_cast<unsigned int>(mac.size())));
    return result;
}

} // namespace ifcoreTool
