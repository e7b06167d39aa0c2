// SPDX-License-Identifier: MIT
/*
 * The voice monitors: SCCP, H.323 and MGCP.
 *
 * Phones and calls come from what passes by (watch.h), or from a scenario
 * (scenario.h); what the monitors make of them by their settings is the same.
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

/** A call that runs is shown in the call table as it is now; it has a number from then on. */
void show_call(sccp_monitor &monitor, sccp_call &call, uint32_t up_time);
void show_call(h323_monitor &monitor, h323_call &call, uint32_t up_time);
void show_call(mgcp_monitor &monitor, mgcp_call &call, uint32_t up_time);

/** Begins to play a scenario: its phones are seen now, its calls when they are due. */
void play_scenario(probe &agent);
