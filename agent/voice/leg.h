// SPDX-License-Identifier: MIT
/*
 * One side of a call of SCCP or MGCP: where its media go, what was measured of
 * them or told by the phone, and how it ends.
 */
#pragma once

#include "agent/voice/measured.h"
#include "agent/voice/rtp.h"

#include <cstdint>
#include <vector>

/** What a phone, or its gateway, counted of a leg; what it did not tell is 0. */
struct leg_report {
    bool told = false; // by the phone itself
    uint32_t packets_sent = 0;
    uint32_t octets_sent = 0;
    uint32_t packets_received = 0;
    uint32_t octets_received = 0;
    uint32_t lost = 0;
    uint32_t jitter = 0;  // milliseconds
    uint32_t latency = 0; // milliseconds
};

struct call_leg {
    int32_t interface = 0; // the one on which its messages count
    int64_t start = 0;     // times of frames, microseconds
    int64_t end = 0;
    int64_t last = 0;          // of its signalling
    uint32_t last_up_time = 0; // when that passed by
    uint32_t end_up_time = 0;
    bool ended = false;
    bool silent = false;   // ended because nothing came any more
    net_endpoint receives; // where its media come in
    net_endpoint sends;    // where they go to
    uint32_t clock_rate = 8000;
    std::vector<net_endpoint> announced;
    leg_report report;
};

/** A leg's media, as they were measured. */
struct leg_media {
    media_figures received;
    media_figures sent;
};

/** Has the streams to a place of the leg's followed. */
void announce_place(call_leg &leg, rtp_follower &follower, const net_endpoint &place, int64_t since);
void forget_places(call_leg &leg, rtp_follower &follower);

/** Once: what comes later changes no end. */
void end_leg(call_leg &leg, int64_t time, uint32_t up_time);

/** A leg of which nothing was heard for long, neither signalling nor media, is over since then. */
void end_if_silent(call_leg &leg, const rtp_follower &follower, const voice_clock &clock);

/** Whether a leg ended, and so many seconds ago. */
bool has_settled(const call_leg &leg, const voice_clock &clock, uint32_t seconds);

leg_media media_of(const call_leg &leg, const rtp_follower &follower);

/** What the phone told, or in its place what was measured. */
leg_report report_of(const leg_report &told, const media_figures &received, const media_figures &sent);

/** Whether there are figures of it: 1, else 0. */
uint32_t samples_of(const call_leg &leg, const leg_media &media);

/** The time between two frames, for the clock of sysUpTime. */
uint32_t hundredths_between(int64_t from, int64_t to);
