#pragma once

/// The operations of a change stream by their codes. Part of the format.
enum EDiscoveredOperation : unsigned int {
    REPLACE_TABLE = 0,
    ADD_INFO = 1,
    REMOVE_INFO = 2,
    SET_INFO = 3,
    SET_INTERFACE_UP = 4,
    ADD_ADDRESS = 5,
    REMOVE_ADDRESS = 6,
    ADD_NEIGHBOR = 7,
    REMOVE_NEIGHBOR = 8,
    SET_NEIGHBOR = 9,
    SET_NEIGHBOR_IS_ROUTER = 10,
    SET_NEIGHBOR_MAC = 11,
    ADD_NEIGHBOR_ADDRESS = 12,
    REMOVE_NEIGHBOR_ADDRESS = 13,
    SET_DHCP_INFO = 14,
    SET_DHCPV6_INFO = 15,
    SET_FCOE_INFO = 16,
    SET_PTP_INFO = 17,
    SET_DCBX_INFO = 18
};
