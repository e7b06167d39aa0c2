// SPDX-License-Identifier: MIT
#include "agent/voice/sccp_shown.h"

namespace {

/** call_status of a row. */
constexpr uint32_t not_answered = 1;
constexpr uint32_t answered = 2;
constexpr uint32_t end_not_seen = 3;

/** The number and the name of a phone's line; of its first one where the line is not known. */
sccp_side line_of(const sccp_session &session, uint32_t instance)
{
    if (const auto found = session.lines.find(instance); found != session.lines.end())
        return found->second;
    return session.lines.empty() ? sccp_side{} : session.lines.begin()->second;
}

/** A phone by its address: no scenario's name begins like this. */
std::string name_of_phone(const net_endpoint &phone)
{
    return "\n" + text_of(phone.address);
}

/** What is known of the other side of a leg that has no leg itself. */
sccp_phone elsewhere(const sccp_leg &leg)
{
    sccp_phone phone;
    const sccp_side &other = leg.direction == sccp_inbound ? leg.calling : leg.called;
    phone.identity.phone_ipAddr_length =
        static_cast<int32_t>(put_address(phone.identity.phone_ipAddr, leg.sends.address));
    put_text(phone.identity.phone_num, other.number);
    put_text(phone.identity.phone_owner, other.name);
    return phone;
}

void put_figures(rmonrpc_sccp_qual_row_t &qual, const leg_report &figures)
{
    qual.pkt_sent = figures.packets_sent;
    qual.oct_sent = figures.octets_sent;
    qual.pkt_recv = figures.packets_received;
    qual.oct_recv = figures.octets_received;
    qual.pkt_lost = figures.lost;
    qual.jitter = figures.jitter;
    qual.latency = figures.latency;
}

rmonrpc_sccp_qual_row_t qual_of(const sccp_leg &leg, const leg_media &media)
{
    rmonrpc_sccp_qual_row_t qual = leg.qual;
    qual.call_state = leg.ended ? sccp_on_hook : leg.state;
    qual.call_status = leg.silent ? end_not_seen : leg.answered ? answered : not_answered;
    qual.call_direction = leg.direction;
    put_figures(qual, report_of(leg.report, media.received, media.sent));
    return qual;
}

} // namespace

sccp_phone phone_of(const sccp_tracker &tracker, const sccp_session &session, const sccp_leg *leg)
{
    sccp_phone phone;
    phone.name = name_of_phone(session.phone);
    rmonrpc_sccp_common_row_t &identity = phone.identity;
    identity.vers = static_cast<int32_t>(session.version);
    identity.phone_ipAddr_length =
        static_cast<int32_t>(put_address(identity.phone_ipAddr, session.phone.address));
    sccp_side line = line_of(session, leg ? leg->qual.line_instance : 1);
    if (leg) {
        const sccp_side &own = leg->direction == sccp_inbound ? leg->called : leg->calling;
        if (line.number.empty())
            line.number = own.number;
        if (line.name.empty())
            line.name = own.name;
    }
    put_text(identity.phone_num, line.number);
    put_text(identity.phone_owner, line.name);
    std::string model = session.device;
    if (session.device_type != 0)
        model += (model.empty() ? "type " : ", type ") + std::to_string(session.device_type);
    put_text(identity.phone_model, model);
    if (const auto name = tracker.interface_names.find(session.interface);
        name != tracker.interface_names.end())
        put_text(identity.if_name, name->second);
    return phone;
}

sccp_call call_of(
    const sccp_tracker &tracker,
    const rtp_follower &follower,
    const sccp_found_leg &one,
    const sccp_found_leg &other)
{
    sccp_call call;
    const leg_media media = media_of(*one.leg, follower);
    const bool is_called = one.leg->direction == sccp_inbound;
    sccp_phone &own = is_called ? call.callee : call.caller;
    rmonrpc_sccp_qual_row_t &own_qual = is_called ? call.callee_qual : call.qual;
    sccp_phone &far = is_called ? call.caller : call.callee;
    rmonrpc_sccp_qual_row_t &far_qual = is_called ? call.qual : call.callee_qual;
    uint32_t far_samples = 0;

    own = phone_of(tracker, *one.session, one.leg);
    own_qual = qual_of(*one.leg, media);
    if (other.leg) {
        const leg_media others = media_of(*other.leg, follower);
        far = phone_of(tracker, *other.session, other.leg);
        far_qual = qual_of(*other.leg, others);
        far_samples = samples_of(*other.leg, others);
    } else {
        far = elsewhere(*one.leg);
        far_qual.call_state = own_qual.call_state;
        far_qual.call_status = own_qual.call_status;
        far_qual.call_direction = is_called ? sccp_outbound : sccp_inbound;
        far_qual.local_rtp_port = own_qual.remote_rtp_port;
        far_qual.remote_rtp_port = own_qual.local_rtp_port;
        put_figures(far_qual, report_of({}, media.sent, media.received));
    }
    const uint32_t own_samples = samples_of(*one.leg, media);
    call.samples = is_called ? far_samples : own_samples;
    call.callee_samples = is_called ? own_samples : far_samples;
    return call;
}
