#pragma once

#include "eDcbxConfig.hpp"
#include "golden.hpp"

inline EBlob Payload(char const* hex)
{
    return BlobOf(Bytes(hex));
}
inline std::string Hex(EBlob const& payload)
{
    return payload.GetHexString();
}

/// The feature that the golden files hold, header and all: a logical link with DCBX subtype 1.
inline EDCBXFeatureTlv SampleDCBXFeature()
{
    EDCBXFeatureTlv feature(6, 5, 1);
    feature.SetInstanceKey(0xA1B2C3D4);
    feature.SetOverrideOperVersion(true);
    feature.SetLength(300);
    feature.SetOperVersion(3);
    feature.SetMaxVersion(254);
    feature.SetWilling(false);
    feature.SetError(true);
    feature.SetDesiredCfg(Payload("AA BB CC"));
    feature.SetMismatch(true);
    feature.SetDcbxAdvertiseType(EDCBXFeatureTlv::PEER_SHUT_DOWN);
    feature.SetFeatureAdvertised(false);
    feature.SetDcbxState(EDCBXFeatureTlv::STATE_ERROR_CHANGE);
    return feature;
}

/// The control TLV that the golden files hold.
inline EDCBXControlTlv SampleDCBXControl()
{
    EDCBXControlTlv control;
    control.SetOverrideOperVersion(true);
    control.SetControlState(EDCBXControlTlv::STATE_ACK_PEER);
    control.SetValid(true);
    control.SetDcbxAdvertiseType(EDCBXFeatureTlv::WAITING_FOR_DCBX_RESPONSE);
    control.SetOperVersion(4);
    control.SetMaxVersion(250);
    control.SetSeqNo(0x01020304);
    control.SetAckNo(0x1234);
    return control;
}
