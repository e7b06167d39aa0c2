// SPDX-License-Identifier: MIT
/* What is shown of SCCP: the phones of connections, and the calls of legs. */
#pragma once

#include "agent/voice/sccp_tracker.h"

/** A phone as the monitor has it; of a leg with the number of its line, or what the call says where that is
 * not known. */
sccp_phone phone_of(const sccp_tracker &tracker, const sccp_session &session, const sccp_leg *leg);

/** The call of a leg and its partner, who may be elsewhere, as it is now. */
sccp_call call_of(
    const sccp_tracker &tracker,
    const rtp_follower &follower,
    const sccp_found_leg &one,
    const sccp_found_leg &other);
