#pragma once

constexpr int kTLVHeaderSize = 8; ///< Bytes: the id and the length of a TLV.
