#include "eArchive.hpp"
#include "eBlob.hpp"
#include "eComponentId.hpp"
#include "eFormatUtils.hpp"
#include "eHalOutgoing.hpp"
#include "eIPAddress.hpp"
#include "eIPMaskedAddress.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "eUniqueIDGenerator.hpp"
#include "eUniqueIDMapImplBase.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"
#include "tlvBuilder.hpp"
#include "tlvIds.hpp"
#include "tlvParserMapTable.hpp"
#include "tlvReader.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

// Archive

void EArchive::SetFromEBlob(EBlob const& blob, bool replace)
{
    if (replace) {
        m_bytes.clear();
        m_position = 0;
    }
    if (blob.GetSize() > 0) m_bytes.append(reinterpret_cast<char const*>(blob.GetData()), blob.GetSize());
}
void EArchive::SetMode(int mode)
{
    m_storing = mode == 1;
    m_position = 0;
}
EBlob EArchive::GetAsEBlob() const
{
    return EBlob(m_bytes.data(), static_cast<unsigned int>(m_bytes.size()));
}
EArchive& EArchive::Write(unsigned long pattern)
{
    if (!m_storing) return *this;
    for (int shift = 56; shift >= 0; shift -= 8) m_bytes += static_cast<char>(pattern >> shift & 0xFFU);
    return *this;
}
unsigned long EArchive::Read()
{
    if (m_storing) return 0;
    if (m_bytes.size() - m_position < 8) throw std::out_of_range("end of the archive");
    unsigned long pattern = 0;
    for (int i = 0; i < 8; ++i) pattern = pattern << 8 | static_cast<unsigned char>(m_bytes[m_position++]);
    return pattern;
}
EArchive& EArchive::operator<<(std::string const& value)
{
    Write(value.size());
    if (m_storing) m_bytes += value;
    return *this;
}
EArchive& EArchive::operator>>(std::string& value)
{
    std::size_t const size = Read();
    if (m_bytes.size() - m_position < size) throw std::out_of_range("end of the archive");
    value = m_bytes.substr(m_position, size);
    m_position += size;
    return *this;
}

// Numbers and text

