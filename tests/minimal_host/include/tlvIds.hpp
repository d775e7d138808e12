#pragma once

#include "eArchive.hpp"

namespace TLVIds {

class MINIMAL_HOST_API TLVId {
public:
    explicit TLVId(char const* name);
    unsigned int GetIndex() const { return m_index; }

private:
    unsigned int m_index;
};

#define MINIMAL_HOST_ID(group, name)                                                                                   \
    namespace group {                                                                                                  \
    extern MINIMAL_HOST_API TLVId const name;                                                                          \
    }
#include "minimalHostIds.def"

} // namespace TLVIds
