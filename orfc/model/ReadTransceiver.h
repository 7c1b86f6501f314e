/// @file
/// A module's memory as a record, by the standards' arithmetic.
#pragma once

#include "Bytes.h"
#include "Host.h"

namespace orfc {

/// Decodes an image of 512 bytes: A0h and A2h for the SFP family, lower page and upper page 00h for QSFP.
Transceiver DecodeTransceiver(decoders::Bytes image);

/// Decodes the payload of Read Diagnostic Parameters.
FarEnd DecodeFarEnd(decoders::Bytes payload);

} // namespace orfc
