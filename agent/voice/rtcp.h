// SPDX-License-Identifier: MIT
/* What the two ends of an RTP stream tell of it in RTCP (RFC 3550, 6.4). */
#pragma once

#include "agent/voice/rtp_table.h"

#include <cstdint>

/** Takes in a frame that may be RTCP: its reports go to the streams of the table that they are about. */
void follow_rtcp(rtp_follower &follower, int32_t interface, const frame &seen);
