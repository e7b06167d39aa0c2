// SPDX-License-Identifier: MIT
#include "agent/voice/leg.h"

#include <algorithm>

void announce_place(call_leg &leg, rtp_follower &follower, const net_endpoint &place, int64_t since)
{
    // Media that are moved again and again are forged.
    constexpr std::size_t max_places = 8;
    if (!is_known(place) || leg.announced.size() >= max_places
        || std::ranges::find(leg.announced, place) != leg.announced.end())
        return;
    announce(follower, leg.interface, place.address, place.port, since, leg.clock_rate);
    leg.announced.push_back(place);
}

void forget_places(call_leg &leg, rtp_follower &follower)
{
    for (const net_endpoint &place : leg.announced)
        forget(follower, leg.interface, place.address, place.port);
    leg.announced.clear();
}

void end_leg(call_leg &leg, int64_t time, uint32_t up_time)
{
    if (leg.ended)
        return;
    leg.ended = true;
    leg.end = time;
    leg.end_up_time = up_time;
}

void end_if_silent(call_leg &leg, const rtp_follower &follower, const voice_clock &clock)
{
    if (leg.ended || !has_passed(clock, leg.interface, leg.last, leg.last_up_time, seconds_of_silence))
        return;
    const leg_media media = media_of(leg, follower);
    const int64_t heard = std::max({leg.last, media.received.last, media.sent.last});
    const int64_t newest = newest_frame(clock, leg.interface);
    // Media go on: the next look is in as long again.
    if (newest - heard < int64_t{seconds_of_silence} * 1000000 && heard != leg.last) {
        leg.last = heard;
        leg.last_up_time = clock.up_time;
        return;
    }
    leg.silent = true;
    end_leg(leg, heard, leg.last_up_time);
}

bool has_settled(const call_leg &leg, const voice_clock &clock, uint32_t seconds)
{
    return leg.ended && has_passed(clock, leg.interface, leg.end, leg.end_up_time, seconds);
}

leg_media media_of(const call_leg &leg, const rtp_follower &follower)
{
    const int64_t until = leg.ended ? leg.end + int64_t{seconds_to_settle} * 1000000 : INT64_MAX;
    return {
        measured_at(follower, leg.interface, leg.receives, leg.start, until),
        measured_at(follower, leg.interface, leg.sends, leg.start, until)};
}

leg_report report_of(const leg_report &told, const media_figures &received, const media_figures &sent)
{
    if (told.told)
        return told;
    return {false,           sent.packets,  sent.octets,     received.packets,
            received.octets, received.lost, received.jitter, round_trip(received, sent)};
}

uint32_t samples_of(const call_leg &leg, const leg_media &media)
{
    return leg.report.told || media.received.streams > 0 ? 1 : 0;
}

uint32_t hundredths_between(int64_t from, int64_t to)
{
    return static_cast<uint32_t>(std::clamp<int64_t>((to - from) / 10000, 0, UINT32_MAX / 2));
}
