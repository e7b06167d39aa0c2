// SPDX-License-Identifier: MIT
#include "agent/voice/h323_calls.h"

#include <algorithm>
#include <cmath>
#include <span>

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

/** A receiver's rows are of the direction from the other side to it. */
struct direction {
    rmonrpc_h323_media_t &media;
    std::vector<net_endpoint> &places;
    uint32_t &rate;
    uint32_t &session;
    uint32_t &channel;
};

direction direction_of(h323_tracked_call &call, bool by_caller)
{
    rmonrpc_h323_qual_row_t &qual = call.shown.qual;
    if (by_caller)
        return {
            qual.forward_media, call.to_callee, call.rate_to_callee, qual.forward_session_id,
            qual.forward_logical_channel_num};
    return {
        qual.reverse_media, call.to_caller, call.rate_to_caller, qual.reverse_session_id,
        qual.reverse_logical_channel_num};
}

uint32_t number_in(decoded_part part, std::string_view name)
{
    return static_cast<uint32_t>(number_of(part, name).value_or(0));
}

/** The address and the port of a part, by the names of their fields for IPv4 and IPv6. */
net_endpoint endpoint_of(
    decoded_part part,
    std::string_view ip4,
    std::string_view port4,
    std::string_view ip6,
    std::string_view port6)
{
    net_endpoint found{address_of(part, ip4), static_cast<uint16_t>(number_in(part, port4))};
    if (found.address.length == 0)
        found = {address_of(part, ip6), static_cast<uint16_t>(number_in(part, port6))};
    return found;
}

/** Of H.225.0: that in the part of this name. */
net_endpoint signalling_address(decoded_part body, std::string_view name)
{
    return endpoint_of(part_of(body, name), "h225.ipV4", "h225.ipV4_port", "h225.ipV6", "h225.ipV6_port");
}

/*
 * From 4.6 on tshark has other names for some fields of H.245, by the message that
 * they are in: those that confirm a channel begin with ack.
 */
constexpr std::string_view channel_number[] = {
    "h245.forwardLogicalChannelNumber", "h245.olc_fw_lcn", "h245.olc_ack_fw_lcn"};
constexpr std::string_view session_number[] = {"h245.sessionID", "h245.sessionID_0_255"};
constexpr std::string_view media_channel[] = {"h245.mediaChannel_tree", "h245.ack_mediaChannel_tree"};
constexpr std::string_view control_channel[] = {
    "h245.mediaControlChannel_tree", "h245.ack_mediaControlChannel_tree"};

/** The name that a field has here. */
std::string_view name_in(decoded_part part, std::span<const std::string_view> names)
{
    const auto found = std::ranges::find_if(names, [&](std::string_view name) { return has(part, name); });
    return found == names.end() ? names.front() : *found;
}

