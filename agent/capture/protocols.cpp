// SPDX-License-Identifier: MIT
#include "agent/capture/protocols.h"

#include "agent/capture/frame.h"
#include "agent/core/octets.h"
#include "agent/capture/protocol_list.h"

#include <array>
#include <utility>

namespace {

/** Local indexes fit the tables of carried protocols. */
constexpr std::size_t last_local_index = 65535;

/** The base layers' identifiers (RFC 2895), which are also their local indexes. */
enum base_layer : int32_t {
    ether2 = 1,
    llc = 2,
};

constexpr uint32_t octets_of_a_layer = 4;

std::vector<uint8_t> id_above(const std::vector<uint8_t> &parent, uint32_t number)
{
    std::vector<uint8_t> id = parent;
    for (int shift = 24; shift >= 0; shift -= 8)
        id.push_back(static_cast<uint8_t>(number >> shift));
    return id;
}

bool is_base(const protocol &which)
{
    return which.parent == 0;
}

bool is_transport(uint32_t number)
{
    return number == ip_tcp || number == ip_udp || number == ip_sctp;
}

/** How a protocol tells what it carries. */
selector selector_of(const protocol *parent, uint32_t number)
{
    if (!parent)
        return number == llc ? selector::access_point : selector::ethernet_type;
    if (is_base(*parent) && parent->told_by == selector::ethernet_type)
        return number == ethertype_ip || number == ethertype_ip6 ? selector::ip_protocol : selector::none;
    if (parent->told_by == selector::ip_protocol)
        return is_transport(number) ? selector::port : selector::none;
    return selector::none;
}

/** The numbers that a protocol can carry: from the first one to before the second one. */
std::array<uint32_t, 2> numbers_of(selector told_by)
{
    switch (told_by) {
    case selector::ethernet_type:
        return {first_ethernet_type, 65536};
    case selector::access_point:
    case selector::ip_protocol:
        return {0, 256};
    case selector::port:
        return {1, 65536};
    case selector::none:
        break;
    }
    return {0, 0};
}

int32_t lasting_flags(const protocol *parent, const protocol &which)
{
    if (!parent)
        return base_protocol;
    if (is_base(*parent))
        return network_protocol | (which.told_by == selector::ip_protocol ? ip_protocol_itself : 0);
    return parent->flags & (ip_protocol_itself | above_ip) ? above_ip : 0;
}

/** What the groups can count of a protocol they count at first. */
void set_first_config(const protocol *parent, protocol &which)
{
    const bool ip = which.flags & ip_protocol_itself;
    which.address_map = ip ? protocol_config::on : protocol_config::not_supported;
    if (ip || which.flags & above_ip)
        which.host = which.matrix = protocol_config::on;
    if (parent && parent->told_by == selector::port && is_measured(parent->number, which.number))
        which.response_time = protocol_config::on;
}

protocol *append(protocol_directory &directory, protocol *parent, uint32_t number)
{
    if (directory.rows.empty())
        directory.rows.emplace_back(); // no protocol has the local index 0
    if (directory.rows.size() > last_local_index)
        return nullptr;
    auto made = std::make_unique<protocol>();
    made->local_index = static_cast<int32_t>(directory.rows.size());
    made->number = number;
    made->id = id_above(parent ? parent->id : std::vector<uint8_t>{}, number);
    made->parameters.resize(made->id.size() / octets_of_a_layer);
    if (parent) {
        made->parent = parent->local_index;
        parent->children++;
    }
    made->told_by = selector_of(parent, number);
    made->flags = lasting_flags(parent, *made);
    made->carried.resize(numbers_of(made->told_by)[1]);
    set_first_config(parent, *made);
    directory.by_id[{made->id, made->parameters}] = made->local_index;
    protocol *added = made.get();
    directory.rows.push_back(std::move(made));
    return added;
}

/** A protocol that the agent knows by itself. */
protocol *add_known(protocol_directory &directory, protocol *parent, uint32_t number, const char *name)
{
    protocol *added = append(directory, parent, number);
    added->description = parent ? parent->description + '.' + name : name;
    activate_protocol(directory, *added, true);
    return added;
}

void add_internet(protocol_directory &directory, protocol *below, std::span<const known_protocol> carried)
{
    for (const known_protocol &transport : carried) {
        protocol *added = add_known(directory, below, transport.number, transport.name);
        for (const known_application &application : known_applications) {
            if (transport.applications & application.transports)
                add_known(directory, added, application.number, application.name);
        }
    }
}

int32_t carried_by(const protocol *below, uint32_t number)
{
    return below && number < below->carried.size() ? below->carried[number] : 0;
}

/** The application of two ports: the known one's; of two known ones that with the lower number. */
int32_t application_of(const protocol &transport, uint32_t from_port, uint32_t to_port)
{
    const int32_t from = carried_by(&transport, from_port);
    const int32_t to = carried_by(&transport, to_port);
    if (from == 0 || to == 0)
        return from + to;
    return from_port < to_port ? from : to;
}

} // namespace

