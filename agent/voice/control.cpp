// SPDX-License-Identifier: MIT
#include "agent/voice/voice.h"

#include "agent/capture/family.h"
#include "agent/core/reply.h"
#include "agent/voice/rows.h"
#include "agent/voice/watch.h"

#include <initializer_list>

namespace {

/* ---- settings ------------------------------------------------------------------------- */

bool sizes_fit(std::initializer_list<uint32_t> sizes)
{
    return std::ranges::all_of(sizes, [](uint32_t size) { return size <= max_voice_rows; });
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
    if (!sizes_fit(
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
template <class Monitor> int32_t load_settings(Monitor &monitor, const voice_config_params_t &kept)
{
    if (!sizes_fit(
            {kept.num_phone_tbl_row, kept.num_call_tbl_row, kept.num_top_jitter_row,
             kept.num_top_pkt_lost_row, kept.num_top_latency_row}))
        return bad_value;
    monitor.settings = kept;
    return no_error;
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

void play_due_calls(probe &agent)
{
    const uint32_t now = up_time(agent);
    voice_monitors &voice = storage<voice_monitors>(agent);
    play_calls(voice.sccp, voice.scenario.sccp, now);
    play_calls(voice.h323, voice.scenario.h323, now);
    play_calls(voice.mgcp, voice.scenario.mgcp, now);
}

} // namespace

void play_scenario(probe &agent)
{
    voice_monitors &voice = storage<voice_monitors>(agent);
    play_phones(voice.sccp, voice.scenario.sccp);
    play_phones(voice.h323, voice.scenario.h323);
    play_phones(voice.mgcp, voice.scenario.mgcp);
    play_due_calls(agent);
}

voice_config_params_t get_sccp_voice_coll_params(probe &agent)
{
    return storage<voice_monitors>(agent).sccp.settings;
}

rmonrpc_h323_config_params_t get_h323_voice_coll_params(probe &agent)
{
    return without_latency<rmonrpc_h323_config_params_t>(storage<voice_monitors>(agent).h323.settings);
}

rmonrpc_mgcp_config_params_t get_mgcp_voice_coll_params(probe &agent)
{
    return without_latency<rmonrpc_mgcp_config_params_t>(storage<voice_monitors>(agent).mgcp.settings);
}

rmonrpc_sccp_aggregate_t get_sccp_aggregate(probe &agent)
{
    return averages_to_show(storage<voice_monitors>(agent).sccp.sums);
}

rmonrpc_h323_aggregate_t get_h323_aggregate(probe &agent)
{
    return sums_to_show(storage<voice_monitors>(agent).h323.sums);
}

rmonrpc_mgcp_aggregate_t get_mgcp_aggregate(probe &agent)
{
    return averages_to_show(storage<voice_monitors>(agent).mgcp.sums);
}

int32_t set_sccp_voice_coll_table_sizes(probe &agent, const rmonrpc_voice_table_sizes_t &request)
{
    if (!sizes_fit({request.num_top_latency_row}))
        return bad_value;
    const int32_t error = set_sizes(storage<voice_monitors>(agent).sccp, request);
    if (error != no_error)
        return error;
    storage<voice_monitors>(agent).sccp.settings.num_top_latency_row = request.num_top_latency_row;
    trim_tables(storage<voice_monitors>(agent).sccp);
    return no_error;
}

int32_t set_h323_voice_coll_table_sizes(probe &agent, const rmonrpc_h323_config_table_sizes_t &request)
{
    return set_sizes(storage<voice_monitors>(agent).h323, request);
}

int32_t set_mgcp_voice_coll_table_sizes(probe &agent, const rmonrpc_mgcp_config_table_sizes_t &request)
{
    return set_sizes(storage<voice_monitors>(agent).mgcp, request);
}

int32_t set_sccp_voice_coll_thresholds(probe &agent, const rmonrpc_voice_thresholds_t &request)
{
    storage<voice_monitors>(agent).sccp.settings.latency_threshold = request.latency_threshold;
    return set_thresholds(storage<voice_monitors>(agent).sccp, request);
}

int32_t set_h323_voice_coll_thresholds(probe &agent, const rmonrpc_h323_threshold_params_t &request)
{
    return set_thresholds(storage<voice_monitors>(agent).h323, request);
}

int32_t set_mgcp_voice_coll_thresholds(probe &agent, const rmonrpc_mgcp_threshold_params_t &request)
{
    return set_thresholds(storage<voice_monitors>(agent).mgcp, request);
}

void save_sccp_settings(probe &agent, state_writer &writer)
{
    write_record(writer, storage<voice_monitors>(agent).sccp.settings);
}

void save_h323_settings(probe &agent, state_writer &writer)
{
    write_record(writer, storage<voice_monitors>(agent).h323.settings);
}

void save_mgcp_settings(probe &agent, state_writer &writer)
{
    write_record(writer, storage<voice_monitors>(agent).mgcp.settings);
}

int32_t load_sccp_settings(probe &agent, const voice_config_params_t &kept)
{
    return load_settings(storage<voice_monitors>(agent).sccp, kept);
}

int32_t load_h323_settings(probe &agent, const voice_config_params_t &kept)
{
    return load_settings(storage<voice_monitors>(agent).h323, kept);
}

int32_t load_mgcp_settings(probe &agent, const voice_config_params_t &kept)
{
    return load_settings(storage<voice_monitors>(agent).mgcp, kept);
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

void on_voice_tick(probe &agent)
{
    play_due_calls(agent);
    tick_watch(agent);
}

constexpr auto sccp = &voice_monitors::sccp;
constexpr auto h323 = &voice_monitors::h323;
constexpr auto mgcp = &voice_monitors::mgcp;

constexpr served_procedure procedures[] = {
    serve<voice_get<sccp, &sccp_monitor::calls, rmonrpc_sccp_call_row_t>>(call_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::phones, rmonrpc_sccp_phone_row_t>>(phone_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_jitter, rmonrpc_sccp_top_row_t>>(top_jitter_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_lost, rmonrpc_sccp_top_row_t>>(top_pkt_lost_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_latency, rmonrpc_sccp_top_row_t>>(top_latency_rec_get_1),
    serve<get_sccp_voice_coll_params>(get_sccp_voice_coll_params_1),
    serve_set<set_sccp_voice_coll_table_sizes>(set_sccp_voice_coll_table_sizes_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::enable, 1>>(enable_sccp_voice_coll_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::enable, 0>>(disable_sccp_voice_coll_1),
    serve<get_sccp_aggregate>(get_sccp_aggregate_1),
    serve_set<set_sccp_voice_coll_thresholds>(set_sccp_voice_coll_thresholds_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_sccp_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_sccp_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_sccp_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_sccp_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::latency_alarm_enable, 1>>(
        enable_sccp_voice_coll_latency_alarm_1),
    serve_set<voice_switch<sccp, &voice_config_params_t::latency_alarm_enable, 0>>(
        disable_sccp_voice_coll_latency_alarm_1),
    serve_set<voice_clear<sccp, &sccp_monitor::phones>>(clear_sccp_phone_table_1),
    serve_set<voice_clear<sccp, &sccp_monitor::calls>>(clear_sccp_call_table_1),
    serve_set<voice_clear<sccp, &sccp_monitor::top_jitter>>(clear_sccp_top_jitter_table_1),
    serve_set<voice_clear<sccp, &sccp_monitor::top_lost>>(clear_sccp_top_pkt_lost_table_1),
    serve_set<voice_clear<sccp, &sccp_monitor::top_latency>>(clear_sccp_top_latency_table_1),
    serve<voice_get<h323, &h323_monitor::calls, rmonrpc_h323_call_row_t>>(h323_call_rec_get_1),
    serve<voice_get<h323, &h323_monitor::phones, rmonrpc_h323_phone_row_t>>(h323_phone_rec_get_1),
    serve<voice_get<h323, &h323_monitor::top_jitter, rmonrpc_h323_call_row_t>>(h323_top_jitter_rec_get_1),
    serve<voice_get<h323, &h323_monitor::top_lost, rmonrpc_h323_call_row_t>>(h323_top_pkt_lost_rec_get_1),
    serve<get_h323_voice_coll_params>(get_h323_voice_coll_params_1),
    serve_set<set_h323_voice_coll_table_sizes>(set_h323_voice_coll_table_sizes_1),
    serve_set<voice_switch<h323, &voice_config_params_t::enable, 1>>(enable_h323_voice_coll_1),
    serve_set<voice_switch<h323, &voice_config_params_t::enable, 0>>(disable_h323_voice_coll_1),
    serve<get_h323_aggregate>(get_h323_aggregate_1),
    serve_set<set_h323_voice_coll_thresholds>(set_h323_voice_coll_thresholds_1),
    serve_set<voice_switch<h323, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_h323_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<h323, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_h323_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<h323, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_h323_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_switch<h323, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_h323_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_clear<h323, &h323_monitor::phones>>(clear_h323_phone_table_1),
    serve_set<voice_clear<h323, &h323_monitor::calls>>(clear_h323_call_table_1),
    serve_set<voice_clear<h323, &h323_monitor::top_jitter>>(clear_h323_top_jitter_table_1),
    serve_set<voice_clear<h323, &h323_monitor::top_lost>>(clear_h323_top_pkt_lost_table_1),
    serve<voice_get<mgcp, &mgcp_monitor::calls, rmonrpc_mgcp_call_t>>(mgcp_call_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::phones, rmonrpc_mgcp_phone_t>>(mgcp_phone_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::top_jitter, rmonrpc_mgcp_call_t>>(mgcp_top_jitter_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::top_lost, rmonrpc_mgcp_call_t>>(mgcp_top_pkt_lost_rec_get_1),
    serve<get_mgcp_voice_coll_params>(get_mgcp_voice_coll_params_1),
    serve_set<set_mgcp_voice_coll_table_sizes>(set_mgcp_voice_coll_table_sizes_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::enable, 1>>(enable_mgcp_voice_coll_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::enable, 0>>(disable_mgcp_voice_coll_1),
    serve<get_mgcp_aggregate>(get_mgcp_aggregate_1),
    serve_set<set_mgcp_voice_coll_thresholds>(set_mgcp_voice_coll_thresholds_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_mgcp_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_mgcp_voice_coll_jitter_alarm_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_mgcp_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_switch<mgcp, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_mgcp_voice_coll_pkt_lost_alarm_1),
    serve_set<voice_clear<mgcp, &mgcp_monitor::phones>>(clear_mgcp_phone_table_1),
    serve_set<voice_clear<mgcp, &mgcp_monitor::calls>>(clear_mgcp_call_table_1),
    serve_set<voice_clear<mgcp, &mgcp_monitor::top_jitter>>(clear_mgcp_top_jitter_table_1),
    serve_set<voice_clear<mgcp, &mgcp_monitor::top_lost>>(clear_mgcp_top_pkt_lost_table_1),
};

constexpr state_part kept[] = {
    keep<save_sccp_settings, load_sccp_settings>("sccp"),
    keep<save_h323_settings, load_h323_settings>("h323"),
    keep<save_mgcp_settings, load_mgcp_settings>("mgcp"),
};

} // namespace

extern const family voice_family = {
    .name = "voice",
    .stop = end_watch,
    .tick = on_voice_tick,
    .interface_changed = watch_interface,
    .interface_gone = leave_interface,
    .procedures = procedures,
    .kept = kept,
};
