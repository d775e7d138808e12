#pragma once

#include "tlvIds.hpp"

namespace TLVIds {

/// An ATM encapsulation is told by which of these ids is there, not by a value: see eAtmEncapsulationMode.
namespace ATMEncapsulation {
extern TLVId const None;
extern TLVId const VMR_IpV4;
extern TLVId const Eth_VMBFcs;
extern TLVId const Eth_VMBNoFcs;
extern TLVId const VMR_IpV6;
extern TLVId const VMR_Mpls;
extern TLVId const LLCR_CLIP;
extern TLVId const LLCB_EthFcs;
extern TLVId const LLCB_EthNoFcs;
extern TLVId const LLCR_PPPoA;
extern TLVId const VMR_PPPoA;
extern TLVId const LLC_ISIS;
extern TLVId const VM_ISIS;
extern TLVId const LLC;
extern TLVId const LLC_L2TP;
extern TLVId const VMR_L2TP;
} // namespace ATMEncapsulation

} // namespace TLVIds