bool operator<(const protocol_key &a, const protocol_key &b)
{
    const int order = compare_octets(a.id, b.id);
    return order != 0 ? order < 0 : compare_octets(a.parameters, b.parameters) < 0;
}

void fill_protocols(protocol_directory &directory)
{
    protocol *ethernet = add_known(directory, nullptr, ether2, "ether2");
    protocol *logical_link = add_known(directory, nullptr, llc, "llc");
    for (const known_protocol &network : known_networks) {
        protocol *added = add_known(directory, ethernet, network.number, network.name);
        if (network.number == ethertype_ip)
            add_internet(directory, added, known_over_ip);
        else if (network.number == ethertype_ip6)
            add_internet(directory, added, known_over_ip6);
    }
    for (const known_protocol &network : known_over_llc)
        add_known(directory, logical_link, network.number, network.name);
}

void classify(protocol_directory &directory, frame &what)
{
    what.application_index = 0;
    what.base_index = !what.network ? 0 : what.ethertype >= first_ethernet_type ? ether2 : llc;
    if (what.ethertype < first_ethernet_type) {
        const bool has_access_point = what.network && what.network_length > 0;
        what.network_index =
            has_access_point ? carried_by(find_protocol(directory, llc), what.network[0]) : 0;
        return;
    }
    what.network_index = protocol_of_type(directory, what.ethertype);
    if (what.ip_protocol < 0)
        return;
    const protocol *network = find_protocol(directory, what.network_index);
    const int32_t transport_index = carried_by(network, static_cast<uint32_t>(what.ip_protocol));
    const protocol *transport = find_protocol(directory, transport_index);
    if (!transport)
        return;
    const int32_t application =
        what.later_fragment ? 0 : application_of(*transport, what.from_port, what.to_port);
    what.application_index = application ? application : transport_index;
}

int32_t protocol_of_type(const protocol_directory &directory, uint16_t ethertype)
{
    return carried_by(find_protocol(directory, ether2), ethertype);
}

protocol *add_protocol(protocol_directory &directory, int32_t parent, uint32_t number)
{
    protocol *below = find_protocol(directory, parent);
    if (!below)
        return nullptr;
    if (!carries(*below, number))
        return nullptr;
    const protocol_key key{id_above(below->id, number), std::vector<uint8_t>(below->parameters.size() + 1)};
    return directory.by_id.contains(key) ? nullptr : append(directory, below, number);
}

bool carries(const protocol &below, uint32_t number)
{
    const auto [first, end] = numbers_of(below.told_by);
    return number >= first && number < end;
}

int32_t flags_of(const protocol &which)
{
    return which.flags | (which.children == 0 ? leaf_protocol : 0);
}

int32_t type_of(const protocol &which)
{
    return (which.told_by != selector::none ? extensible : 0)
           | (which.flags & ip_protocol_itself ? address_recognition : 0);
}

void activate_protocol(protocol_directory &directory, protocol &which, bool active)
{
    which.active = active;
    if (protocol *below = find_protocol(directory, which.parent))
        below->carried[which.number] = static_cast<uint16_t>(active ? which.local_index : 0);
}

void remove_protocol(protocol_directory &directory, int32_t local_index)
{
    protocol *found = find_protocol(directory, local_index);
    if (!found || found->children > 0 || is_base(*found))
        return;
    activate_protocol(directory, *found, false);
    find_protocol(directory, found->parent)->children--;
    directory.by_id.erase({found->id, found->parameters});
    directory.rows[static_cast<std::size_t>(local_index)].reset();
}

void take_back_protocol(protocol_directory &directory)
{
    remove_protocol(directory, local_index_end(directory) - 1);
    directory.rows.pop_back();
}
