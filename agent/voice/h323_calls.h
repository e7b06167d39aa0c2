// SPDX-License-Identifier: MIT
/*
 * Phones and calls of H.323, from what is said in RAS, in call signalling
 * (H.225.0) and in the control of media (H.245), whether that has a connection of its
 * own, is tunnelled in the signalling, or is part of it (fast start).
 *
 * A call is one connection of signalling with one call reference: where a
 * gatekeeper passes signalling on, each side of it is a call, and both have the same call_id.
 */
#pragma once

#include "agent/voice/decoder.h"
#include "agent/voice/h323_tracker.h"
#include "agent/voice/monitor.h"

/** Takes in a message of h225_ras, h225_cs or h245. */
void take_message(
    h323_tracker &tracker, h323_monitor &monitor, rtp_follower &follower, const voice_message &message);

/** Once a second: shows calls that run, hands over those that are done. */
void settle_calls(
    h323_tracker &tracker, h323_monitor &monitor, rtp_follower &follower, const voice_clock &clock);
