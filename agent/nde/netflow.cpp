// SPDX-License-Identifier: MIT
#include "agent/nde/netflow.h"

#include "agent/capture/family.h"
#include "agent/core/log.h"
#include "agent/core/reply.h"
#include "agent/core/read_rows.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <netdb.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::size_t max_devices = 1000;
constexpr std::size_t max_interfaces = 1000; // of one device

/** Packets taken in one go. */
constexpr int packets_in_a_round = 256;

/** Makes room for one more in a table that is full: the entry that was seen longest ago gives way. */
template <class Table> void make_room(Table &table, std::size_t max)
{
    if (table.size() < max)
        return;
    table.erase(
        std::ranges::min_element(table, {}, [](const auto &entry) { return entry.second.last_seen; }));
}

/** Interfaces that one packet may add: real ones name a few, and each one may take a search for room. */
constexpr int max_new_interfaces = 64;

struct seen_packet {
    learned_device *device;
    uint64_t number;
    int added; // interfaces
};

void note_interface(seen_packet &seen, int32_t index, int32_t direction)
{
    if (index < 0)
        return;
    auto &interfaces = seen.device->interfaces;
    if (!interfaces.contains(index)) {
        if (++seen.added > max_new_interfaces)
            return;
        make_room(interfaces, max_interfaces);
    }
    learned_interface &row = interfaces[index];
    row.directions |= direction;
    row.last_seen = seen.number;
}

void note_flow(void *context, int32_t input, int32_t output)
{
    auto &seen = *static_cast<seen_packet *>(context);
    note_interface(seen, input, flows_in);
    note_interface(seen, output, flows_out);
}

nde_address address_from(const sockaddr_storage &from)
{
    nde_address made;
    const auto take = [&](const void *bytes, uint32_t length) {
        made.length = length;
        std::memcpy(made.bytes.data(), bytes, length);
    };
    if (from.ss_family == AF_INET)
        take(&reinterpret_cast<const sockaddr_in &>(from).sin_addr, 4);
    else if (from.ss_family == AF_INET6)
        take(&reinterpret_cast<const sockaddr_in6 &>(from).sin6_addr, 16);
    return made;
}

void learn(probe &agent, const nde_address &from, std::span<const uint8_t> packet)
{
    netflow_learning &learning = storage<netflow_learning>(agent);
    const auto found = learning.devices.find(from);
    const bool known = found != learning.devices.end();
    // A device is known from its first valid packet on.
    learned_device fresh;
    seen_packet seen{known ? &found->second : &fresh, ++learning.packets, 0};
    if (!read_netflow(packet, seen.device->templates, note_flow, &seen))
        return;
    if (!known) {
        make_room(learning.devices, max_devices);
        seen.device = &(learning.devices[from] = std::move(fresh));
    }
    seen.device->last_seen = seen.number;
    seen.device->last_time = up_time(agent);
    seen.device->packets++;
}

void on_packets(void *context, uint32_t)
{
    auto &agent = *static_cast<probe *>(context);
    static uint8_t packet[65536];
    for (int i = 0; i < packets_in_a_round; i++) {
        sockaddr_storage from{};
        socklen_t from_length = sizeof from;
        const ssize_t size = recvfrom(
            storage<netflow_learning>(agent).socket, packet, sizeof packet, 0,
            reinterpret_cast<sockaddr *>(&from), &from_length);
        if (size < 0)
            return;
        if (storage<netflow_learning>(agent).enabled)
            learn(agent, address_from(from), {packet, static_cast<std::size_t>(size)});
    }
}

/** Binds a socket to one address. -1, with errno. */
int bind_socket(const addrinfo &address)
{
    const int made = socket(address.ai_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0 || bind(made, address.ai_addr, address.ai_addrlen) == 0)
        return made;
    const int error = errno;
    close(made);
    errno = error;
    return -1;
}

uint16_t port_of(int socket)
{
    sockaddr_storage bound{};
    socklen_t length = sizeof bound;
    if (getsockname(socket, reinterpret_cast<sockaddr *>(&bound), &length) != 0)
        return 0;
    return ntohs(
        bound.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6 &>(bound).sin6_port
                                    : reinterpret_cast<const sockaddr_in &>(bound).sin_port);
}

} // namespace

