#pragma once

/// The family codes of EIPAddress.
constexpr unsigned int kIPv4Family = 17;
constexpr unsigned int kIPv6Family = 18;
