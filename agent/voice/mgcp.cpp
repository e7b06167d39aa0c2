// SPDX-License-Identifier: MIT
#include "agent/voice/voice.h"

namespace {

monitored_phone<rmonrpc_mgcp_phone_t> &seen(mgcp_monitor &monitor, const mgcp_phone &phone)
{
    return seen_phone(monitor, phone.name, [&](rmonrpc_mgcp_phone_t &row, uint32_t index) {
        row.index = static_cast<int32_t>(index);
        row.phone_ipAddr = phone.identity.address;
        row.phone_owner = phone.identity.owner;
        row.phone_alias = phone.identity.alias;
        row.phone_num = phone.identity.number;
    });
}

/** Fills in what follows from the call as a whole. */
void complete(rmonrpc_mgcp_call_t &row, const mgcp_call &call, uint32_t now)
{
    const mgcp_identity &caller = call.caller.identity;
    const mgcp_identity &callee = call.callee.identity;
    row.ca_address_1_length = caller.call_agent_length;
    row.ca_address_2_length = callee.call_agent_length;
    row.ca_address_1 = caller.call_agent;
    row.ca_address_2 = callee.call_agent;
    row.gw_address_1_length = caller.gateway_length;
    row.gw_address_2_length = callee.gateway_length;
    row.gw_address_1 = caller.gateway;
    row.gw_address_2 = callee.gateway;
    row.caller_endpoint_id = caller.endpoint;
    row.callee_endpoint_id = callee.endpoint;
    row.caller_alias = caller.alias;
    row.callee_alias = callee.alias;
    row.caller_phone_num = caller.number;
    row.callee_phone_num = callee.number;
    row.media.value[0].caller_ip_addr = caller.address;
    row.media.value[0].callee_ip_addr = callee.address;
    row.start_time = now - std::min(now, call.times.duration * 100 + call.times.took);
    row.end_time = now;
}

/** One leg of a call goes into its phone's row and the sums. */
void add_leg(
    mgcp_monitor &monitor,
    const mgcp_phone &phone,
    const rmonrpc_mgcp_call_t &row,
    const voice_quality &quality)
{
    if (phone.name.empty())
        return;
    auto &kept = seen(monitor, phone);
    kept.sums.calls++;
    add_quality(kept.sums, quality);
    kept.row.num_call_mon = kept.sums.calls;
    kept.row.avg_pkt_lost = average(kept.sums.lost, kept.sums.samples);
    kept.row.avg_jitter = average(kept.sums.jitter, kept.sums.samples);
    kept.row.worst_pkt_lost = kept.sums.worst_lost;
    kept.row.worst_jitter = kept.sums.worst_jitter;
    kept.row.flag |= row.call_flag;
    put_in_history(kept.row, row);
    add_quality(monitor.sums, quality);
}

/** The figures of one call that rank it. */
struct leg_figures {
    uint32_t lost_1;
    uint32_t lost_2;
    uint32_t jitter_1;
    uint32_t jitter_2;
};

leg_figures figures_of(const rmonrpc_mgcp_call_t &row)
{
    const rmonrpc_mgcp_media_session_t &media = row.media.value[0];
    const auto unsigned_of = [](int32_t value) { return static_cast<uint32_t>(std::max(value, 0)); };
    return {
        unsigned_of(media.pkt_loss_1), unsigned_of(media.pkt_loss_2), unsigned_of(media.jitter_1),
        unsigned_of(media.jitter_2)};
}

rmonrpc_mgcp_call_t
row_of(const mgcp_monitor &monitor, const mgcp_call &call, uint32_t index, uint32_t up_time)
{
    rmonrpc_mgcp_call_t row = call.record;
    row.index = static_cast<int32_t>(index);
    complete(row, call, up_time);
    // The worse leg ranks the call.
    const leg_figures legs = figures_of(row);
    row.call_flag = alarms_of(
        monitor.settings, std::max(legs.jitter_1, legs.jitter_2), std::max(legs.lost_1, legs.lost_2), 0);
    return row;
}

} // namespace

void see_phone(mgcp_monitor &monitor, const mgcp_phone &phone)
{
    if (!monitor.settings.enable)
        return;
    seen(monitor, phone);
    trim_tables(monitor);
}

void show_call(mgcp_monitor &monitor, mgcp_call &call, uint32_t up_time)
{
    show_running(monitor, call, [&](uint32_t index) {
        rmonrpc_mgcp_call_t row = row_of(monitor, call, index, up_time);
        row.end_time = 0;
        return row;
    });
    trim_tables(monitor);
}

void see_call(mgcp_monitor &monitor, const mgcp_call &call, uint32_t up_time)
{
    if (!monitor.settings.enable)
        return;
    const uint32_t index = call.index ? call.index : ++monitor.last_call;
    const rmonrpc_mgcp_call_t row = row_of(monitor, call, index, up_time);
    const auto sampled = [](uint64_t lost, uint64_t jitter, uint32_t samples) {
        return voice_quality{lost * samples, jitter * samples, samples};
    };
    const leg_figures legs = figures_of(row);
    monitor.sums.calls++;
    monitor.sums.flag |= row.call_flag;
    add_leg(monitor, call.caller, row, sampled(legs.lost_1, legs.jitter_1, call.samples));
    add_leg(monitor, call.callee, row, sampled(legs.lost_2, legs.jitter_2, call.callee_samples));
    if (call.samples + call.callee_samples > 0) {
        rank_call(monitor.top_jitter, std::max(legs.jitter_1, legs.jitter_2), row);
        rank_call(monitor.top_lost, std::max(legs.lost_1, legs.lost_2), row);
    }
    monitor.calls.insert_or_assign(index, row);
    trim_tables(monitor);
}