/// The low bytes of a number, most significant first, as two hexadecimal digits each.
static std::string Hex(unsigned long value, unsigned int bytes, std::string const& separator)
{
    static char const digits[] = "0123456789abcdef";
    std::string text;
    for (unsigned int left = std::min(bytes, 8U); left > 0; --left) {
        unsigned long const byte = value >> (left - 1) * 8 & 0xFFU;
        if (!text.empty()) text += separator;
        text += digits[byte >> 4];
        text += digits[byte & 0xFU];
    }
    return text;
}
/// The bytes that the hexadecimal digits of a text are; all else is passed over.
static std::string Unhex(std::string const& text)
{
    std::string digits;
    for (char const c : text)
        if ((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')) digits += c;
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}
std::string EFormatUtils::GetEDWORDAsFormattedString(unsigned int value, unsigned int bytes,
                                                     std::string const& separator)
{
    return Hex(value, std::min(bytes, 4U), separator);
}
std::string EFormatUtils::GetInt64AsFormattedString(unsigned long value, unsigned int bytes,
                                                    std::string const& separator)
{
    return Hex(value, bytes, separator);
}

// Blobs

EBlob::EBlob(void const* bytes, unsigned int count)
    : m_bytes(bytes ? std::string(static_cast<char const*>(bytes), count) : std::string(count, '\0'))
{
}
void EBlob::SetSize(unsigned int size, bool keep)
{
    if (!keep) m_bytes.clear();
    m_bytes.resize(size);
}
void EBlob::Memset(unsigned char value, unsigned int offset, unsigned int count)
{
    for (std::size_t i = offset; i < m_bytes.size() && count > 0; ++i, --count) m_bytes[i] = static_cast<char>(value);
}
void EBlob::GetAt(EBlob& out, unsigned int offset, unsigned int count) const
{
    out.m_bytes = m_bytes.substr(std::min<std::size_t>(offset, m_bytes.size()), count);
}
void EBlob::RemoveLeadingBytes(unsigned int count)
{
    m_bytes.erase(0, count);
}
std::string EBlob::GetHexString() const
{
    std::string text = " "; // on purpose white space at both ends: a host may render so
    for (char const byte : m_bytes) text += Hex(static_cast<unsigned char>(byte), 1, "") + " ";
    return text;
}
bool EBlob::SetHexString(std::string const& text)
{
    m_bytes = Unhex(text);
    return true;
}
EArchive& operator<<(EArchive& archive, EBlob const& blob)
{
    return archive << blob.m_bytes;
}
EArchive& operator>>(EArchive& archive, EBlob& blob)
{
    return archive >> blob.m_bytes;
}

// Addresses and identifiers

EIPAddress::EIPAddress(std::string const& text)
{
    m_family = text.find(':') == std::string::npos ? 17 : 18;
    if (inet_pton(m_family == 17 ? AF_INET : AF_INET6, text.c_str(), m_bytes.data()) != 1)
        throw std::invalid_argument(text);
}
void EIPAddress::SetAddress(unsigned char const* bytes, unsigned int count, unsigned int family)
{
    m_family = family;
    m_bytes = {};
    std::copy_n(bytes, std::min(count, family == 17 ? 4U : 16U), m_bytes.begin());
}
std::string EIPAddress::GetAsString() const
{
    char text[INET6_ADDRSTRLEN] = "";
    inet_ntop(m_family == 17 ? AF_INET : AF_INET6, m_bytes.data(), text, sizeof text);
    return text;
}
void EIPAddress::Swap(EIPAddress& other)
{
    std::swap(m_family, other.m_family);
    m_bytes.swap(other.m_bytes);
}
EArchive& operator<<(EArchive& archive, EIPAddress const& address)
{
    archive << address.m_family;
    for (unsigned char const byte : address.m_bytes) archive << byte;
    return archive;
}
EArchive& operator>>(EArchive& archive, EIPAddress& address)
{
    archive >> address.m_family;
    for (unsigned char& byte : address.m_bytes) archive >> byte;
    return archive;
}
EIPAddress EIPMaskedAddress::GetNetworkAddress() const
{
    unsigned char bytes[16];
    for (unsigned int i = 0; i < 16; ++i) {
        unsigned int const bits = std::min(m_prefix > 8 * i ? m_prefix - 8 * i : 0, 8U); // of this byte
        bytes[i] = static_cast<unsigned char>(GetBytes()[i] & (0xFF00U >> bits));
    }
    EIPAddress network;
    network.SetAddress(bytes, 16, GetFamily());
    return network;
}
EMACAddress::EMACAddress(std::string const& text)
{
    std::string const bytes = Unhex(text);
    SetMACAddress(EBlob(bytes.data(), static_cast<unsigned int>(bytes.size())));
}
void EMACAddress::SetMACAddress(EBlob const& bytes)
{
    m_bytes = {};
    std::copy_n(bytes.GetData(), std::min(bytes.GetSize(), 6U), m_bytes.begin());
}
std::string EMACAddress::GetAsString() const
{
    unsigned long number = 0;
    for (unsigned char const byte : m_bytes) number = number << 8 | byte;
    return Hex(number, 6, ":");
}
EArchive& operator<<(EArchive& archive, EMACAddress const& address)
{
    return archive << address.GetMACAddress();
}
EArchive& operator>>(EArchive& archive, EMACAddress& address)
{
    EBlob bytes;
    archive >> bytes;
    address.SetMACAddress(bytes);
    return archive;
}
void EUID::Swap(EUID& other)
{
    std::swap(m_id, other.m_id);
}
std::string EUID::GetAsString() const
{
    return Hex(m_id, 8, ":");
}
EArchive& operator<<(EArchive& archive, EUID const& uid)
{
    return archive << uid.GetAsUint64();
}
EArchive& operator>>(EArchive& archive, EUID& uid)
{
    unsigned long id = 0;
    archive >> id;
    uid = EUID(id);
    return archive;
}
EArchive& operator<<(EArchive& archive, EComponentId const& id)
{
    SerializeOut(archive, id.GetId());
    return archive;
}
EArchive& operator>>(EArchive& archive, EComponentId& id)
{
    std::vector<unsigned int> levels;
    SerializeIn(archive, levels);
    id = EComponentId(levels);
    return archive;
}
EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& vlans)
{
    archive << vlans.m_enabled;
    SerializeOut(archive, vlans.m_tags);
    return archive;
}
EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& vlans)
{
    archive >> vlans.m_enabled;
    SerializeIn(archive, vlans.m_tags);
    return archive;
}

// Containers

EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator)
{
    return archive << generator.m_next;
}
EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator)
{
    return archive >> generator.m_next;
}
EUniqueIDMapImplBase::~EUniqueIDMapImplBase() = default;
unsigned int EUniqueIDMapImplBase::AddOwnedItem(void* item)
{
    unsigned int id = m_generator.Next();
    while (m_items.count(id) > 0) id = m_generator.Next();
    return AddOwnedItem(id, item);
}
unsigned int EUniqueIDMapImplBase::AddOwnedItem(unsigned int id, void* item)
{
    if (!item) return 0;
    SetLocalId(item, id);
    SetParent(item);
    void*& slot = m_items[id];
    if (slot) DestroyItem(slot);
    slot = item;
    m_generator.SkipPast(id);
    return id;
}
void EUniqueIDMapImplBase::Empty()
{
    for (auto const& entry : m_items) DestroyItem(entry.second);
    m_items.clear();
}
EUniqueIDMapImplBase& EUniqueIDMapImplBase::operator=(EUniqueIDMapImplBase const& other)
{
    if (this == &other) return *this;
    Empty();
    for (auto const& entry : other.m_items)
        AddOwnedItem(entry.first, CreateNewItem(static_cast<void const*>(entry.second)));
    m_generator = other.m_generator;
    return *this;
}
void EUniqueIDMapImplBase::Swap(EUniqueIDMapImplBase& other)
{
    m_items.swap(other.m_items);
    std::swap(m_generator, other.m_generator);
    SetItemParents();
    other.SetItemParents();
}
bool EUniqueIDMapImplBase::RemoveItem(iterator const& position)
{
    if (position == m_items.end()) return false;
    m_generator.SkipPast(position->first);
    DestroyItem(position->second);
    m_items.erase(position);
    return true;
}
void EUniqueIDMapImplBase::SetItemParents()
{
    for (auto const& entry : m_items) SetParent(entry.second);
}
void EUniqueIDMapImplBase::SerializeIn(EArchive& archive)
{
    Empty();
    EUniqueIDGenerator generator;
    archive >> generator;
    unsigned int count = 0;
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        void* const item = CreateAndSerializeIn(archive);
        AddOwnedItem(GetLocalId(item), item);
    }
    m_generator = generator;
}
void EUniqueIDMapImplBase::SerializeOut(EArchive& archive) const
{
    archive << m_generator << static_cast<unsigned long>(m_items.size());
    for (auto const& entry : m_items) SerializeItemOut(entry.second, archive);
}

// Messages of nested TLVs

std::vector<char const*> TLVReader::external_tlv_table;

std::vector<char const*>& Protocol::TLVBuilder::known_tlv_table()
{
    static std::vector<char const*> names;
    return names;
}
static unsigned int Register(char const* name)
{
    std::vector<char const*>& names = Protocol::TLVBuilder::known_tlv_table();
    names.resize(names.size() + 3); // on purpose numbers without names between the ids: a host may have such
    names.back() = name;
    return static_cast<unsigned int>(names.size() - 1);
}
TLVIds::TLVId::TLVId(char const* name) : m_index(Register(name)) {}

#define MINIMAL_HOST_ID(group, name) TLVIds::TLVId const TLVIds::group::name("minimal." #name);
#include "minimalHostIds.def"

std::vector<void (*)()>& GetTLVParserMapTable()
{
    static std::vector<void (*)()> initializers;
    return initializers;
}

static void AppendU32(Protocol::EBytes& out, unsigned int value)
{
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>(value >> shift & 0xFFU));
}
/// Makes room for the value too: a TLV is there whole or not at all.
static void AppendHeader(Protocol::EBytes& out, TLVIds::TLVId const& id, std::size_t length)
{
    out.reserve(out.size() + 8 + length);
    AppendU32(out, id.GetIndex());
    AppendU32(out, static_cast<unsigned int>(length));
}
void Protocol::TLVAppendId(EBytes& out, TLVIds::TLVId const& id)
{
    AppendU32(out, id.GetIndex());
}
void Protocol::AppendIntTLV(EBytes& out, TLVIds::TLVId const& id, int value)
{
    AppendUnsignedIntTLV(out, id, static_cast<unsigned int>(value));
}
void Protocol::AppendUnsignedIntTLV(EBytes& out, TLVIds::TLVId const& id, unsigned int value)
{
    AppendHeader(out, id, 4);
    AppendU32(out, value);
}
void Protocol::AppendStringTLV(EBytes& out, TLVIds::TLVId const& id, std::string const& value)
{
    AppendHeader(out, id, value.size());
    out.insert(out.end(), value.begin(), value.end());
}
void Protocol::AppendIPTLV(EBytes& out, TLVIds::TLVId const& id, EIPAddress const& value)
{
    unsigned int const count = value.GetFamily() == 17 ? 4 : 16;
    AppendHeader(out, id, count);
    out.insert(out.end(), value.GetBytes(), value.GetBytes() + count);
}
void Protocol::AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value)
{
    AppendHeader(out, id, 4 * std::size_t{value.GetIdSize()});
    for (unsigned int const level : value.GetId()) AppendU32(out, level);
}

// Messages of the hardware-abstraction layer

EArchive& eHal::operator<<(EArchive& archive, EOutgoingProtocolMessage const& message)
{
    return archive << message.m_protocolName.GetName() << message.m_messageType << message.m_objectType
                   << message.m_message;
}

EArchive& eHal::operator<<(EArchive& archive, EOutgoingMessage const& message)
{
    return archive << message.m_messageType << message.m_message;
}
