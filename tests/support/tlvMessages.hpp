#pragma once

#include "interfaceSamples.hpp"

#include "eInterfaceTLVParser.hpp"
#include "tlvBuilder.hpp"
#include "tlvParserMapTable.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// Messages of TLVs, how they are read, and what they leave behind.

/// Before the first test: fills the parser maps and takes this host's ids for those of the sender.
class TlvEnvironment : public testing::Environment {
    void SetUp() override
    {
        Protocol::RunTLVParserMapInitializers();
        Protocol::UseOwnTLVIds();
    }
};
inline testing::Environment* const tlvEnvironment = testing::AddGlobalTestEnvironment(new TlvEnvironment);

/// Other names for the numbers in messages, as long as it lives.
class SenderNames {
public:
    explicit SenderNames(std::vector<char const*> names) : m_saved(std::move(names))
    {
        m_saved.swap(TLVReader::external_tlv_table);
    }
    SenderNames(SenderNames const&) = delete;
    SenderNames& operator=(SenderNames const&) = delete;
    ~SenderNames() { m_saved.swap(TLVReader::external_tlv_table); }

private:
    std::vector<char const*> m_saved;
};

/// 4 bytes, big-endian.
inline std::string U32(unsigned int value)
{
    std::string bytes;
    for (int const shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

/// A TLV of any number whose length need not be that of its value.
inline std::string RawTlv(unsigned int number, unsigned int length, std::string const& value)
{
    return U32(number) + U32(length) + value;
}

inline std::string Tlv(TLVIds::TLVId const& id, std::string const& value = std::string())
{
    return RawTlv(id.GetIndex(), static_cast<unsigned int>(value.size()), value);
}

inline void Parse(TLVReader& message, EInterfaceItem& interface)
{
    Protocol::ParseInterfaceTLV(message, interface);
}
inline void Parse(TLVReader& message, EInterfaceTable& table)
{
    ParseInterfaceListTLV(message, table);
}

/// Reads a message from memory that ends where it ends. 0, or the parse error; the reader must stay where it is.
template <class Target> int ParsedInto(std::string const& message, Target& target)
{
    std::vector<char> const bytes(message.begin(), message.end());
    int context = 0;
    TLVReader reader(bytes.data(), static_cast<int>(bytes.size()), &context);
    int error = 0;
    try {
        Parse(reader, target);
    } catch (int thrown) {
        error = thrown;
    }
    EXPECT_EQ(static_cast<int>(bytes.size()), reader.remaining);
    EXPECT_EQ(static_cast<void const*>(bytes.data()), reader.position);
    EXPECT_EQ(&context, reader.context);
    EXPECT_EQ(nullptr, reader.buffer);
    return error;
}

/// What was told, as "operation(new values)".
inline std::vector<std::string> Told(Recorder const& recorder)
{
    std::vector<std::string> told;
    for (Recorder::Call const& call : recorder.calls) told.push_back(call.operation + "(" + call.values + ")");
    return told;
}

/// All that messages can change in an interface: Summary and the addresses.
inline std::string Contents(EInterfaceItem const& item)
{
    EIPv4AddressItem const& ipv4 = item.GetIPv4AddressItem();
    std::string text = Summary(item) + (item.IsDHCPEnabled() ? "; dhcp on" : "; dhcp off") + "; ipv4 " +
                       (ipv4.IsEnabled() ? "on " : "off ") + TextOf(ipv4.GetAddress()) + "/" +
                       TextOf(ipv4.GetMaskLength()) + " via " + TextOf(ipv4.GetGateway()) + "; ipv6";
    EIPv6AddressItemList const& addresses = item.GetIPv6AddressItemList();
    for (auto position = addresses.begin(); position != addresses.end(); ++position)
        text += " " + TextOf(position->first) + ":" + TextOf(addresses.GetItem(position)->GetAddress()) + "/" +
                TextOf(addresses.GetItem(position)->GetMaskLength());
    return text;
}

/// Every interface and address knows the id it is kept under, and every record its owner.
inline void ExpectConsistent(EInterfaceTable const& table)
{
    EXPECT_EQ(&table, table.GetParent());
    for (auto position = table.begin(); position != table.end(); ++position) {
        EInterfaceItem const& item = *table.GetItem(position);
        EXPECT_EQ(position->first, item.GetLocalId());
        EXPECT_EQ(&table, item.GetParent());
        ExpectHoldsItsRecords(item);
        EIPv6AddressItemList const& addresses = item.GetIPv6AddressItemList();
        for (auto address = addresses.begin(); address != addresses.end(); ++address)
            EXPECT_EQ(address->first, addresses.GetItem(address)->GetLocalId());
    }
}
