// SPDX-License-Identifier: MIT
/*
 * NetFlow export packets, versions 5 and 9 (RFC 3954): which interfaces of the
 * exporting device the flows went through.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <utility>

/** What is known of a version 9 template: where in a record the interfaces stand. */
struct netflow_template {
    uint32_t record_octets = 0;
    uint32_t input_offset = 0;
    uint32_t input_octets = 0; // 0: the record has no such field
    uint32_t output_offset = 0;
    uint32_t output_octets = 0;
};

/** Of one device, by source id and template id. */
using netflow_templates = std::map<std::pair<uint32_t, uint16_t>, netflow_template>;

/** Called for each flow; an interface is -1 when the flow does not tell it. */
using on_flow = void (*)(void *context, int32_t input, int32_t output);

/**
 * Takes a packet apart. False when it is no export packet, or one that is cut
 * or contradicts itself; flows before the fault were told then, and the rest is
 * left. Templates that the packet brings are added, up to a bound.
 */
bool read_netflow(std::span<const uint8_t> packet, netflow_templates &templates, on_flow flow, void *context);
