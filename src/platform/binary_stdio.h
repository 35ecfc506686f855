// Standard input and output carry records and XML byte for byte. Windows opens them in text
// mode, which turns "\n" into "\r\n" on the way out and stops reading at a 0x1A byte.
#pragma once

namespace quillon_platform {

// Puts standard input and output into binary mode; nothing to do where there is no text mode.
void useBinaryStandardStreams();

}  // namespace quillon_platform
