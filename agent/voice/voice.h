// SPDX-License-Identifier: MIT
/*
 * The voice monitors: SCCP, H.323 and MGCP.
 *
 * The agent does not take signalling apart. Phones and calls come from a
 * scenario (scenario.h); what the monitors make of them by their settings
 * is done here as if they had been seen on the network.
 */
#pragma once

#include "agent/voice/monitor.h"
#include "agent/voice/calls.h"

#include "rmon/rpc/rmonrpc_voice.h"

#include <cstdint>
#include <string>

struct probe;

struct voice_monitors {
    sccp_monitor sccp;
    h323_monitor h323;
    mgcp_monitor mgcp;
    voice_scenario scenario;
};

/** A phone, or a call, is seen by its monitor, if that is switched on. up_time is the sysUpTime of now. */
void see_phone(sccp_monitor &monitor, const sccp_phone &phone);
void see_phone(h323_monitor &monitor, const h323_phone &phone);
void see_phone(mgcp_monitor &monitor, const mgcp_phone &phone);
void see_call(sccp_monitor &monitor, const sccp_call &call, uint32_t up_time);
void see_call(h323_monitor &monitor, const h323_call &call, uint32_t up_time);
void see_call(mgcp_monitor &monitor, const mgcp_call &call, uint32_t up_time);

/** Begins to play a scenario: its phones are seen now, its calls when they are due. */
void play_scenario(probe &agent);
