// SPDX-License-Identifier: MIT
#include "agent/voice/h323_calls.h"

#include "agent/voice/h323_media.h"
#include "agent/voice/h323_message.h"
#include "agent/voice/h323_shown.h"
#include "agent/voice/voice.h"

#include <algorithm>

namespace {

/** Kinds of messages: of call signalling (Q.931), of RAS, and of H.245 the requests and the responses. */
enum signalling_kind : uint64_t {
    alerting = 0x01,
    call_proceeding = 0x02,
    progress = 0x03,
    setup = 0x05,
    connect = 0x07,
    release_complete = 0x5a,
};

enum ras_kind : uint64_t { registration_request = 3, registration_confirm = 4 };

/** Of H.225.0: that in the part of this name. */
net_endpoint signalling_address(decoded_part body, std::string_view name)
{
    return endpoint_of(part_of(body, name), "h225.ipV4", "h225.ipV4_port", "h225.ipV6", "h225.ipV6_port");
}

/** 16 octets that are written in hexadecimal digits with strokes between. False when they are not. */
bool put_identifier(wire::uchars<16> &to, std::string_view text)
{
    std::string digits;
    for (const char c : text)
        if (c != '-')
            digits += c;
    if (digits.size() != 32)
        return false;
    wire::uchars<16> octets{};
    for (std::size_t i = 0; i < 16; i++) {
        const auto octet = decoded_number("0x" + digits.substr(2 * i, 2));
        if (!octet)
            return false;
        octets.value[i] = static_cast<uint8_t>(*octet);
    }
    to = octets;
    return true;
}

template <uint32_t N> void put_octets(wire::uchars<N> &field, std::string_view text)
{
    if (!text.empty())
        put_text(reinterpret_cast<char *>(field.value), N, text);
}

template <uint32_t N> void learn(wire::chars<N> &field, std::string_view text)
{
    if (!text.empty())
        put_text(field, text);
}

/** The version of the protocol: the last number of its identifier. */
int32_t version_of(decoded_part body)
{
    const std::string_view identifier = text_of(body, "h225.protocolIdentifier");
    const auto number = decoded_number(identifier.substr(identifier.rfind('.') + 1));
    return static_cast<int32_t>(std::min<uint64_t>(number.value_or(0), 255));
}

/* ---- phones ---------------------------------------------------------------------------- */

/** A phone by its address: no scenario's name begins like this. */
void put_place(h323_phone &phone, const net_endpoint &place)
{
    rmonrpc_h323_endpoint_t &shown = phone.identity.forward;
    phone.name = "\n" + text_of(place.address);
    shown.q931_ipAddr_length = put_address(shown.q931_ipAddr, place.address);
    shown.q931_port = place.port;
}

net_address address_of(const rmonrpc_h323_endpoint_t &shown)
{
    return make_net_address(shown.q931_ipAddr.value, static_cast<uint8_t>(shown.q931_ipAddr_length));
}

/** The first number and the first name among the aliases of a part. */
void learn_aliases(h323_phone &phone, decoded_part aliases)
{
    learn(phone.identity.forward.num, text_of(aliases, "h225.dialledDigits"));
    learn(phone.identity.forward.alias, text_of(aliases, "h225.h323_ID"));
}

/** What registration tells is known better than what a call does. */
void prefer_registered(h323_tracker &tracker, h323_phone &phone)
{
    const h323_phone *registered = find_recent(tracker.phones, address_of(phone.identity.forward));
    if (!registered)
        return;
    phone.name = registered->name;
    rmonrpc_h323_endpoint_t shown = registered->identity.forward;
    if (shown.num.value[0] == 0)
        shown.num = phone.identity.forward.num;
    if (shown.alias.value[0] == 0)
        shown.alias = phone.identity.forward.alias;
    phone.identity.forward = shown;
    if (phone.identity.vers == 0)
        phone.identity.vers = registered->identity.vers;
}

void take_registration(h323_tracker &tracker, h323_monitor &monitor, const voice_message &message)
{
    const uint64_t kind = number_of(message.body, "h225.RasMessage").value_or(UINT64_MAX);
    const uint64_t number = number_of(message.body, "h225.requestSeqNum").value_or(0);
    const auto nothing = [](const auto &) {};
    if (kind == registration_request) {
        const net_endpoint place = signalling_address(message.body, "h225.callSignalAddress_tree");
        if (place.address.length == 0)
            return;
        h323_phone phone;
        put_place(phone, place);
        phone.identity.vers = version_of(message.body);
        learn_aliases(phone, part_of(message.body, "h225.terminalAlias_tree"));
        const h323_request_key key{{message.from, message.from_port}, number};
        find_or_make(tracker.requests, key, max_h323_requests, nothing) = phone;
    }
    if (kind != registration_confirm)
        return;
    const h323_request_key key{{message.to, message.to_port}, number};
    const h323_phone *request = find_recent(tracker.requests, key);
    if (!request)
        return;
    h323_phone phone = *request;
    forget_recent(tracker.requests, key);
    learn_aliases(phone, part_of(message.body, "h225.terminalAlias_tree"));
    const rmonrpc_h323_endpoint_t &shown = phone.identity.forward;
    const net_address address = address_of(shown);
    // A phone that only says that it is still there tells no aliases.
    const h323_phone *before = find_recent(tracker.phones, address);
    if (before && shown.num.value[0] == 0 && shown.alias.value[0] == 0)
        phone = *before;
    find_or_make(tracker.phones, address, max_h323_phones, nothing) = phone;
    see_phone(monitor, phone);
}

/* ---- calls ------------------------------------------------------------------------------- */

void end_call(h323_tracked_call &call, h323_state state, int64_t time, uint32_t up_time)
{
    if (call.ended)
        return;
    call.ended = true;
    call.state = state;
    call.end = time;
    call.end_up_time = up_time;
}

void sign_of_life(h323_tracked_call &call, const voice_message &message)
{
    call.last = std::max(call.last, message.time);
    call.last_up_time = message.up_time;
}

struct key_and_side {
    h323_call_key key;
    bool by_caller;
};

/** Whose message of call signalling it is: the flag of the reference tells it, which is 0 in the caller's. */
key_and_side key_of(const voice_message &message)
{
    std::string digits;
    for (const char c : text_of(message.beside, "q931.call_ref"))
        if (c != ':')
            digits += c;
    const auto reference = decoded_number("0x" + digits);
    const bool by_caller = number_in(message.beside, "q931.call_ref_flag") == 0;
    const net_endpoint from{message.from, message.from_port};
    const net_endpoint to{message.to, message.to_port};
    h323_call_key key{from, to, static_cast<uint32_t>(reference.value_or(0))};
    if (!by_caller)
        std::swap(key.caller, key.callee);
    return {key, by_caller};
}

void begin_call(h323_tracked_call &call, const h323_call_key &key, const voice_message &message)
{
    call = {};
    call.interface = message.interface;
    call.begin = message.time;
    call.shown.qual.call_reference = key.reference;
    put_place(call.shown.caller, key.caller);
    put_place(call.shown.callee, key.callee);
}

void learn_setup(h323_tracked_call &call, const voice_message &message)
{
    rmonrpc_h323_qual_row_t &qual = call.shown.qual;
    h323_phone &caller = call.shown.caller;
    h323_phone &callee = call.shown.callee;
    caller.identity.vers = version_of(message.body);
    qual.conference_goal = number_in(message.body, "h225.conferenceGoal");
    qual.call_type = number_in(message.body, "h225.callType");
    // A caller tells where it can be called; the connection's own port is another one.
    const net_endpoint place = signalling_address(message.body, "h225.sourceCallSignalAddress_tree");
    if (is_known(place) && place.address == message.from)
        put_place(caller, place);
    learn_aliases(caller, part_of(message.body, "h225.sourceAddress_tree"));
    learn_aliases(callee, part_of(message.body, "h225.destinationAddress_tree"));
    learn(caller.identity.forward.num, text_of(message.beside, "q931.calling_party_number.digits"));
    learn(callee.identity.forward.num, text_of(message.beside, "q931.called_party_number.digits"));
}

/** What any message of call signalling may tell. */
void learn_common(
    h323_tracker &tracker,
    const h323_call_key &key,
    h323_tracked_call &call,
    const voice_message &message,
    bool by_caller)
{
    rmonrpc_h323_qual_row_t &qual = call.shown.qual;
    h323_phone &speaker = by_caller ? call.shown.caller : call.shown.callee;
    put_identifier(qual.call_id, text_of(part_of(message.body, "h225.callIdentifier_element"), "h225.guid"));
    put_identifier(qual.conference_id, text_of(message.body, "h225.conferenceID"));
    if (number_in(message.body, "h225.h245Tunnelling") != 0)
        qual.tunneling = 1;
    put_octets(
        by_caller ? qual.forward_product_id : qual.reverse_product_id,
        text_of(message.body, "h225.productId"));
    put_octets(
        by_caller ? qual.forward_version_id : qual.reverse_version_id,
        text_of(message.body, "h225.versionId"));
    if (speaker.identity.forward.alias.value[0] == 0)
        learn(speaker.identity.forward.alias, text_of(message.beside, "q931.display_information"));

    const net_endpoint control = endpoint_of(
        part_of(message.body, "h225.h245Address_tree"), "h225.h245Ip", "h225.h245IpPort", "h225.h245Ip6",
        "h225.h245Ip6port");
    if (!is_known(control))
        return;
    call.control = control;
    call.control_of_caller = by_caller;
    rmonrpc_h323_media_t &media = by_caller ? qual.forward_media : qual.reverse_media;
    media.h245_ipAddr_length = put_address(media.h245_ipAddr, control.address);
    media.h245_port = control.port;
    find_or_make(tracker.controls, control, max_h323_calls, [](const auto &) {}) = key;
}

/** A call goes to the monitor. */
void hand_over(h323_tracked_call &call, h323_monitor &monitor, rtp_follower &follower);

void take_signalling(
    h323_tracker &tracker, h323_monitor &monitor, rtp_follower &follower, const voice_message &message)
{
    const auto kind = number_of(message.beside, "q931.message_type");
    if (!kind || text_of(message.beside, "q931.call_ref").empty())
        return;
    const auto [key, by_caller] = key_of(message);
    tracker.signalled = key;
    tracker.signalled_at = message.time;
    h323_tracked_call *found = find_recent(tracker.calls, key);
    // A connection may carry one call after the other under the same reference.
    const bool is_next = found && found->ended && *kind == setup;
    if (is_next) {
        hand_over(*found, monitor, follower);
        begin_call(*found, key, message);
    }
    if (found && !is_next && found->interface != message.interface)
        return;
    if (!found && *kind == release_complete)
        return; // it was over, or nothing is known of it
    if (!found) {
        found = &find_or_make(tracker.calls, key, max_h323_calls, [&](h323_tracked_call &oldest) {
            end_call(oldest, h323_state::end_not_seen, oldest.last, oldest.last_up_time);
            hand_over(oldest, monitor, follower);
        });
        begin_call(*found, key, message);
    }
    h323_tracked_call &call = *found;
    if (call.ended)
        return;
    sign_of_life(call, message);
    if (*kind == setup)
        learn_setup(call, message);
    learn_common(tracker, key, call, message, by_caller);
    take_fast_start(call, follower, message, by_caller);
    switch (*kind) {
    case alerting:
        call.state = std::max(call.state, h323_state::alerting);
        break;
    case connect:
        call.state = h323_state::answered;
        break;
    case release_complete:
        call.shown.qual.call_status = number_in(message.beside, "q931.cause_value");
        end_call(call, h323_state::over, message.time, message.up_time);
        break;
    default:
        break;
    }
}

/** The call of a message of H.245, null when there is none; and whether the caller says it. */
h323_tracked_call *call_of_control(h323_tracker &tracker, const voice_message &message, bool &by_caller)
{
    const net_endpoint from{message.from, message.from_port};
    const net_endpoint to{message.to, message.to_port};
    for (const bool to_listener : {true, false}) {
        const net_endpoint &listener = to_listener ? to : from;
        const h323_call_key *key = find_recent(tracker.controls, listener);
        h323_tracked_call *call = key ? find_recent(tracker.calls, *key) : nullptr;
        if (!call || call->control != listener)
            continue;
        by_caller = to_listener != call->control_of_caller;
        // The other end of the connection is that of who called.
        rmonrpc_h323_qual_row_t &qual = call->shown.qual;
        rmonrpc_h323_media_t &media = call->control_of_caller ? qual.reverse_media : qual.forward_media;
        const net_endpoint &other = to_listener ? from : to;
        media.h245_ipAddr_length = put_address(media.h245_ipAddr, other.address);
        media.h245_port = other.port;
        return call;
    }
    const h323_call_key &key = tracker.signalled;
    by_caller = key.caller == from && key.callee == to;
    const bool by_callee = key.caller == to && key.callee == from;
    if (tracker.signalled_at != message.time || (!by_caller && !by_callee))
        return nullptr;
    return find_recent(tracker.calls, key);
}

void take_control(h323_tracker &tracker, rtp_follower &follower, const voice_message &message)
{
    bool by_caller = false;
    h323_tracked_call *call = call_of_control(tracker, message, by_caller);
    if (!call || call->ended || call->interface != message.interface)
        return;
    sign_of_life(*call, message);
    take_channels(*call, follower, message, by_caller);
}

/* ---- the end ----------------------------------------------------------------------------- */

/** Names and numbers of phones, by what their registration told. */
void find_parties(h323_tracker &tracker, h323_tracked_call &call)
{
    for (h323_phone *phone : {&call.shown.caller, &call.shown.callee})
        prefer_registered(tracker, *phone);
}

void hand_over(h323_tracked_call &call, h323_monitor &monitor, rtp_follower &follower)
{
    complete_call(call, follower, call.end);
    see_call(monitor, call.shown, call.end_up_time);
    forget_places(call, follower);
}

/** A call of which nothing was heard for long, neither signalling nor media, is over since then. */
void end_if_silent(h323_tracked_call &call, const rtp_follower &follower, const voice_clock &clock)
{
    if (call.ended || !has_passed(clock, call.interface, call.last, call.last_up_time, seconds_of_silence))
        return;
    const int64_t heard = last_of_media(call, follower);
    if (heard <= call.last) {
        end_call(call, h323_state::end_not_seen, call.last, call.last_up_time);
        return;
    }
    // Media went on: the next look is in as long again.
    call.last = heard;
    call.last_up_time = progress_of(clock, call.interface).up_time;
}

} // namespace

