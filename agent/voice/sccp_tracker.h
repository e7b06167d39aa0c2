// SPDX-License-Identifier: MIT
/* What is kept of phones of SCCP and of their legs while messages pass by. */
#pragma once

#include "agent/voice/calls.h"
#include "agent/voice/leg.h"
#include "agent/voice/recent.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>

/** States of a call, of those that the manager tells. */
inline constexpr uint32_t sccp_on_hook = 2;
inline constexpr uint32_t sccp_connected = 5;

/** Phones whose connections are followed, and legs of one phone. */
inline constexpr std::size_t max_sccp_phones = 4096;
inline constexpr std::size_t max_sccp_legs = 16;

/** A number and whose it is: of a party, of a line. */
struct sccp_side {
    std::string number;
    std::string name;
};

/** A phone's side of a call. */
struct sccp_leg : call_leg {
    bool answered = false;
    uint32_t state = 0; // the last one that the manager told
    uint32_t direction = 0;
    sccp_side calling;
    sccp_side called;
    rmonrpc_sccp_qual_row_t qual{}; // what messages say

    net_endpoint partner_phone; // the other leg, once it is found; partner 0: none yet
    uint32_t partner = 0;
    bool search = false; // for the other leg: something was learned
    uint32_t row = 0;    // of the call table, which the calling leg of two has
};

/** A leg that is done. */
struct sccp_past_leg {
    uint32_t reference = 0;
    int64_t end = 0;
};

/** A phone's connection to its manager. */
struct sccp_session {
    net_endpoint phone;
    int32_t interface = -1; // the one on which its messages count; -1: none yet
    int64_t last = 0;       // of a message
    uint32_t version = 0;
    std::string device;
    uint32_t device_type = 0;
    std::map<uint32_t, sccp_side> lines; // by their instance
    std::map<uint32_t, sccp_leg> legs;   // by the manager's reference
    std::array<sccp_past_leg, 8> over{}; // the last ones
    std::size_t next_over = 0;
};

struct sccp_tracker {
    recent_table<net_endpoint, sccp_session> sessions;
    std::map<int32_t, std::string> interface_names;
};

/** A leg, and the phone whose it is. */
struct sccp_found_leg {
    sccp_session *session = nullptr;
    sccp_leg *leg = nullptr;
};
