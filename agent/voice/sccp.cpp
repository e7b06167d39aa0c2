// SPDX-License-Identifier: MIT
#include "agent/voice/voice.h"

#include <cstring>

namespace {

monitored_phone<rmonrpc_sccp_phone_row_t> &seen(sccp_monitor &monitor, const sccp_phone &phone)
{
    return seen_phone(monitor, phone.name, [&](rmonrpc_sccp_phone_row_t &row, uint32_t index) {
        row.common = phone.identity;
        row.common.index = index;
    });
}

/** Fills in what follows from the call as a whole. */
void complete(
    rmonrpc_sccp_qual_row_t &qual,
    const rmonrpc_sccp_common_row_t &peer,
    uint32_t direction,
    const call_times &times,
    uint32_t now,
    const voice_config_params_t &settings)
{
    if (qual.call_direction == 0)
        qual.call_direction = direction;
    std::memcpy(qual.peer_ipAddr.value, peer.phone_ipAddr.value, sizeof qual.peer_ipAddr.value);
    qual.peer_num = peer.phone_num;
    qual.peer_owner = peer.phone_owner;
    qual.start_time = now - std::min(now, times.duration * 100 + times.took);
    qual.end_time = now;
    qual.flag = alarms_of(settings, qual.jitter, qual.pkt_lost, qual.latency);
}

/** One party's side of a call goes into its phone's row, the ranks and the sums. */
void add_party(
    sccp_monitor &monitor, const sccp_phone &phone, const rmonrpc_sccp_qual_row_t &qual, uint32_t samples)
{
    if (phone.name.empty())
        return;
    const voice_quality quality{uint64_t{qual.pkt_lost} * samples, uint64_t{qual.jitter} * samples, samples};
    auto &kept = seen(monitor, phone);
    kept.sums.calls++;
    kept.sums.flag |= qual.flag;
    add_quality(kept.sums, quality);
    kept.row.aggregate = averages_to_show(kept.sums);
    put_in_history(kept.row, qual);
    monitor.sums.flag |= qual.flag;
    if (samples == 0)
        return;

    const rmonrpc_sccp_top_row_t ranked{kept.row.common, qual};
    rank_call(monitor.top_jitter, qual.jitter, ranked);
    rank_call(monitor.top_lost, qual.pkt_lost, ranked);
    rank_call(monitor.top_latency, qual.latency, ranked);
    add_quality(monitor.sums, quality);
}

rmonrpc_sccp_call_row_t
row_of(const sccp_monitor &monitor, const sccp_call &call, uint32_t index, uint32_t up_time)
{
    const voice_config_params_t &settings = monitor.settings;
    rmonrpc_sccp_call_row_t row{call.caller.identity, call.qual, call.callee.identity, call.callee_qual};
    row.common.index = index;
    row.callee_common.index = index;
    complete(row.qual, call.callee.identity, sccp_outbound, call.times, up_time, settings);
    complete(row.callee_qual, call.caller.identity, sccp_inbound, call.times, up_time, settings);
    return row;
}

} // namespace

void see_phone(sccp_monitor &monitor, const sccp_phone &phone)
{
    if (!monitor.settings.enable)
        return;
    seen(monitor, phone);
    trim_tables(monitor);
}

void show_call(sccp_monitor &monitor, sccp_call &call, uint32_t up_time)
{
    show_running(monitor, call, [&](uint32_t index) {
        rmonrpc_sccp_call_row_t row = row_of(monitor, call, index, up_time);
        row.qual.end_time = row.callee_qual.end_time = 0;
        return row;
    });
    trim_tables(monitor);
}

void see_call(sccp_monitor &monitor, const sccp_call &call, uint32_t up_time)
{
    if (!monitor.settings.enable)
        return;
    const uint32_t index = call.index ? call.index : ++monitor.last_call;
    const rmonrpc_sccp_call_row_t row = row_of(monitor, call, index, up_time);
    monitor.sums.calls++;
    add_party(monitor, call.caller, row.qual, call.samples);
    add_party(monitor, call.callee, row.callee_qual, call.callee_samples);
    monitor.calls.insert_or_assign(index, row);
    trim_tables(monitor);
}
