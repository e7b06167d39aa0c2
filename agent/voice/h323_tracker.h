// SPDX-License-Identifier: MIT
/* What is kept of phones and calls of H.323 while messages and media pass by. */
#pragma once

#include "agent/voice/calls.h"
#include "agent/voice/measured.h"
#include "agent/voice/recent.h"

#include <cstdint>
#include <vector>

/** What strangers may fill: calls that run or settle, phones that registered, requests without an answer. */
inline constexpr std::size_t max_h323_calls = 4096;
inline constexpr std::size_t max_h323_phones = 4096;
inline constexpr std::size_t max_h323_requests = 1024;

/** Of one call: places to which the media of one direction went, and logical channels. */
inline constexpr std::size_t max_h323_places = 8;
inline constexpr std::size_t max_h323_channels = 16;

/** call_state of a row. Its call_status is the cause of the end (ITU-T Q.850), 0 as long as there is none. */
enum class h323_state : uint32_t { setup = 1, alerting = 2, answered = 3, over = 4, end_not_seen = 5 };

struct h323_call_key {
    net_endpoint caller; // ends of the connection of call signalling
    net_endpoint callee;
    uint32_t reference = 0;

    bool operator==(const h323_call_key &) const = default;
};

template <> struct std::hash<h323_call_key> {
    std::size_t operator()(const h323_call_key &key) const
    {
        const std::hash<net_endpoint> of_end;
        return ((of_end(key.caller) ^ key.reference) * 0x9e3779b97f4a7c15) ^ of_end(key.callee);
    }
};

/** A logical channel that H.245 opens. */
struct h323_channel {
    bool by_caller;
    uint32_t number;
    bool audio;
};

struct h323_tracked_call {
    h323_call shown; // what messages say, in the form of its row
    int32_t interface = 0;
    h323_state state = h323_state::setup;
    int64_t begin = 0; // times of frames, microseconds
    int64_t last = 0;  // of the last sign of life
    int64_t end = 0;
    uint32_t last_up_time = 0; // when these passed by
    uint32_t end_up_time = 0;
    bool ended = false;

    net_endpoint control; // where H.245 is waited for
    bool control_of_caller = false;
    net_endpoint offered; // by fast start: where the caller receives, if the callee takes it
    std::vector<h323_channel> channels;
    std::vector<net_endpoint> to_callee; // where the caller's media went, of which the last is in use
    std::vector<net_endpoint> to_caller;
    uint32_t rate_to_callee = 8000; // of dynamic payload types
    uint32_t rate_to_caller = 8000;
};

/** A request of registration, by who asked and its number. */
struct h323_request_key {
    net_endpoint from;
    uint64_t number = 0;

    bool operator==(const h323_request_key &) const = default;
};

template <> struct std::hash<h323_request_key> {
    std::size_t operator()(const h323_request_key &key) const
    {
        return std::hash<net_endpoint>{}(key.from) ^ key.number;
    }
};

struct h323_tracker {
    recent_table<h323_call_key, h323_tracked_call> calls;
    recent_table<net_endpoint, h323_call_key> controls; // calls by where their H.245 is waited for
    recent_table<net_address, h323_phone> phones;       // that registered, by where they are called
    recent_table<h323_request_key, h323_phone> requests;
    h323_call_key
        signalled; // what the last message of call signalling was about: what is tunnelled in it comes next
    int64_t signalled_at = 0; // its time
};
