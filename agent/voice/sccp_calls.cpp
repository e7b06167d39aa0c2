// SPDX-License-Identifier: MIT
#include "agent/voice/sccp_calls.h"

#include "agent/voice/sccp_shown.h"
#include "agent/voice/voice.h"

#include <algorithm>

namespace {

constexpr uint16_t manager_port = 2000;

/** Lines of one phone. */
constexpr std::size_t max_lines = 64;

/** Numbers of messages. */
enum sccp_kind : uint64_t {
    register_request = 0x0001,
    on_hook = 0x0007,
    open_receive_channel_ack = 0x0022,
    connection_statistics = 0x0023,
    unregister = 0x0027,
    register_ack = 0x0081,
    start_media_transmission = 0x008a,
    call_info = 0x008f,
    line_stat = 0x0092,
    open_receive_channel = 0x0105,
    call_state = 0x0111,
    dynamic_call_info = 0x014a,
};

uint32_t field(const voice_message &message, std::string_view name)
{
    return static_cast<uint32_t>(number_of(message.body, name).value_or(0));
}

net_address address_field(const voice_message &message, const std::string &name)
{
    const net_address address = address_of(message.body, name + ".ipv4");
    return address.length != 0 ? address : address_of(message.body, name + ".ipv6");
}

/* ---- legs ----------------------------------------------------------------------------- */

/** Whether a leg was a call: off the hook and on again is none. */
bool is_call(const sccp_leg &leg)
{
    return !leg.calling.number.empty() || !leg.called.number.empty() || is_known(leg.receives)
           || is_known(leg.sends) || leg.report.told;
}

/** Whether a message comes late, of a leg that was over: the manager uses a reference again only long after
 * that. */
bool is_past(const sccp_session &session, uint32_t reference, int64_t time)
{
    return std::ranges::any_of(session.over, [&](const sccp_past_leg &past) {
        return past.reference == reference && time - past.end < int64_t{seconds_of_silence} * 1000000;
    });
}

/** The leg that a message is about; null when there is none, and the message begins none. */
sccp_leg *leg_of(sccp_session &session, const voice_message &message, bool begins)
{
    const uint32_t reference = field(message, "skinny.callReference");
    if (const auto found = session.legs.find(reference); found != session.legs.end())
        return &found->second;
    if (reference == 0 || !begins || session.legs.size() >= max_sccp_legs
        || is_past(session, reference, message.time))
        return nullptr;
    sccp_leg &leg = session.legs[reference];
    leg.interface = message.interface;
    leg.start = message.time;
    leg.qual.call_reference = reference;
    return &leg;
}

/* ---- messages ----------------------------------------------------------------------------- */

void take_registration(sccp_session &session, const voice_message &message)
{
    session.device = text_of(message.body, "skinny.DeviceName");
    session.device_type = field(message, "skinny.deviceType");
    session.version = field(message, "skinny.protocolVer");
    session.lines.clear();
}

void take_line(sccp_session &session, const voice_message &message)
{
    const uint32_t number = field(message, "skinny.lineNumber");
    if (session.lines.size() >= max_lines && !session.lines.contains(number))
        return;
    session.lines[number] = {
        std::string(text_of(message.body, "skinny.lineDirNumber")),
        std::string(text_of(message.body, "skinny.lineFullyQualifiedDisplayName"))};
}

void take_state(sccp_leg &leg, const voice_message &message)
{
    leg.state = field(message, "skinny.callState");
    leg.qual.line_instance = field(message, "skinny.lineInstance");
    leg.answered |= leg.state == sccp_connected;
    if (leg.state == sccp_on_hook)
        end_leg(leg, message.time, message.up_time);
}

/** A text of a message, or what was known before where it is empty. */
void learn(std::string &known, std::string_view text)
{
    if (!text.empty())
        known = text;
}

void take_info(sccp_leg &leg, const voice_message &message)
{
    const decoded_part &body = message.body;
    learn(leg.calling.number, text_of(body, "skinny.callingParty"));
    learn(leg.calling.name, text_of(body, "skinny.callingPartyName"));
    learn(leg.called.number, text_of(body, "skinny.calledParty"));
    learn(leg.called.name, text_of(body, "skinny.calledPartyName"));
    leg.direction = field(message, "skinny.callType");
    leg.qual.line_instance = field(message, "skinny.lineInstance");
}

void take_receiving(sccp_leg &leg, const voice_message &message)
{
    leg.qual.conference_id = field(message, "skinny.conferenceId");
    leg.qual.pass_thru_party_id = field(message, "skinny.passThroughPartyId");
    leg.qual.rtp_sampling_period = field(message, "skinny.milliSecondPacketSize");
    leg.qual.payload_type = field(message, "skinny.compressionType");
    leg.qual.g723_bit_rate = field(message, "skinny.g723BitRate");
}

void take_sending(sccp_leg &leg, const voice_message &message)
{
    take_receiving(leg, message);
    leg.qual.rtp_pre_value = field(message, "skinny.precedenceValue");
    leg.qual.silence_sup = field(message, "skinny.ssValue");
    leg.qual.max_frames_per_pkt = field(message, "skinny.maxFramesPerPacket");
    leg.sends = {
        address_field(message, "skinny.remoteIpAddr"),
        static_cast<uint16_t>(field(message, "skinny.remotePortNumber"))};
    leg.qual.remote_rtp_port = leg.sends.port;
    leg.answered = true;
}

void take_place(sccp_leg &leg, const voice_message &message)
{
    leg.receives = {
        address_field(message, "skinny.ipAddr"), static_cast<uint16_t>(field(message, "skinny.portNumber"))};
    leg.qual.local_rtp_port = leg.receives.port;
}

void take_report(sccp_leg &leg, const voice_message &message)
{
    leg.report = {
        true,
        field(message, "skinny.numberPacketsSent"),
        field(message, "skinny.numberOctetsSent"),
        field(message, "skinny.numberPacketsReceived"),
        field(message, "skinny.numberOctetsReceived"),
        field(message, "skinny.numberPacketsLost"),
        field(message, "skinny.jitter"),
        field(message, "skinny.latency"),
    };
}

/** Ends all legs of a phone that registers or goes. */
void end_legs(sccp_session &session, const voice_message &message)
{
    for (auto &[reference, leg] : session.legs)
        end_leg(leg, message.time, message.up_time);
}

/** The message of a phone's on-hook key has an old form without a reference: then it is about its only leg.
 */
sccp_leg *leg_that_ends(sccp_session &session, const voice_message &message)
{
    if (sccp_leg *named = leg_of(session, message, false))
        return named;
    const bool is_the_only = field(message, "skinny.callReference") == 0 && session.legs.size() == 1;
    return is_the_only ? &session.legs.begin()->second : nullptr;
}

/** What a message says of the leg that it is about; null when it is about none. */
sccp_leg *take_call_message(sccp_session &session, rtp_follower &follower, const voice_message &message)
{
    const uint64_t kind = number_of(message.body, "skinny.messageId").value_or(0);
    sccp_leg *leg = nullptr;
    switch (kind) {
    case on_hook:
        if ((leg = leg_that_ends(session, message)))
            end_leg(*leg, message.time, message.up_time);
        break;
    case call_state:
        if ((leg = leg_of(session, message, field(message, "skinny.callState") != sccp_on_hook)))
            take_state(*leg, message);
        break;
    case call_info:
    case dynamic_call_info:
        if ((leg = leg_of(session, message, true)))
            take_info(*leg, message);
        break;
    case open_receive_channel:
        if ((leg = leg_of(session, message, true)))
            take_receiving(*leg, message);
        break;
    case open_receive_channel_ack:
        if ((leg = leg_of(session, message, true)))
            take_place(*leg, message);
        if (leg)
            announce_place(*leg, follower, leg->receives, message.time);
        break;
    case start_media_transmission:
        if ((leg = leg_of(session, message, true)))
            take_sending(*leg, message);
        if (leg)
            announce_place(*leg, follower, leg->sends, message.time);
        break;
    case connection_statistics:
        if ((leg = leg_of(session, message, true)))
            take_report(*leg, message);
        break;
    default:
        return leg_of(session, message, false);
    }
    return leg;
}

/* ---- the two sides of a call ------------------------------------------------------------ */

sccp_found_leg partner_of(sccp_tracker &tracker, const sccp_leg &leg)
{
    if (leg.partner == 0)
        return {};
    const auto place = tracker.sessions.places.find(leg.partner_phone);
    if (place == tracker.sessions.places.end())
        return {};
    sccp_session &session = place->second->second;
    const auto found = session.legs.find(leg.partner);
    return found == session.legs.end() ? sccp_found_leg{} : sccp_found_leg{&session, &found->second};
}

bool go_to_each_other(const sccp_leg &one, const sccp_leg &other)
{
    return (is_known(one.sends) && one.sends == other.receives)
           || (is_known(one.receives) && one.receives == other.sends);
}

bool have_the_same_numbers(const sccp_leg &one, const sccp_leg &other)
{
    return one.direction != other.direction && !one.calling.number.empty() && !one.called.number.empty()
           && one.calling.number == other.calling.number && one.called.number == other.called.number;
}

bool overlap(const sccp_leg &one, const sccp_leg &other)
{
    return (!one.ended || other.start <= one.end) && (!other.ended || one.start <= other.end);
}

/** Legs that have no partner yet, by what they may be found. */
struct free_legs {
    std::unordered_multimap<net_endpoint, sccp_found_leg> by_receiver;
    std::unordered_multimap<std::string, sccp_found_leg> by_numbers;
};

std::string numbers_of(const sccp_leg &leg)
{
    return leg.calling.number + "\n" + leg.called.number;
}

free_legs gather_free_legs(sccp_tracker &tracker)
{
    free_legs free;
    for (auto &[key, session] : tracker.sessions.entries)
        for (auto &[reference, leg] : session.legs) {
            if (leg.partner != 0)
                continue;
            if (is_known(leg.receives))
                free.by_receiver.emplace(leg.receives, sccp_found_leg{&session, &leg});
            free.by_numbers.emplace(numbers_of(leg), sccp_found_leg{&session, &leg});
        }
    return free;
}

void join(const sccp_found_leg &one, const sccp_found_leg &other)
{
    one.leg->partner = other.leg->qual.call_reference;
    one.leg->partner_phone = other.session->phone;
    other.leg->partner = one.leg->qual.call_reference;
    other.leg->partner_phone = one.session->phone;
}

/** Finds the other side of a leg among those that have none. */
void find_partner(const sccp_found_leg &one, const free_legs &free)
{
    const auto fits = [&](const sccp_found_leg &other) {
        return other.leg != one.leg && other.leg->partner == 0 && overlap(*one.leg, *other.leg);
    };
    const auto [first, last] = free.by_receiver.equal_range(one.leg->sends);
    for (auto at = first; at != last; ++at)
        if (fits(at->second) && go_to_each_other(*one.leg, *at->second.leg)) {
            join(one, at->second);
            return;
        }
    const auto [first_number, last_number] = free.by_numbers.equal_range(numbers_of(*one.leg));
    for (auto at = first_number; at != last_number; ++at)
        if (fits(at->second) && have_the_same_numbers(*one.leg, *at->second.leg)) {
            join(one, at->second);
            return;
        }
}

void find_partners(sccp_tracker &tracker)
{
    bool is_needed = false;
    for (auto &[key, session] : tracker.sessions.entries)
        for (auto &[reference, leg] : session.legs)
            is_needed |= leg.search && leg.partner == 0;
    if (!is_needed)
        return;
    const free_legs free = gather_free_legs(tracker);
    for (auto &[key, session] : tracker.sessions.entries)
        for (auto &[reference, leg] : session.legs) {
            if (leg.search && leg.partner == 0)
                find_partner({&session, &leg}, free);
            leg.search = false;
        }
}

/* ---- the end ------------------------------------------------------------------------------- */

/** Forgets a leg that was handed over, or never was a call. */
void drop_leg(const sccp_found_leg &dropped, rtp_follower &follower)
{
    sccp_session &session = *dropped.session;
    const uint32_t reference = dropped.leg->qual.call_reference;
    forget_places(*dropped.leg, follower);
    session.over[session.next_over++ % session.over.size()] = {reference, dropped.leg->end};
    session.legs.erase(reference);
}

/** Of two legs one has the call's row: the calling one, or the one that began first. */
bool has_row(const sccp_leg &leg, const sccp_leg &partner)
{
    const auto calls = [](const sccp_leg &one) {
        return one.direction == sccp_outbound ? 2 : one.direction == sccp_inbound ? 0 : 1;
    };
    if (calls(leg) != calls(partner))
        return calls(leg) > calls(partner);
    return std::pair(leg.start, leg.qual.call_reference)
           < std::pair(partner.start, partner.qual.call_reference);
}

/** What a look at all calls takes. */
struct settling {
    sccp_tracker &tracker;
    sccp_monitor &monitor;
    rtp_follower &follower;
    const voice_clock &clock;
};

/** The call of a leg and its partner is over. */
void hand_over(const settling &with, const sccp_found_leg &one, const sccp_found_leg &other)
{
    sccp_call call = call_of(with.tracker, with.follower, one, other);
    int64_t start = one.leg->start;
    int64_t end = one.leg->end;
    uint32_t up_time = one.leg->end_up_time;
    if (other.leg) {
        start = std::min(start, other.leg->start);
        if (other.leg->end > end)
            up_time = other.leg->end_up_time;
        end = std::max(end, other.leg->end);
    }
    call.times.took = hundredths_between(start, end);
    call.index = one.leg->row;
    see_call(with.monitor, call, up_time);
    drop_leg(one, with.follower);
    if (other.leg)
        drop_leg(other, with.follower);
}

void show(const settling &with, const sccp_found_leg &one, const sccp_found_leg &other)
{
    if (other.leg && other.leg->row != 0) {
        // It was shown by itself before its other side was known.
        if (one.leg->row == 0)
            one.leg->row = other.leg->row;
        else
            with.monitor.calls.erase(other.leg->row);
        other.leg->row = 0;
    }
    sccp_call call = call_of(with.tracker, with.follower, one, other);
    const int64_t until = std::max(newest_frame(with.clock, one.leg->interface), one.leg->last);
    call.times.took = hundredths_between(one.leg->start, until);
    call.index = one.leg->row;
    show_call(with.monitor, call, with.clock.up_time);
    one.leg->row = call.index;
}

/** A leg whose partner goes on, with somebody else: each is a call by itself from now on. */
void part(const sccp_found_leg &one, const sccp_found_leg &other)
{
    for (const sccp_found_leg *leg : {&one, &other}) {
        leg->leg->partner = 0;
        leg->leg->partner_phone = {};
        leg->leg->search = true;
    }
}

/** Looks at a leg. */
void settle(const settling &with, const sccp_found_leg &one)
{
    const sccp_found_leg other = partner_of(with.tracker, *one.leg);
    const bool is_over = has_settled(*one.leg, with.clock, seconds_to_settle);
    if (!is_call(*one.leg)) {
        if (is_over)
            drop_leg(one, with.follower);
        return;
    }
    if (!other.leg) {
        if (is_over)
            hand_over(with, one, {});
        else
            show(with, one, {});
        return;
    }
    const bool waited = has_settled(*one.leg, with.clock, seconds_to_settle + seconds_for_other_side);
    if (waited && !other.leg->ended) {
        part(one, other);
        hand_over(with, one, {});
        return;
    }
    if (!has_row(*one.leg, *other.leg))
        return;
    if (is_over && has_settled(*other.leg, with.clock, seconds_to_settle))
        hand_over(with, one, other);
    else
        show(with, one, other);
}

} // namespace

