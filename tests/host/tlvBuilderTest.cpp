#include "allocations.hpp"

#include "tlvBuilder.hpp"

#include "eBlob.hpp"
#include "eComponentId.hpp"
#include "eIPAddress.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <new>
#include <string>

using Protocol::EBytes;
using TLVIds::InterfaceTable::IFD_Name; // number 5

static std::string HexOf(EBytes const& bytes)
{
    return EBlob(bytes.data(), static_cast<unsigned int>(bytes.size())).GetHexString();
}

struct AppenderCase {
    char const* what;
    std::function<void(EBytes&)> append;
    char const* hex;
};

/// One case for each form of value and its ends.
static std::vector<AppenderCase> const& AppenderCases()
{
    static std::vector<AppenderCase> const cases = {
        {"id", [](EBytes& out) { Protocol::TLVAppendId(out, IFD_Name); }, "00000005"},
        {"id above one byte", [](EBytes& out) { Protocol::TLVAppendId(out, TLVIds::InterfaceTable::PTP_Priority1); },
         "00000078"},
        {"int 1", [](EBytes& out) { Protocol::AppendIntTLV(out, IFD_Name, 1); }, "000000050000000400000001"},
        {"int -1", [](EBytes& out) { Protocol::AppendIntTLV(out, IFD_Name, -1); }, "0000000500000004ffffffff"},
        {"int min", [](EBytes& out) { Protocol::AppendIntTLV(out, IFD_Name, INT_MIN); }, "000000050000000480000000"},
        {"uint", [](EBytes& out) { Protocol::AppendUnsignedIntTLV(out, IFD_Name, 0x01020304); },
         "000000050000000401020304"},
        {"uint max", [](EBytes& out) { Protocol::AppendUnsignedIntTLV(out, IFD_Name, UINT_MAX); },
         "0000000500000004ffffffff"},
        {"string", [](EBytes& out) { Protocol::AppendStringTLV(out, IFD_Name, "eth0"); }, "000000050000000465746830"},
        {"empty string", [](EBytes& out) { Protocol::AppendStringTLV(out, IFD_Name, ""); }, "0000000500000000"},
        {"string with a zero byte",
         [](EBytes& out) { Protocol::AppendStringTLV(out, IFD_Name, std::string("\0\xFF", 2)); },
         "000000050000000200ff"},
        {"IPv4", [](EBytes& out) { Protocol::AppendIPTLV(out, IFD_Name, EIPAddress("192.0.2.1")); },
         "0000000500000004c0000201"},
        {"no address", [](EBytes& out) { Protocol::AppendIPTLV(out, IFD_Name, EIPAddress()); },
         "000000050000000400000000"},
        {"IPv6", [](EBytes& out) { Protocol::AppendIPTLV(out, IFD_Name, EIPAddress("2001:db8::1")); },
         "000000050000001020010db8000000000000000000000001"},
        {"component id",
         [](EBytes& out) {
             Protocol::AppendCompIdTLV(out, IFD_Name, {7, 1, 0x01020304});
         },
         "000000050000000c000000070000000101020304"},
        {"empty component id", [](EBytes& out) { Protocol::AppendCompIdTLV(out, IFD_Name, EComponentId()); },
         "0000000500000000"},
    };
    return cases;
}

TEST(TLVBuilder, AppendersWriteIdLengthAndValueBigEndian)
{
    for (AppenderCase const& c : AppenderCases()) {
        SCOPED_TRACE(c.what);
        EBytes message;
        c.append(message);
        EXPECT_EQ(c.hex, HexOf(message));
    }
}

TEST(TLVBuilder, AppendersKeepWhatTheMessageHolds)
{
    EBytes message = {'a', 'b'};
    std::string expected = "6162";
    for (AppenderCase const& c : AppenderCases()) {
        SCOPED_TRACE(c.what);
        message.shrink_to_fit(); // so that each of them has to move the message
        c.append(message);
        expected += c.hex;
        EXPECT_EQ(expected, HexOf(message));
    }
}

TEST(TLVBuilder, AnAppenderThatFailsLeavesTheMessageAsItWas)
{
    for (AppenderCase const& c : AppenderCases()) {
        SCOPED_TRACE(c.what);
        bool done = false;
        for (long granted = 0; !done; ++granted) { // the one allocation number `granted` fails, until there is none
            EBytes message = {'a', 'b'};
            message.shrink_to_fit();
            s_allocationsLeft = granted;
            try {
                c.append(message);
                done = true;
            } catch (std::bad_alloc const&) {
            }
            s_allocationsLeft = -1;
            EXPECT_EQ(done ? "6162" + std::string(c.hex) : "6162", HexOf(message)) << granted;
            EXPECT_TRUE(granted > 0 || !done); // otherwise nothing was tried
        }
    }
}