void take_message(
    h323_tracker &tracker, h323_monitor &monitor, rtp_follower &follower, const voice_message &message)
{
    switch (message.protocol) {
    case voice_protocol::h225_ras:
        take_registration(tracker, monitor, message);
        break;
    case voice_protocol::h225_cs:
        take_signalling(tracker, monitor, follower, message);
        break;
    case voice_protocol::h245:
        take_control(tracker, follower, message);
        break;
    default:
        break;
    }
}

void settle_calls(
    h323_tracker &tracker, h323_monitor &monitor, rtp_follower &follower, const voice_clock &clock)
{
    std::vector<h323_call_key> done;
    for (auto &[key, call] : tracker.calls.entries) {
        end_if_silent(call, follower, clock);
        find_parties(tracker, call);
        if (call.ended && has_passed(clock, call.interface, call.end, call.end_up_time, seconds_to_settle)) {
            hand_over(call, monitor, follower);
            done.push_back(key);
        } else {
            complete_call(
                call, follower,
                call.ended ? call.end : std::max(call.last, newest_frame(clock, call.interface)));
            show_call(monitor, call.shown, clock.up_time);
        }
    }
    for (const h323_call_key &key : done) {
        if (const h323_tracked_call *call = find_recent(tracker.calls, key); call && is_known(call->control))
            forget_recent(tracker.controls, call->control);
        forget_recent(tracker.calls, key);
    }
}
