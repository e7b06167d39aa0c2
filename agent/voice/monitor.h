// SPDX-License-Identifier: MIT
/*
 * What the three voice monitors have in common: a phone table, a call table,
 * top tables that rank calls, sums over all calls, and the settings of these.
 *
 * Rows are those of the wire. Phones and calls are numbered in the order in
 * which they were seen first; a row of a top table has its rank as index. A
 * table that is full drops the phone that was quiet for longest, the oldest
 * call, the last in rank.
 */
#pragma once

#include "agent/core/reply.h"
#include "agent/core/table.h"

#include "rmon/rpc/rmonrpc_voice.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/** Rows of one table, as far as settings may go. */
inline constexpr uint32_t max_voice_rows = 1000;

/** Octets on the wire of one reply's rows. */
inline constexpr std::size_t max_voice_octets = 8 * 1024 * 1024;

/** Calls of which a phone's row has the figures. */
inline constexpr int32_t max_history = 5;

/** What is above its threshold: bits of a flag word. */
inline constexpr uint32_t jitter_alarm = 1;
inline constexpr uint32_t loss_alarm = 2;
inline constexpr uint32_t latency_alarm = 4;

/** How good a call was, as one party or one direction saw it; jitter in the protocol's own unit. */
struct voice_quality {
    uint64_t lost;   // sum over the samples
    uint64_t jitter; // sum over the samples
    uint32_t samples;
};

struct voice_sums {
    uint32_t flag;
    uint32_t calls;
    uint64_t lost;
    uint64_t jitter;
    uint64_t samples;
    uint32_t worst_lost;
    uint32_t worst_jitter;
};

inline uint32_t as_u32(uint64_t value)
{
    return static_cast<uint32_t>(std::min<uint64_t>(value, UINT32_MAX));
}

inline uint32_t average(uint64_t sum, uint64_t count)
{
    return count == 0 ? 0 : as_u32(sum / count);
}

inline void add_quality(voice_sums &sums, const voice_quality &quality)
{
    sums.lost += quality.lost;
    sums.jitter += quality.jitter;
    sums.samples += quality.samples;
    sums.worst_lost = std::max(sums.worst_lost, average(quality.lost, quality.samples));
    sums.worst_jitter = std::max(sums.worst_jitter, average(quality.jitter, quality.samples));
}

/** Of SCCP and MGCP. */
inline rmonrpc_sccp_aggregate_t averages_to_show(const voice_sums &sums)
{
    return {sums.flag,
            sums.calls,
            average(sums.lost, sums.samples),
            average(sums.jitter, sums.samples),
            sums.worst_lost,
            sums.worst_jitter};
}

/** Of H.323, whose clients take the averages themselves. */
inline rmonrpc_h323_aggregate_t sums_to_show(const voice_sums &sums)
{
    return {sums.flag,       sums.calls,        as_u32(sums.lost),   as_u32(sums.jitter),
            sums.worst_lost, sums.worst_jitter, as_u32(sums.samples)};
}

template <class Row> struct monitored_phone {
    std::string name; // in the scenario
    Row row;
    voice_sums sums;
    uint64_t last_active; // number of the call
};

template <class Row> struct ranked_call {
    uint32_t score;
    Row row;
};

/** SCCP has all of it; the others do without latency. */
template <class Phone, class Call, class Top> struct voice_monitor {
    voice_config_params_t settings{1, 100, 200, 20, 20, 20, 30, 5, 150, 0, 0, 0};
    std::map<uint32_t, monitored_phone<Phone>> phones;
    std::map<uint32_t, Call> calls;
    std::vector<ranked_call<Top>> top_jitter;
    std::vector<ranked_call<Top>> top_lost;
    std::vector<ranked_call<Top>> top_latency;
    voice_sums sums{};
    uint32_t last_phone = 0;
    uint32_t last_call = 0;
    uint64_t seen = 0; // calls and phones, to tell who was quiet for longest
};

using sccp_monitor = voice_monitor<rmonrpc_sccp_phone_row_t, rmonrpc_sccp_call_row_t, rmonrpc_sccp_top_row_t>;
using h323_monitor =
    voice_monitor<rmonrpc_h323_phone_row_t, rmonrpc_h323_call_row_t, rmonrpc_h323_call_row_t>;
using mgcp_monitor = voice_monitor<rmonrpc_mgcp_phone_t, rmonrpc_mgcp_call_t, rmonrpc_mgcp_call_t>;

/** The alarms of a call with these figures. */
inline uint32_t
alarms_of(const voice_config_params_t &settings, uint32_t jitter, uint32_t lost, uint32_t latency)
{
    return (settings.jitter_alarm_enable && jitter > settings.jitter_threshold ? jitter_alarm : 0)
           | (settings.pkt_lost_alarm_enable && lost > settings.pkt_lost_threshold ? loss_alarm : 0)
           | (settings.latency_alarm_enable && latency > settings.latency_threshold ? latency_alarm : 0);
}

/** The phone of this name, which is made if it is not there. Identify fills in its row: more may be known of
 * it than before. */
template <class Monitor, class Identify>
auto &seen_phone(Monitor &monitor, const std::string &name, const Identify &identify)
{
    const auto found =
        std::ranges::find_if(monitor.phones, [&](const auto &entry) { return entry.second.name == name; });
    const uint32_t index = found == monitor.phones.end() ? ++monitor.last_phone : found->first;
    auto &phone = monitor.phones[index];
    phone.name = name;
    identify(phone.row, index);
    phone.last_active = ++monitor.seen;
    return phone;
}

/**
 * The row of a call that runs, which is made if there is none yet, or renewed; one that was dropped stays so.
 * Build makes it for its number.
 */
template <class Monitor, class Call, class Build>
void show_running(Monitor &monitor, Call &call, const Build &build)
{
    if (call.index == 0 && !monitor.settings.enable)
        return;
    if (call.index == 0) {
        call.index = ++monitor.last_call;
        monitor.calls.emplace(call.index, build(call.index));
    } else if (const auto found = monitor.calls.find(call.index); found != monitor.calls.end()) {
        found->second = build(call.index);
    }
}

/** Puts a call in front of a phone's history. */
template <class Row, class Call> void put_in_history(Row &row, const Call &call)
{
    auto *history = row.history.value;
    std::copy_backward(history, history + max_history - 1, history + max_history);
    history[0] = call;
    row.num_hist_row = std::min(row.num_hist_row + 1, max_history);
}

/** Puts a call at its place in a top table, behind those that are as bad. */
template <class Row> void rank_call(std::vector<ranked_call<Row>> &top, uint32_t score, const Row &row)
{
    const auto place = std::ranges::find_if(top, [&](const auto &one) { return one.score < score; });
    top.insert(place, {score, row});
}

/** Cuts all tables to their sizes. */
template <class Monitor> void trim_tables(Monitor &monitor)
{
    const voice_config_params_t &sizes = monitor.settings;
    while (monitor.phones.size() > sizes.num_phone_tbl_row)
        monitor.phones.erase(std::ranges::min_element(
            monitor.phones, {}, [](const auto &entry) { return entry.second.last_active; }));
    while (monitor.calls.size() > sizes.num_call_tbl_row)
        monitor.calls.erase(monitor.calls.begin());
    const auto cut = [](auto &top, uint32_t size) {
        if (top.size() > size)
            top.erase(top.begin() + size, top.end());
    };
    cut(monitor.top_jitter, sizes.num_top_jitter_row);
    cut(monitor.top_lost, sizes.num_top_pkt_lost_row);
    cut(monitor.top_latency, sizes.num_top_latency_row);
}
