// SPDX-License-Identifier: MIT
/* What is shown of a call of H.323 beside what its messages say: what was measured of it. */
#pragma once

#include "agent/voice/h323_tracker.h"

#include <cstdint>

/** Fills in what changes while a call lasts. */
void complete_call(h323_tracked_call &call, const rtp_follower &follower, int64_t until);

/** When the last packet of its media came, in either direction; 0: none did. */
int64_t last_of_media(const h323_tracked_call &call, const rtp_follower &follower);