void take_message(
    sccp_tracker &tracker, sccp_monitor &monitor, rtp_follower &follower, const voice_message &message)
{
    /** Microseconds after which another interface's messages count for a phone that the first one lost. */
    constexpr int64_t lost_after = 60 * int64_t{1000000};
    const bool by_manager = message.from_port == manager_port;
    if (!by_manager && message.to_port != manager_port)
        return;
    const net_endpoint phone = by_manager ? net_endpoint{message.to, message.to_port}
                                          : net_endpoint{message.from, message.from_port};
    sccp_session &session =
        find_or_make(tracker.sessions, phone, max_sccp_phones, [&](sccp_session &dropped) {
            for (auto &[reference, leg] : dropped.legs)
                forget_places(leg, follower);
        });
    if (session.interface < 0 || message.time - session.last > lost_after)
        session.interface = message.interface;
    if (session.interface != message.interface)
        return;
    session.phone = phone;
    session.last = message.time;

    const uint64_t kind = number_of(message.body, "skinny.messageId").value_or(0);
    switch (kind) {
    case register_request:
        end_legs(session, message);
        take_registration(session, message);
        return;
    case unregister:
        end_legs(session, message);
        return;
    case line_stat:
        take_line(session, message);
        see_phone(monitor, phone_of(tracker, session, nullptr));
        return;
    case register_ack:
        see_phone(monitor, phone_of(tracker, session, nullptr));
        return;
    default:
        break;
    }
    if (sccp_leg *leg = take_call_message(session, follower, message)) {
        leg->last = message.time;
        leg->last_up_time = message.up_time;
        leg->search = true;
    }
}

void settle_calls(
    sccp_tracker &tracker, sccp_monitor &monitor, rtp_follower &follower, const voice_clock &clock)
{
    find_partners(tracker);
    for (auto &[key, session] : tracker.sessions.entries)
        for (auto &[reference, leg] : session.legs)
            end_if_silent(leg, follower, clock);
    const settling with{tracker, monitor, follower, clock};
    for (auto &[key, session] : tracker.sessions.entries) {
        std::vector<uint32_t> references; // a look may drop the leg, and others of this phone
        for (const auto &[reference, leg] : session.legs)
            references.push_back(reference);
        for (const uint32_t reference : references)
            if (const auto found = session.legs.find(reference); found != session.legs.end())
                settle(with, {&session, &found->second});
    }
}
