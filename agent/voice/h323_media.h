// SPDX-License-Identifier: MIT
/*
 * Where the media of a call of H.323 go, by the logical channels that H.245 opens
 * and by those of fast start.
 */
#pragma once

#include "agent/voice/decoder.h"
#include "agent/voice/h323_tracker.h"

/** Takes in what a message of H.245 says of channels: one that is asked for, one that is confirmed. */
void take_channels(
    h323_tracked_call &call, rtp_follower &follower, const voice_message &message, bool by_caller);

/** Takes in the channels that a message of call signalling has in it. */
void take_fast_start(
    h323_tracked_call &call, rtp_follower &follower, const voice_message &message, bool by_caller);

/** The call needs its streams no longer. */
void forget_places(h323_tracked_call &call, rtp_follower &follower);
