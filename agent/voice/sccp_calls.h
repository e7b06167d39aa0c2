// SPDX-License-Identifier: MIT
/*
 * Phones and calls of SCCP, from its messages.
 *
 * A phone has a connection to its call manager, which tells it all it does. The
 * manager's reference names one side of a call: a phone's leg. Two legs that
 * speak with each other, by where their media go or by their numbers, are one
 * call; a leg whose other side is elsewhere is one by itself.
 */
#pragma once

#include "agent/voice/decoder.h"
#include "agent/voice/monitor.h"
#include "agent/voice/sccp_tracker.h"

/** Takes in a message of SCCP. */
void take_message(
    sccp_tracker &tracker, sccp_monitor &monitor, rtp_follower &follower, const voice_message &message);

/** Once a second: shows calls that run, hands over those that are done. */
void settle_calls(
    sccp_tracker &tracker, sccp_monitor &monitor, rtp_follower &follower, const voice_clock &clock);
