// SPDX-License-Identifier: MIT
/* What the trackers of calls have in common: where media go, what was measured of them, and how rows say it.
 */
#pragma once

#include "agent/voice/rtp.h"

#include "rmon/rpc/wire.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

/** Where media go to, or a phone's end of a connection. */
struct net_endpoint {
    net_address address;
    uint16_t port = 0;

    bool operator==(const net_endpoint &) const = default;
};

template <> struct std::hash<net_endpoint> {
    std::size_t operator()(const net_endpoint &endpoint) const
    {
        return (std::hash<net_address>{}(endpoint.address) ^ endpoint.port) * 0x9e3779b97f4a7c15;
    }
};

inline bool is_known(const net_endpoint &endpoint)
{
    return endpoint.address.length != 0 && endpoint.port != 0;
}

/** How far an interface's messages have come: those of frames that passed by before were taken in. */
struct voice_progress {
    int64_t newest = 0;   // time of a frame, microseconds
    uint32_t up_time = 0; // sysUpTime when it passed by; now, where all are taken in
};

/** The times by which calls settle. */
struct voice_clock {
    uint32_t up_time = 0; // sysUpTime
    std::unordered_map<int32_t, voice_progress> interfaces;
};

inline voice_progress progress_of(const voice_clock &clock, int32_t interface)
{
    const auto found = clock.interfaces.find(interface);
    return found == clock.interfaces.end() ? voice_progress{0, clock.up_time} : found->second;
}

inline int64_t newest_frame(const voice_clock &clock, int32_t interface)
{
    return progress_of(clock, interface).newest;
}

/** Whether so many seconds passed since a frame and the sysUpTime at which it passed by: of a recording, or
 * of the agent's clock where no more frames come. */
inline bool
has_passed(const voice_clock &clock, int32_t interface, int64_t time, uint32_t up_time, uint32_t seconds)
{
    const voice_progress progress = progress_of(clock, interface);
    const auto age = static_cast<int32_t>(progress.up_time - up_time); // below 0 where it is newer
    return progress.newest - time >= int64_t{seconds} * 1000000 || age >= static_cast<int32_t>(seconds * 100);
}

/** Seconds after a call's end in which what belongs to it may still come. */
inline constexpr uint32_t seconds_to_settle = 2;

/** Seconds for which the second side of a call is waited for when the first one has settled. */
inline constexpr uint32_t seconds_for_other_side = 5;

/** Seconds without signalling and media after which a call is over whose end was not seen. */
inline constexpr uint32_t seconds_of_silence = 300;

/** What was measured of the streams to one place. */
struct media_figures {
    uint32_t streams = 0;
    uint32_t packets = 0;
    uint32_t octets = 0; // of payload
    uint32_t lost = 0;
    uint32_t jitter = 0;        // milliseconds: the mean, rounded
    uint32_t round_trip_us = 0; // from the place of capture to where they go, and back
    int64_t last = 0;           // when the last packet came
};

/** Of the streams to this place of which frames were seen between these times. */
media_figures measured_at(
    const rtp_follower &follower,
    int32_t interface,
    const net_endpoint &to,
    int64_t from_time,
    int64_t to_time);

/** The round trip of both directions in milliseconds, 0 where one of them is not known. */
uint32_t round_trip(const media_figures &one, const media_figures &other);

/** A text of strangers in a row's field: cut to its size, with nothing in it that a terminal would obey. */
void put_text(char *field, std::size_t size, std::string_view text);

template <uint32_t N> void put_text(wire::chars<N> &field, std::string_view text)
{
    put_text(field.value, N, text);
}

/** An address in a row's vector of 16; its length. */
template <class Octets> uint32_t put_address(Octets &field, const net_address &address)
{
    for (uint32_t i = 0; i < sizeof field.value; i++)
        field.value[i] = static_cast<std::remove_reference_t<decltype(field.value[0])>>(address.bytes[i]);
    return address.length;
}

/** As people write it. */
std::string text_of(const net_address &address);
