// SPDX-License-Identifier: MIT
/*
 * Phones and calls of MGCP (RFC 3435), from its commands and responses.
 *
 * A call agent makes connections at endpoints of gateways. Connections of one
 * call identifier are the legs of one call: the one that was made first is the
 * caller's, the second one the callee's, and further ones are calls by
 * themselves.
 */
#pragma once

#include "agent/voice/calls.h"
#include "agent/voice/decoder.h"
#include "agent/voice/leg.h"
#include "agent/voice/monitor.h"
#include "agent/voice/recent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

inline constexpr std::size_t max_mgcp_endpoints = 4096;
inline constexpr std::size_t max_mgcp_calls = 8192;
inline constexpr std::size_t max_mgcp_transactions = 8192;

/** Connections of one call identifier. */
inline constexpr std::size_t max_mgcp_legs = 16;

/** A telephone at a gateway. */
struct mgcp_endpoint {
    std::string name;
    net_address gateway;
    net_address agent;
    int32_t interface = -1; // the one on which its messages count; -1: none yet
    int64_t last = 0;       // of a message
    std::string number;
    std::string owner;
    std::string dialed; // since it was taken off the hook
    // Who calls, as it is told to show.
    std::string shown_number;
    std::string shown_name;
};

struct mgcp_leg : call_leg {
    std::string endpoint; // its key
    std::string connection;
    bool speaks = false; // its mode is to send and to receive
    std::string codec;
    uint32_t period = 0;     // milliseconds
    bool suppresses = false; // silence
};

struct mgcp_calls_of_id {
    std::string id;
    std::vector<mgcp_leg> legs; // in the order in which they were made
    uint32_t row = 0;           // of the first two in the call table
    bool was_connected = false;
};

/** A command that waits for its response. */
struct mgcp_transaction {
    int64_t time = 0;
    bool answered = false;
    std::string verb;
    std::string endpoint; // its key
    std::string call;     // its key
    std::string connection;
    mgcp_leg leg; // what the command says of it
};

struct mgcp_tracker {
    recent_table<std::string, mgcp_endpoint> endpoints;       // by gateway and name
    recent_table<std::string, mgcp_calls_of_id> calls;        // by agent and identifier
    recent_table<std::string, mgcp_transaction> transactions; // by who responds and number
};

/** Takes in a command or a response of MGCP. */
void take_message(
    mgcp_tracker &tracker, mgcp_monitor &monitor, rtp_follower &follower, const voice_message &message);

/** Once a second: shows calls that run, hands over those that are done. */
void settle_calls(
    mgcp_tracker &tracker, mgcp_monitor &monitor, rtp_follower &follower, const voice_clock &clock);
