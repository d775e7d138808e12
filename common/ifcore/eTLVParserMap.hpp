#pragma once

#include "eInterfaceTLVParser.hpp"
#include "eTLVWire.hpp"
#include "tlvBuilder.hpp"
#include "tlvReader.hpp"

#include <cstddef>
#include <cstring>
#include <endian.h>
#include <map>
#include <utility>
#include <vector>

struct StringComparer {
    bool operator()(char const* left, char const* right) const { return std::strcmp(left, right) < 0; }
};

/// The next \p count bytes, consumed; null, with nothing consumed, when fewer remain.
inline unsigned char const* Take(TLVReader& reader, int count)
{
    if (count < 0 || reader.remaining < count) return nullptr;
    reader.remaining -= count;
    return std::exchange(reader.position, reader.position + count);
}

/// The number in 4 bytes, big-endian.
inline unsigned int U32At(unsigned char const* bytes)
{
    unsigned int value;
    std::memcpy(&value, bytes, sizeof value);
    return be32toh(value);
}

/// The next 4 bytes, big-endian; the parse error when fewer remain.
inline unsigned int ReadU32(TLVReader& reader)
{
    unsigned char const* const bytes = Take(reader, 4);
    if (!bytes) TLVParseError();
    return U32At(bytes);
}

/// An id, and what reads its value into the target.
template <class Target> struct TLVParserEntry {
    TLVIds::TLVId const& id;
    void (*handler)(TLVReader& value, Target& target);
};

/// The handlers of one level, found by the names of their ids. Filled by an initialiser, then only read.
template <class Target> class TLVParserMap {
public:
    using Handler = void (*)(TLVReader& value, Target& target);

    /// Filling it again with the same entries changes nothing.
    template <std::size_t count> void Fill(TLVParserEntry<Target> const (&entries)[count])
    {
        std::vector<char const*> const& names = Protocol::TLVBuilder::known_tlv_table();
        for (TLVParserEntry<Target> const& entry : entries) {
            char const* const name = NameIn(names, entry.id.GetIndex());
            if (*name) m_byName[name] = entry.handler;
        }
        m_byOwnNumber.clear();
        for (std::size_t number = 0; number < names.size(); ++number) {
            char const* const name = NameIn(names, number);
            m_byOwnNumber.push_back({name, FindName(name)});
        }
    }
    /// Of the id that the sender numbers so; null without one. A sender that numbers its ids as this host does costs
    /// one look, any other a search for the name.
    Handler Find(unsigned int senderNumber) const
    {
        char const* const name = NameIn(TLVReader::external_tlv_table, senderNumber);
        if (senderNumber < m_byOwnNumber.size()) {
            Named const& own = m_byOwnNumber[senderNumber];
            if (own.name == name || std::strcmp(own.name, name) == 0) return own.handler;
        }
        return FindName(name);
    }

private:
    struct Named {
        char const* name;
        Handler handler; // null: the map does not hold the name
    };

    static char const* NameIn(std::vector<char const*> const& names, std::size_t number)
    {
        return number < names.size() && names[number] ? names[number] : "";
    }
    Handler FindName(char const* name) const
    {
        auto const found = m_byName.find(name);
        return found == m_byName.end() ? nullptr : found->second;
    }

    std::map<char const*, Handler, StringComparer> m_byName;
    std::vector<Named> m_byOwnNumber; // every id that this host knew when the map was filled
};

/// Reads one level of TLVs into a target.
template <class Target> class TLVParser {
public:
    using Map = TLVParserMap<Target>;
    using Handler = typename Map::Handler;

    static void NullFunc(TLVReader&, Target&) {} ///< What reads every id that a map does not hold.

    /// \p message stays where it is. What was read before a parse error stays in the target.
    static void Parse(TLVReader const& message, Map const& handlers, Target& target)
    {
        TLVReader level(message.position, message.remaining, message.context);
        while (level.remaining >= kTLVHeaderSize) { // fewer bytes at the end are no error
            unsigned char const* const header = Take(level, kTLVHeaderSize);
            int const length = static_cast<int>(U32At(header + 4)); // from 2^31 on negative, and as such never there
            // For an id that the map does not hold not even a reader is made: NullFunc would do nothing with it.
            if (Handler const found = handlers.Find(U32At(header))) {
                bool const whole = length >= 0 && length <= level.remaining;
                TLVReader value(level.position, whole ? length : level.remaining, level.context);
                found(value, target);
            }
            if (!Take(level, length)) TLVParseError(); // on purpose after the handler has run, on what is there
        }
    }
};

/// Registers what fills a parser map with the host, while the library starts.
struct TLVParserMapInitStruct {
    explicit TLVParserMapInitStruct(void (*initializer)());
};

/// \name Read by nothing in this library, on purpose kept
///@{
extern std::map<char const*, int, StringComparer> TLVProtocolEnumStatMap; ///< Stays empty.
extern TLVParserMap<EVLANIPAddressTableItemProperties> VLANTLVParserMap;  ///< A single VLAN; filled as the others are.
///@}
