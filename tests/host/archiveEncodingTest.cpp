#include "hostTestSupport.hpp"

#include "eComponentId.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"

// The example of docs/archive-encoding.md.
TEST(ArchiveEncoding, TheExampleOfTheDocumentation)
{
    EVLANIPAddressTableItemProperties vlans(2, true);
    vlans.SetVlanTag(0xB064, 0);
    vlans.SetVlanTag(0x0007, 1);
    EXPECT_EQ("03"
              "fbffffffff"
              "01"
              "f90578"
              "0465746830"
              "11c0000201"
              "f8005e005301"
              "ff2000000000000001"
              "030701f9012c"
              "0102f9b06407"
              "02abcd",
              Written(3U, -1, true, static_cast<unsigned short>(1400), std::string("eth0"), EIPAddress("192.0.2.1"),
                      EMACAddress("f8:00:5e:00:53:01"), EUID("20:00:00:00:00:00:00:01"), EComponentId{7, 1, 300}, vlans,
                      BytesOf("abcd")));
}
