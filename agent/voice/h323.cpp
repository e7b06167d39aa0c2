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

/** Fills in what follows from the call as a whole. */
void complete(rmonrpc_h323_qual_row_t &qual, const h323_call &call, uint32_t now)
{
    qual.f = call.caller.identity.forward;
    qual.reverse = call.callee.identity.forward;
    qual.start_time = now - std::min(now, call.times.duration * 100);
    qual.end_time = now;
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

void see_call(h323_monitor &monitor, const h323_call &call, uint32_t up_time)
{
    if (!monitor.settings.enable)
        return;
    const uint32_t index = ++monitor.last_call;
    rmonrpc_h323_call_row_t row{call.caller.identity, call.qual};
    row.common.index = index;
    complete(row.qual, call, up_time);

    const voice_quality directions[2] = {
        {row.qual.forward_quality.sr_fraction_lost, row.qual.forward_quality.sr_jitter,
         row.qual.forward_num_samples},
        {row.qual.reverse_quality.sr_fraction_lost, row.qual.reverse_quality.sr_jitter,
         row.qual.reverse_num_samples},
    };
    // The worse direction ranks the call.
    uint32_t jitter = 0;
    uint32_t lost = 0;
    for (const voice_quality &quality : directions) {
        jitter = std::max(jitter, average(quality.jitter, quality.samples));
        lost = std::max(lost, average(quality.lost, quality.samples));
    }
    row.qual.flag = alarms_of(monitor.settings, jitter / hundredths, lost, 0);

    add_call(monitor.sums, directions, row.qual.flag);
    for (const h323_phone *phone : {&call.caller, &call.callee}) {
        auto &kept = seen(monitor, *phone);
        add_call(kept.sums, directions, row.qual.flag);
        kept.row.aggregate = sums_to_show(kept.sums);
        put_in_history(kept.row, row.qual);
    }
    rank_call(monitor.top_jitter, jitter, row);
    rank_call(monitor.top_lost, lost, row);
    monitor.calls.emplace(index, row);
    trim_tables(monitor);
}
