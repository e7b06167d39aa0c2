// SPDX-License-Identifier: MIT
#include "agent/voice/h323_media.h"

#include "agent/voice/h323_message.h"

#include <algorithm>
#include <span>

namespace {

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

} // namespace

void take_channels(
    h323_tracked_call &call, rtp_follower &follower, const voice_message &message, bool by_caller)
{
    if (const decoded_part request = part_of(message.body, "h245.openLogicalChannel_element"); request.tree)
        open_channel(call, request, by_caller);
    if (const decoded_part response = part_of(message.body, "h245.openLogicalChannelAck_element");
        response.tree)
        confirm_channel(call, follower, response, by_caller, message.time);
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

void forget_places(h323_tracked_call &call, rtp_follower &follower)
{
    for (std::vector<net_endpoint> *places : {&call.to_callee, &call.to_caller}) {
        for (const net_endpoint &place : *places)
            forget(follower, call.interface, place.address, place.port);
        places->clear();
    }
}
