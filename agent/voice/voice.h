/*
 * The voice monitors: SCCP, H.323 and MGCP.
 *
 * The agent does not take signalling apart. Phones and calls come from a
 * scenario (voice_scenario.h); what the monitors make of them by their settings
 * is done here as if they had been seen on the network.
 */
#pragma once

#include "agent/voice/monitor.h"
#include "agent/voice/scenario.h"

#include "rmon/rpc/rmonrpc_voice.h"

#include <cstdint>
#include <string>

struct probe;
struct state_writer;

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

/* ---- what scripts read and set ------------------------------------------------------ */

voice_config_params_t get_sccp_voice_coll_params(probe &agent);
rmonrpc_h323_config_params_t get_h323_voice_coll_params(probe &agent);
rmonrpc_mgcp_config_params_t get_mgcp_voice_coll_params(probe &agent);

rmonrpc_sccp_aggregate_t get_sccp_aggregate(probe &agent);
rmonrpc_h323_aggregate_t get_h323_aggregate(probe &agent);
rmonrpc_mgcp_aggregate_t get_mgcp_aggregate(probe &agent);

int32_t set_sccp_voice_coll_table_sizes(probe &agent, const rmonrpc_voice_table_sizes_t &request);
int32_t set_h323_voice_coll_table_sizes(probe &agent, const rmonrpc_h323_config_table_sizes_t &request);
int32_t set_mgcp_voice_coll_table_sizes(probe &agent, const rmonrpc_mgcp_config_table_sizes_t &request);

int32_t set_sccp_voice_coll_thresholds(probe &agent, const rmonrpc_voice_thresholds_t &request);
int32_t set_h323_voice_coll_thresholds(probe &agent, const rmonrpc_h323_threshold_params_t &request);
int32_t set_mgcp_voice_coll_thresholds(probe &agent, const rmonrpc_mgcp_threshold_params_t &request);

/** What is kept over a restart: one monitor's settings. */
void save_sccp_settings(probe &agent, state_writer &writer);
void save_h323_settings(probe &agent, state_writer &writer);
void save_mgcp_settings(probe &agent, state_writer &writer);
int32_t load_sccp_settings(probe &agent, const voice_config_params_t &kept);
int32_t load_h323_settings(probe &agent, const voice_config_params_t &kept);
int32_t load_mgcp_settings(probe &agent, const voice_config_params_t &kept);