std::string open_netflow(probe &agent, const std::string &host, uint16_t port)
{
    const std::string what = "cannot listen for NetFlow on " + host + " port " + std::to_string(port) + ": ";
    addrinfo hints{};
    hints.ai_socktype = SOCK_DGRAM;
    hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo *list = nullptr;
    if (const int error = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &list))
        return what + gai_strerror(error);
    int &socket = storage<netflow_learning>(agent).socket;
    for (const addrinfo *address = list; address && socket < 0; address = address->ai_next)
        socket = bind_socket(*address);
    const int error = errno;
    freeaddrinfo(list);
    if (socket < 0)
        return what + std::strerror(error);
    if (!watch(agent.loop, socket, EPOLLIN, on_packets, &agent))
        return what + std::strerror(errno);
    storage<netflow_learning>(agent).start_time = up_time(agent);
    say(log_level::notice, "NetFlow packets are taken on port " + std::to_string(port_of(socket)));
    return {};
}

/* ---- the tables ------------------------------------------------------------------------ */

rmonrpc_nde_learned_dev_arr_t nde_learned_dev_get(probe &agent, const rmonrpc_nde_learned_dev_t &request)
{
    const auto index = address_of(request.head);
    if (!index)
        return {};
    return read_rows<rmonrpc_nde_learned_dev_t>(
        storage<netflow_learning>(agent).devices, *index, request.head.getType, request.head.count,
        [](const auto &entry) {
            rmonrpc_nde_learned_dev_t row{};
            set_address(row.head, entry.first);
            row.timeLastNdePkt = entry.second.last_time;
            row.numNdePkts = entry.second.packets;
            return row;
        });
}

rmonrpc_nde_learned_dev_intf_arr_t
nde_learned_dev_intf_get(probe &agent, const rmonrpc_nde_learned_dev_intf_t &request)
{
    const auto address = address_of(request.head);
    if (!address)
        return {};
    const auto device = storage<netflow_learning>(agent).devices.find(*address);
    if (device == storage<netflow_learning>(agent).devices.end())
        return {};
    return read_rows<rmonrpc_nde_learned_dev_intf_t>(
        device->second.interfaces, request.ifIndex, request.head.getType, request.head.count,
        [&](const auto &entry) {
            rmonrpc_nde_learned_dev_intf_t row{};
            set_address(row.head, *address);
            row.ifIndex = entry.first;
            row.dirFlag = entry.second.directions;
            return row;
        });
}

/* ---- the switch --------------------------------------------------------------------------- */

int32_t nde_auto_learned_enable(probe &agent)
{
    if (storage<netflow_learning>(agent).socket < 0)
        return gen_err;
    if (storage<netflow_learning>(agent).enabled)
        return no_error;
    storage<netflow_learning>(agent).enabled = true;
    storage<netflow_learning>(agent).start_time = up_time(agent);
    storage<netflow_learning>(agent).devices.clear();
    return no_error;
}

int32_t nde_auto_learned_disable(probe &agent)
{
    storage<netflow_learning>(agent).enabled = false;
    return no_error;
}

rmonrpc_nde_learned_dev_status_t nde_learned_dev_status(probe &agent)
{
    const netflow_learning &learning = storage<netflow_learning>(agent);
    return {learning.enabled && learning.socket >= 0, learning.start_time};
}

void save_learning(probe &agent, state_writer &writer)
{
    write_record(writer, rmonrpc_nde_learned_dev_status_t{storage<netflow_learning>(agent).enabled, 0});
}

void load_learning(probe &agent, const rmonrpc_nde_learned_dev_status_t &kept)
{
    storage<netflow_learning>(agent).enabled = kept.state != 0;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

void close_netflow(probe &agent)
{
    int &socket = storage<netflow_learning>(agent).socket;
    if (socket < 0)
        return;
    unwatch(agent.loop, socket);
    close(socket);
    socket = -1;
}

constexpr served_procedure procedures[] = {
    serve<nde_learned_dev_get>(nde_learned_dev_get_1),
    serve_set<nde_auto_learned_enable>(nde_auto_learned_enable_1),
    serve_set<nde_auto_learned_disable>(nde_auto_learned_disable_1),
    serve<nde_learned_dev_status>(nde_learned_dev_status_1),
    serve<nde_learned_dev_intf_get>(nde_learned_dev_intf_get_1),
};

constexpr state_part kept[] = {
    keep<save_learning, load_learning>("ndeLearning"),
};

} // namespace

extern const family netflow_family = {
    .name = "netflow",
    .stop = close_netflow,
    .procedures = procedures,
    .kept = kept,
};
