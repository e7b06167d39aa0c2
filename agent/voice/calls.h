// SPDX-License-Identifier: MIT
/* The phones and calls that the voice monitors see, as a scenario or what was measured has them. */
#pragma once

#include "rmon/rpc/rmonrpc_voice.h"

#include <cstdint>
#include <string>
#include <vector>

/** When a call is over and seen, seconds after the start, and how long it took. */
struct call_times {
    uint32_t after = 0;
    uint32_t duration = 0;
    uint32_t took = 0; // hundredths of a second, to be added to the duration
};

/** Directions of a call as a phone of SCCP sees it. */
inline constexpr uint32_t sccp_inbound = 1;
inline constexpr uint32_t sccp_outbound = 2;

/** A party without a name is none of the monitor's phones: it has no row, and no figures of its own. */
struct sccp_phone {
    std::string name;
    rmonrpc_sccp_common_row_t identity{};
};

struct sccp_call {
    call_times times;
    sccp_phone caller;
    sccp_phone callee;
    rmonrpc_sccp_qual_row_t qual{}; // as the caller saw it
    rmonrpc_sccp_qual_row_t callee_qual{};
    uint32_t index = 0;   // of its row, which it has since it runs; 0: none yet
    uint32_t samples = 1; // of the caller's figures; 0: there are none
    uint32_t callee_samples = 1;
};

struct h323_phone {
    std::string name;
    rmonrpc_h323_common_row_t identity{};
};

struct h323_call {
    call_times times;
    h323_phone caller;
    h323_phone callee;
    rmonrpc_h323_qual_row_t qual{};
    uint32_t index = 0; // as of sccp_call
};

struct mgcp_identity {
    wire::chars<32> address; // as text
    wire::chars<256> owner;
    wire::chars<256> alias;
    wire::chars<24> number;
    wire::chars<256> endpoint;
    wire::uchars<16> call_agent;
    uint32_t call_agent_length;
    wire::uchars<16> gateway;
    uint32_t gateway_length;
};

struct mgcp_phone {
    std::string name;
    mgcp_identity identity{};
};

struct mgcp_call {
    call_times times;
    mgcp_phone caller;
    mgcp_phone callee;
    rmonrpc_mgcp_call_t record{};
    uint32_t index = 0; // as of sccp_call
    uint32_t samples = 1;
    uint32_t callee_samples = 1;
};

template <class Phone, class Call> struct protocol_scenario {
    std::vector<Phone> phones;
    std::vector<Call> calls; // sorted by when they are seen
    std::size_t played = 0;  // calls that were seen already
};

struct voice_scenario {
    protocol_scenario<sccp_phone, sccp_call> sccp;
    protocol_scenario<h323_phone, h323_call> h323;
    protocol_scenario<mgcp_phone, mgcp_call> mgcp;
};
