// SPDX-License-Identifier: MIT
#include "agent/voice/voice.h"

#include <cstring>

namespace {

/** Jitter travels in hundredths; thresholds are whole units. */
constexpr uint32_t hundredths = 100;

monitored_phone<rmonrpc_h323_phone_row_t> &seen(h323_monitor &monitor, const h323_phone &phone)
{
    return seen_phone(monitor, phone.name, [&](rmonrpc_h323_phone_row_t &row, uint32_t index) {
        row.common = phone.identity;
        row.common.index = index;
    });
}

/** The two directions of a call: forward, then reverse. */
struct call_quality {
    voice_quality directions[2];
    uint32_t lost; // of the worse one, which ranks the call
    uint32_t jitter;
};

call_quality quality_of(const rmonrpc_h323_qual_row_t &qual)
{
    call_quality quality{
        {{qual.forward_quality.sr_fraction_lost, qual.forward_quality.sr_jitter, qual.forward_num_samples},
         {qual.reverse_quality.sr_fraction_lost, qual.reverse_quality.sr_jitter, qual.reverse_num_samples}},
        0,
        0};
    for (const voice_quality &one : quality.directions) {
        quality.lost = std::max(quality.lost, average(one.lost, one.samples));
        quality.jitter = std::max(quality.jitter, average(one.jitter, one.samples));
    }
    return quality;
}

/** A call's row, with what follows from the call as a whole. */
rmonrpc_h323_call_row_t
row_of(const h323_monitor &monitor, const h323_call &call, uint32_t index, uint32_t up_time)
{
    rmonrpc_h323_call_row_t row{call.caller.identity, call.qual};
    row.common.index = index;
    row.qual.f = call.caller.identity.forward;
    row.qual.reverse = call.callee.identity.forward;
    row.qual.start_time = up_time - std::min(up_time, call.times.duration * 100 + call.times.took);
    row.qual.end_time = up_time;
    const call_quality quality = quality_of(row.qual);
    row.qual.flag = alarms_of(monitor.settings, quality.jitter / hundredths, quality.lost, 0);
    return row;
}

void add_call(voice_sums &sums, const voice_quality (&directions)[2], uint32_t flag)
{
    sums.calls++;
    sums.flag |= flag;
    for (const voice_quality &quality : directions)
        add_quality(sums, quality);
}

} // namespace

void see_phone(h323_monitor &monitor, const h323_phone &phone)
{
    if (!monitor.settings.enable)
        return;
    seen(monitor, phone);
    trim_tables(monitor);
}

void show_call(h323_monitor &monitor, h323_call &call, uint32_t up_time)
{
    show_running(monitor, call, [&](uint32_t index) {
        rmonrpc_h323_call_row_t row = row_of(monitor, call, index, up_time);
        row.qual.end_time = 0;
        return row;
    });
    trim_tables(monitor);
}

void see_call(h323_monitor &monitor, const h323_call &call, uint32_t up_time)
{
    if (!monitor.settings.enable)
        return;
    const uint32_t index = call.index ? call.index : ++monitor.last_call;
    const rmonrpc_h323_call_row_t row = row_of(monitor, call, index, up_time);
    const call_quality quality = quality_of(row.qual);
    add_call(monitor.sums, quality.directions, row.qual.flag);
    for (const h323_phone *phone : {&call.caller, &call.callee}) {
        auto &kept = seen(monitor, *phone);
        add_call(kept.sums, quality.directions, row.qual.flag);
        kept.row.aggregate = sums_to_show(kept.sums);
        put_in_history(kept.row, row.qual);
    }
    rank_call(monitor.top_jitter, quality.jitter, row);
    rank_call(monitor.top_lost, quality.lost, row);
    monitor.calls.insert_or_assign(index, row);
    trim_tables(monitor);
}
