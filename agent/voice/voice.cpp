#include "agent/voice/voice.h"

#include "agent/capture/probe.h"
#include "agent/core/reply.h"
#include "agent/core/state.h"

#include <initializer_list>

namespace {

/* ---- settings ------------------------------------------------------------------------- */

bool sizes_make_sense(std::initializer_list<uint32_t> sizes)
{
    return std::ranges::all_of(sizes, [](uint32_t size) { return size <= most_voice_rows; });
}

template <class Settings> Settings without_latency(const voice_config_params_t &from)
{
    return {
        from.enable,
        from.num_phone_tbl_row,
        from.num_call_tbl_row,
        from.num_top_jitter_row,
        from.num_top_pkt_lost_row,
        from.jitter_threshold,
        from.pkt_lost_threshold,
        from.jitter_alarm_enable,
        from.pkt_lost_alarm_enable};
}

template <class Monitor, class Request> int32_t set_sizes(Monitor &monitor, const Request &request)
{
    if (!sizes_make_sense(
            {request.num_phone_tbl_row, request.num_call_tbl_row, request.num_top_jitter_row,
             request.num_top_pkt_lost_row}))
        return bad_value;
    voice_config_params_t &settings = monitor.settings;
    settings.num_phone_tbl_row = request.num_phone_tbl_row;
    settings.num_call_tbl_row = request.num_call_tbl_row;
    settings.num_top_jitter_row = request.num_top_jitter_row;
    settings.num_top_pkt_lost_row = request.num_top_pkt_lost_row;
    trim_tables(monitor);
    return no_error;
}

template <class Monitor, class Request> int32_t set_thresholds(Monitor &monitor, const Request &request)
{
    monitor.settings.jitter_threshold = request.jitter_threshold;
    monitor.settings.pkt_lost_threshold = request.pkt_lost_threshold;
    return no_error;
}

/** A file may have been changed by hand. */
template <class Monitor> void load_settings(Monitor &monitor, const voice_config_params_t &kept)
{
    if (sizes_make_sense(
            {kept.num_phone_tbl_row, kept.num_call_tbl_row, kept.num_top_jitter_row,
             kept.num_top_pkt_lost_row, kept.num_top_latency_row}))
        monitor.settings = kept;
}

/* ---- the scenario -------------------------------------------------------------------------- */

template <class Monitor, class Part> void play_phones(Monitor &monitor, const Part &part)
{
    for (const auto &phone : part.phones)
        see_phone(monitor, phone);
}

template <class Monitor, class Part> void play_calls(Monitor &monitor, Part &part, uint32_t now)
{
    for (; part.played < part.calls.size() && part.calls[part.played].times.after <= now / 100; part.played++)
        see_call(monitor, part.calls[part.played], now);
}

void play_due_calls(void *context)
{
    auto &agent = *static_cast<probe *>(context);
    const uint32_t now = up_time(agent);
    voice_monitors &voice = agent.voice;
    play_calls(voice.sccp, voice.scenario.sccp, now);
    play_calls(voice.h323, voice.scenario.h323, now);
    play_calls(voice.mgcp, voice.scenario.mgcp, now);
}

} // namespace

void play_scenario(probe &agent)
{
    voice_monitors &voice = agent.voice;
    play_phones(voice.sccp, voice.scenario.sccp);
    play_phones(voice.h323, voice.scenario.h323);
    play_phones(voice.mgcp, voice.scenario.mgcp);
    play_due_calls(&agent);
    every_second(agent.loop, play_due_calls, &agent);
}

voice_config_params_t get_sccp_voice_coll_params(probe &agent)
{
    return agent.voice.sccp.settings;
}

rmonrpc_h323_config_params_t get_h323_voice_coll_params(probe &agent)
{
    return without_latency<rmonrpc_h323_config_params_t>(agent.voice.h323.settings);
}

rmonrpc_mgcp_config_params_t get_mgcp_voice_coll_params(probe &agent)
{
    return without_latency<rmonrpc_mgcp_config_params_t>(agent.voice.mgcp.settings);
}

rmonrpc_sccp_aggregate_t get_sccp_aggregate(probe &agent)
{
    return averages_to_show(agent.voice.sccp.sums);
}

rmonrpc_h323_aggregate_t get_h323_aggregate(probe &agent)
{
    return sums_to_show(agent.voice.h323.sums);
}

rmonrpc_mgcp_aggregate_t get_mgcp_aggregate(probe &agent)
{
    return averages_to_show(agent.voice.mgcp.sums);
}

int32_t set_sccp_voice_coll_table_sizes(probe &agent, const rmonrpc_voice_table_sizes_t &request)
{
    if (!sizes_make_sense({request.num_top_latency_row}))
        return bad_value;
    const int32_t error = set_sizes(agent.voice.sccp, request);
    if (error != no_error)
        return error;
    agent.voice.sccp.settings.num_top_latency_row = request.num_top_latency_row;
    trim_tables(agent.voice.sccp);
    return no_error;
}

int32_t set_h323_voice_coll_table_sizes(probe &agent, const rmonrpc_h323_config_table_sizes_t &request)
{
    return set_sizes(agent.voice.h323, request);
}

int32_t set_mgcp_voice_coll_table_sizes(probe &agent, const rmonrpc_mgcp_config_table_sizes_t &request)
{
    return set_sizes(agent.voice.mgcp, request);
}

int32_t set_sccp_voice_coll_thresholds(probe &agent, const rmonrpc_voice_thresholds_t &request)
{
    agent.voice.sccp.settings.latency_threshold = request.latency_threshold;
    return set_thresholds(agent.voice.sccp, request);
}

int32_t set_h323_voice_coll_thresholds(probe &agent, const rmonrpc_h323_threshold_params_t &request)
{
    return set_thresholds(agent.voice.h323, request);
}

int32_t set_mgcp_voice_coll_thresholds(probe &agent, const rmonrpc_mgcp_threshold_params_t &request)
{
    return set_thresholds(agent.voice.mgcp, request);
}

void save_sccp_settings(probe &agent, state_writer &writer)
{
    write_record(writer, agent.voice.sccp.settings);
}

void save_h323_settings(probe &agent, state_writer &writer)
{
    write_record(writer, agent.voice.h323.settings);
}

void save_mgcp_settings(probe &agent, state_writer &writer)
{
    write_record(writer, agent.voice.mgcp.settings);
}

void load_sccp_settings(probe &agent, const voice_config_params_t &kept)
{
    load_settings(agent.voice.sccp, kept);
}

void load_h323_settings(probe &agent, const voice_config_params_t &kept)
{
    load_settings(agent.voice.h323, kept);
}

void load_mgcp_settings(probe &agent, const voice_config_params_t &kept)
{
    load_settings(agent.voice.mgcp, kept);
}
