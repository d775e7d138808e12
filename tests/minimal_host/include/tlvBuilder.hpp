#pragma once

#include "eComponentId.hpp"
#include "eIPAddress.hpp"
#include "tlvIds.hpp"

#include <string>
#include <vector>

namespace Protocol {

typedef std::vector<char> EBytes;

class MINIMAL_HOST_API TLVBuilder {
public:
    TLVBuilder(EBytes& out, TLVIds::TLVId const& id); // the library's
    ~TLVBuilder() { Done(); }
    TLVBuilder(TLVBuilder const&) = delete;
    TLVBuilder& operator=(TLVBuilder const&) = delete;

    void Done(); // the library's
    static std::vector<char const*>& known_tlv_table();

private:
    EBytes& m_buffer;
    unsigned int m_valueStart;
    bool m_done;
};

MINIMAL_HOST_API void TLVAppendId(EBytes& out, TLVIds::TLVId const& id);
MINIMAL_HOST_API void AppendIntTLV(EBytes& out, TLVIds::TLVId const& id, int value);
MINIMAL_HOST_API void AppendUnsignedIntTLV(EBytes& out, TLVIds::TLVId const& id, unsigned int value);
MINIMAL_HOST_API void AppendStringTLV(EBytes& out, TLVIds::TLVId const& id, std::string const& value);
MINIMAL_HOST_API void AppendIPTLV(EBytes& out, TLVIds::TLVId const& id, EIPAddress const& value);
MINIMAL_HOST_API void AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value);

} // namespace Protocol