/** Of H.245. */
net_endpoint media_address(decoded_part parameters, std::string_view name)
{
    return endpoint_of(
        part_of(parameters, name), "h245.ip4_network", "h245.tsapIdentifier", "h245.ip6_network",
        "h245.ipv6.tsapIdentifier");
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

/* ---- media -------------------------------------------------------------------------------- */

/** Clock rates of codecs that have another one than 8,000 Hz; by the kind of capability (H.245,
 * AudioCapability). */
uint32_t rate_of(decoded_part data_type)
{
    constexpr uint64_t generic = 20; // G.722.1, and other wide ones
    return number_of(data_type, "h245.audioData").value_or(0) == generic ? 16000 : 8000;
}

/** The media of one direction go to this place. */
void go_to(
    h323_tracked_call &call, rtp_follower &follower, bool by_caller, const net_endpoint &place, int64_t time)
{
    direction way = direction_of(call, by_caller);
    if (!is_known(place))
        return;
    way.media.rtp_ipAddr_length = put_address(way.media.rtp_ipAddr, place.address);
    way.media.rtp_port = place.port;
    if (way.places.size() >= max_h323_places || std::ranges::find(way.places, place) != way.places.end())
        return;
    announce(follower, call.interface, place.address, place.port, time, way.rate);
    way.places.push_back(place);
}

void forget_places(h323_tracked_call &call, rtp_follower &follower)
{
    for (std::vector<net_endpoint> *places : {&call.to_callee, &call.to_caller}) {
        for (const net_endpoint &place : *places)
            forget(follower, call.interface, place.address, place.port);
        places->clear();
    }
}

/**
 * Where reports go, as one side says where it waits for them: those of the
 * receiver, where it sends these media, those of the sender, where it receives them.
 */
void learn_reports(direction &way, bool is_sender, const net_endpoint &place)
{
    if (!is_known(place))
        return;
    rmonrpc_h323_media_t &media = way.media;
    if (is_sender) {
        media.rtcp_rr_ipAddr_length = put_address(media.rtcp_rr_ipAddr, place.address);
        media.rtcp_rr_port = place.port;
    } else {
        media.rtcp_sr_ipAddr_length = put_address(media.rtcp_sr_ipAddr, place.address);
        media.rtcp_sr_port = place.port;
    }
}

/** What opens a channel of sound: its codec, session and number. False when it is one of something else. */
bool learn_channel(direction &way, decoded_part parameters, uint32_t number)
{
    const auto codec = number_of(part_of(parameters, "h245.dataType_tree"), "h245.audioData");
    if (!codec)
        return false;
    way.media.codec = static_cast<uint32_t>(*codec);
    way.rate = rate_of(parameters);
    way.session = number_in(parameters, name_in(parameters, session_number));
    way.channel = number;
    return true;
}

void remember_channel(h323_tracked_call &call, const h323_channel &opened)
{
    std::erase_if(call.channels, [&](const h323_channel &other) {
        return other.by_caller == opened.by_caller && other.number == opened.number;
    });
    if (call.channels.size() < max_h323_channels)
        call.channels.push_back(opened);
}

constexpr std::string_view forward_parameters = "h245.forwardLogicalChannelParameters_element";
constexpr std::string_view reverse_parameters = "h245.reverseLogicalChannelParameters_element";

void open_channel(h323_tracked_call &call, decoded_part request, bool by_caller)
{
    const uint32_t number = number_in(request, name_in(request, channel_number));
    const decoded_part parameters = part_of(request, forward_parameters);
    direction way = direction_of(call, by_caller);
    const bool audio = learn_channel(way, parameters, number);
    if (audio)
        learn_reports(way, true, media_address(parameters, "h245.mediaControlChannel_tree"));
    remember_channel(call, {by_caller, number, audio});
}

void confirm_channel(
    h323_tracked_call &call, rtp_follower &follower, decoded_part response, bool by_caller, int64_t time)
{
    // The other side opened it. One that is not known was opened before the capture began: of sound, as most
    // are.
    const uint32_t number = number_in(response, name_in(response, channel_number));
    for (const h323_channel &opened : call.channels)
        if (opened.by_caller != by_caller && opened.number == number && !opened.audio)
            return;
    direction way = direction_of(call, !by_caller);
    learn_reports(way, false, media_address(response, name_in(response, control_channel)));
    go_to(call, follower, !by_caller, media_address(response, name_in(response, media_channel)), time);
}

/**
 * One channel of fast start, which has the caller's view whoever says it: of
 * forward parameters it is what the caller sends, of reverse ones what it receives.
 */
void take_fast_channel(
    h323_tracked_call &call, rtp_follower &follower, decoded_part channel, bool said_by_caller, int64_t time)
{
    decoded_part parameters = part_of(channel, reverse_parameters);
    const bool by_caller = parameters.tree == nullptr;
    if (by_caller)
        parameters = part_of(channel, forward_parameters);
    direction way = direction_of(call, by_caller);
    if (!learn_channel(way, parameters, number_in(channel, name_in(channel, channel_number))))
        return;
    learn_reports(
        way, by_caller == said_by_caller, media_address(parameters, "h245.mediaControlChannel_tree"));
    const net_endpoint place = media_address(parameters, "h245.mediaChannel_tree");
    if (!said_by_caller && by_caller)
        go_to(call, follower, true, place, time);
    if (said_by_caller && !by_caller && is_known(place) && !is_known(call.offered))
        call.offered = place;
    if (!said_by_caller && !by_caller)
        go_to(call, follower, false, call.offered, time);
}

void take_fast_start(
    h323_tracked_call &call, rtp_follower &follower, const voice_message &message, bool by_caller)
{
    const std::vector<decoded_part> channels = parts_of(message.body, "h245.OpenLogicalChannel_element");
    for (const decoded_part channel : channels)
        take_fast_channel(call, follower, channel, by_caller, message.time);
    // It is in use once the callee takes it.
    if (!channels.empty() && !by_caller)
        call.shown.qual.faststart = 1;
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
    if (const decoded_part request = part_of(message.body, "h245.openLogicalChannel_element"); request.tree)
        open_channel(*call, request, by_caller);
    if (const decoded_part response = part_of(message.body, "h245.openLogicalChannelAck_element");
        response.tree)
        confirm_channel(*call, follower, response, by_caller, message.time);
}

/* ---- what was measured ------------------------------------------------------------------- */

struct sum_of_streams {
    uint64_t packets = 0;
    uint64_t octets = 0;
    uint64_t expected = 0;
    int64_t lost = 0;
    double jitter = 0;    // milliseconds, weighted by packets
    uint64_t largest = 0; // packets of the stream whose source is shown
    uint32_t ssrc = 0;
    int64_t last = 0;
};

void add_stream(void *context, const rtp_figures &stream)
{
    auto &sum = *static_cast<sum_of_streams *>(context);
    sum.packets += stream.packets;
    sum.octets += stream.octets;
    sum.expected += stream.expected;
    sum.lost += std::max<int64_t>(stream.lost, 0);
    sum.jitter += stream.mean_jitter * static_cast<double>(stream.packets);
    sum.last = std::max(sum.last, stream.last);
    if (stream.packets > sum.largest) {
        sum.largest = stream.packets;
        sum.ssrc = stream.ssrc;
    }
}

sum_of_streams
measured(const h323_tracked_call &call, const rtp_follower &follower, const std::vector<net_endpoint> &places)
{
    sum_of_streams sum;
    for (const net_endpoint &place : places)
        streams_to(
            follower, call.interface, place.address, place.port, call.begin,
            call.ended ? call.end : INT64_MAX, add_stream, &sum);
    return sum;
}

/** The figures of one direction are one sample: what was measured of all of it. */
void put_measured(rmonrpc_h323_quality_t &quality, uint32_t &samples, const sum_of_streams &sum)
{
    quality = {};
    samples = sum.packets > 0;
    if (sum.packets == 0)
        return;
    quality.ssrc = sum.ssrc;
    quality.sr_pkt_sent = as_u32(sum.expected);
    quality.sr_oct_sent = as_u32(sum.octets);
    quality.sr_pkt_lost = as_u32(static_cast<uint64_t>(sum.lost));
    // Of 256, as RTCP has it (RFC 3550, 6.4.1).
    quality.sr_fraction_lost =
        sum.expected == 0 ? 0 : as_u32(static_cast<uint64_t>(sum.lost) * 256 / sum.expected);
    const double hundredths = sum.jitter / static_cast<double>(sum.packets) * 100;
    quality.sr_jitter = static_cast<uint32_t>(std::min(std::round(hundredths), 4e9));
}

/** Fills in what changes while a call lasts. */
void complete(h323_tracked_call &call, const rtp_follower &follower, int64_t until)
{
    rmonrpc_h323_qual_row_t &qual = call.shown.qual;
    qual.call_state = static_cast<uint32_t>(call.state);
    put_measured(qual.forward_quality, qual.forward_num_samples, measured(call, follower, call.to_callee));
    put_measured(qual.reverse_quality, qual.reverse_num_samples, measured(call, follower, call.to_caller));
    const int64_t microseconds = std::clamp<int64_t>(until - call.begin, 0, int64_t{INT32_MAX} * 10000);
    call.shown.times.took = static_cast<uint32_t>(microseconds / 10000);
}

/** Names and numbers of phones, by what their registration told. */
void find_parties(h323_tracker &tracker, h323_tracked_call &call)
{
    for (h323_phone *phone : {&call.shown.caller, &call.shown.callee})
        prefer_registered(tracker, *phone);
}

void hand_over(h323_tracked_call &call, h323_monitor &monitor, rtp_follower &follower)
{
    complete(call, follower, call.end);
    see_call(monitor, call.shown, call.end_up_time);
    forget_places(call, follower);
}

/** A call of which nothing was heard for long, neither signalling nor media, is over since then. */
void end_if_silent(h323_tracked_call &call, const rtp_follower &follower, const voice_clock &clock)
{
    if (call.ended || !has_passed(clock, call.interface, call.last, call.last_up_time, seconds_of_silence))
        return;
    const int64_t heard = std::max(
        measured(call, follower, call.to_callee).last, measured(call, follower, call.to_caller).last);
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
            complete(
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
