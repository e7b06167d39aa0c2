// SPDX-License-Identifier: MIT
#include "agent/nde/netflow_packet.h"

#include "agent/capture/frame.h"

namespace {

/** Templates kept of one device; devices use a handful. */
constexpr std::size_t max_templates = 64;

/* Version 5. */
constexpr std::size_t header_5 = 24;
constexpr std::size_t record_5 = 48;
constexpr uint16_t max_records_5 = 30;
constexpr std::size_t input_5 = 12;
constexpr std::size_t output_5 = 14;

/* Version 9. */
constexpr std::size_t header_9 = 20;
constexpr std::size_t source_id_9 = 16;
constexpr std::size_t set_header_9 = 4;
constexpr uint16_t template_set = 0;
constexpr uint16_t first_data_set = 256;
constexpr uint16_t input_field = 10; // INPUT_SNMP and OUTPUT_SNMP
constexpr uint16_t output_field = 14;

using bytes = std::span<const uint8_t>;

bool read_version_5(bytes packet, on_flow flow, void *context)
{
    if (packet.size() < header_5)
        return false;
    const uint16_t count = read_u16(&packet[2]);
    if (count == 0 || count > max_records_5 || packet.size() < header_5 + count * record_5)
        return false;
    for (std::size_t i = 0; i < count; i++) {
        const uint8_t *record = &packet[header_5 + i * record_5];
        flow(context, read_u16(record + input_5), read_u16(record + output_5));
    }
    return true;
}

/** The number in a field of one to four octets; -1 for other fields, and for what is no interface index. */
int32_t number_in(const uint8_t *field, uint32_t octets)
{
    if (octets == 0 || octets > 4)
        return -1;
    uint32_t number = 0;
    for (uint32_t i = 0; i < octets; i++)
        number = number << 8 | field[i];
    return number <= INT32_MAX ? static_cast<int32_t>(number) : -1;
}

/** Reads the templates of a set. False when one is cut. */
bool read_templates(bytes set, uint32_t source_id, netflow_templates &templates)
{
    while (set.size() >= 4) {
        const uint16_t id = read_u16(&set[0]);
        const std::size_t fields = read_u16(&set[2]);
        if (id < first_data_set)
            return id == 0; // the zeros that fill up the set
        set = set.subspan(4);
        if (set.size() < fields * 4)
            return false;
        netflow_template made;
        for (std::size_t i = 0; i < fields; i++) {
            const uint16_t type = read_u16(&set[i * 4]);
            const uint16_t octets = read_u16(&set[i * 4 + 2]);
            if (type == input_field) {
                made.input_offset = made.record_octets;
                made.input_octets = octets;
            } else if (type == output_field) {
                made.output_offset = made.record_octets;
                made.output_octets = octets;
            }
            made.record_octets += octets; // at most 65535 fields of as many octets: it fits
        }
        set = set.subspan(fields * 4);
        if (templates.size() < max_templates || templates.contains({source_id, id}))
            templates[{source_id, id}] = made;
    }
    return true;
}

void read_data(bytes set, const netflow_template &how, on_flow flow, void *context)
{
    if (how.record_octets == 0)
        return;
    for (; set.size() >= how.record_octets; set = set.subspan(how.record_octets))
        flow(
            context, number_in(set.data() + how.input_offset, how.input_octets),
            number_in(set.data() + how.output_offset, how.output_octets));
}

bool read_version_9(bytes packet, netflow_templates &templates, on_flow flow, void *context)
{
    if (packet.size() < header_9)
        return false;
    const uint32_t source_id = read_u32(&packet[source_id_9]);
    packet = packet.subspan(header_9);
    while (!packet.empty()) {
        if (packet.size() < set_header_9)
            return false;
        const uint16_t id = read_u16(&packet[0]);
        const std::size_t length = read_u16(&packet[2]);
        if (length < set_header_9 || length > packet.size())
            return false;
        const bytes set = packet.subspan(set_header_9, length - set_header_9);
        if (id == template_set) {
            if (!read_templates(set, source_id, templates))
                return false;
        } else if (id >= first_data_set) {
            // Records of a template that did not come yet can't be read; they are no fault.
            if (const auto found = templates.find({source_id, id}); found != templates.end())
                read_data(set, found->second, flow, context);
        }
        packet = packet.subspan(length);
    }
    return true;
}

} // namespace

bool read_netflow(std::span<const uint8_t> packet, netflow_templates &templates, on_flow flow, void *context)
{
    switch (packet.size() < 2 ? 0 : read_u16(packet.data())) {
    case 5:
        return read_version_5(packet, flow, context);
    case 9:
        return read_version_9(packet, templates, flow, context);
    default:
        return false;
    }
}
