// SPDX-License-Identifier: MIT
#include "agent/rpc/server.h"

#include "agent/core/log.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::size_t max_connections = 512;

/** Bytes of the longest message that is taken; no useful call comes near it. */
constexpr std::size_t max_message = 256 * 1024;

/** While more bytes than these wait for a client to read them, none of its further calls are answered. */
constexpr std::size_t max_waiting = 256 * 1024;

/** While more bytes than these wait for all clients together, those for whom most waits are disconnected.
 */
constexpr std::size_t max_waiting_of_all = 32 * 1024 * 1024;

/** A message that began must end, and a client must read some of what waits for it, within this time. */
constexpr int64_t patience_ms = 30 * 1000;

constexpr uint32_t last_fragment_bit = 0x80000000;

std::size_t waiting(const connection &client)
{
    return client.output.size() - client.sent;
}

void close_connection(connection &client)
{
    tcp_server &server = *client.server;
    const int socket = client.socket;
    unwatch(*server.loop, socket);
    close(socket);
    server.connections.erase(socket);
}

/** Sends what the client's side takes. False when the connection is broken. */
bool send_output(connection &client)
{
    while (waiting(client) > 0) {
        const ssize_t size = send(
            client.socket, client.output.data() + client.sent, waiting(client), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return errno == EAGAIN || errno == EWOULDBLOCK;
        client.sent += static_cast<std::size_t>(size);
        client.last_active = now_ms();
    }
    client.sent = 0;
    if (client.output.capacity() > max_waiting)
        client.output = {};
    else
        client.output.clear();
    return true;
}

/** Answers the message that arrived. False when it was not one of RPC. */
bool end_message(connection &client)
{
    tcp_server &server = *client.server;
    client.message_began = 0;
    const std::size_t before = client.output.size();
    const bool understood = server.answer(
        server.context, client.message.data(), client.message.size(), client.output, client.held_for);
    if (client.held_for != 0) {
        const auto reply = client.output.begin() + static_cast<std::ptrdiff_t>(before);
        client.held.assign(reply, client.output.end());
        client.output.erase(reply, client.output.end());
    }
    client.message.clear();
    if (client.message.capacity() > 4096)
        client.message.shrink_to_fit();
    return understood;
}

/** Takes one piece, of a mark or of a fragment. The bytes that it took; 0 when the connection must end. */
std::size_t take_piece(connection &client, const uint8_t *bytes, std::size_t size)
{
    if (client.message_began == 0)
        client.message_began = now_ms();

    if (client.fragment_left == 0) {
        const std::size_t taken = std::min(size, sizeof client.mark - client.mark_length);
        std::memcpy(client.mark + client.mark_length, bytes, taken);
        client.mark_length += static_cast<uint32_t>(taken);
        if (client.mark_length < sizeof client.mark)
            return taken;
        client.mark_length = 0;
        const uint32_t mark = uint32_t{client.mark[0]} << 24 | uint32_t{client.mark[1]} << 16
                              | uint32_t{client.mark[2]} << 8 | client.mark[3];
        client.last_fragment = mark & last_fragment_bit;
        client.fragment_left = mark & ~last_fragment_bit;
        // The length is a claim: it is held against the limit, but no memory is taken for it.
        if (client.fragment_left > max_message - client.message.size())
            return 0;
        if (client.fragment_left == 0 && client.last_fragment && !end_message(client))
            return 0;
        return taken;
    }

    const std::size_t taken = std::min<std::size_t>(size, client.fragment_left);
    client.message.insert(client.message.end(), bytes, bytes + taken);
    client.fragment_left -= static_cast<uint32_t>(taken);
    if (client.fragment_left == 0 && client.last_fragment && !end_message(client))
        return 0;
    return taken;
}

/** Whether what arrives has to wait: for the client to read, or for the reply before it. */
bool is_busy(const connection &client)
{
    return waiting(client) > max_waiting || client.held_for != 0;
}

/** Answers calls until too much output waits or a reply is held, keeps the rest. False: the connection must
 * end. */
bool take_bytes(connection &client, const uint8_t *bytes, std::size_t size)
{
    std::size_t taken = 0;
    while (taken < size && !is_busy(client)) {
        const std::size_t piece = take_piece(client, bytes + taken, size - taken);
        if (piece == 0)
            return false;
        taken += piece;
    }
    client.input.assign(bytes + taken, bytes + size);
    return true;
}

/** Disconnects clients while too much waits for all of them together. False when this one is among them. */
bool make_room(connection &client)
{
    for (;;) {
        std::size_t all = 0;
        connection *fullest = &client;
        for (auto &[socket, other] : client.server->connections) {
            all += waiting(other);
            if (waiting(other) > waiting(*fullest))
                fullest = &other;
        }
        if (all <= max_waiting_of_all)
            return true;
        if (fullest == &client)
            return false;
        close_connection(*fullest);
    }
}

/** Sends, and answers what was put off, until it is the client's turn. False: the connection must end. */
bool settle(connection &client)
{
    for (;;) {
        if (!send_output(client))
            return false;
        if (client.input.empty() || is_busy(client))
            break;
        const std::vector<uint8_t> input = std::move(client.input);
        client.input.clear();
        if (!take_bytes(client, input.data(), input.size()))
            return false;
    }
    if (client.finishing && waiting(client) == 0 && client.held_for == 0)
        return false;
    if (waiting(client) > max_waiting && !make_room(client))
        return false;
    const bool wants_more = client.input.empty() && !client.finishing && client.held_for == 0;
    const uint32_t events = (wants_more ? uint32_t{EPOLLIN} : 0) | (waiting(client) ? uint32_t{EPOLLOUT} : 0);
    rewatch(*client.server->loop, client.socket, events);
    return true;
}

/** Reads once, so that no client keeps the others waiting. False: the connection must end. */
bool receive(connection &client)
{
    uint8_t buffer[16 * 1024];
    const ssize_t size = recv(client.socket, buffer, sizeof buffer, MSG_DONTWAIT);
    if (size < 0)
        return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    client.last_active = now_ms();
    client.finishing = size == 0;
    return take_bytes(client, buffer, static_cast<std::size_t>(size));
}

void on_connection(void *context, uint32_t events)
{
    auto &client = *static_cast<connection *>(context);
    // A hang-up is reported whatever is watched for: by then both directions are gone.
    const bool reads = events & EPOLLIN && client.input.empty() && !client.finishing && client.held_for == 0;
    const bool gone = events & (EPOLLERR | EPOLLHUP) && !reads;
    if (gone || (reads && !receive(client)) || !settle(client))
        close_connection(client);
}

/** Makes room for one more client. False when there is no client to disconnect. */
bool close_quietest(tcp_server &server)
{
    connection *quietest = nullptr;
    for (auto &[socket, client] : server.connections)
        if (!quietest || client.last_active < quietest->last_active)
            quietest = &client;
    if (quietest)
        close_connection(*quietest);
    return quietest != nullptr;
}

void accept_clients(tcp_server &server, bool accepting)
{
    server.accepting = accepting;
    rewatch(*server.loop, server.listener, accepting ? uint32_t{EPOLLIN} : 0);
}

void add_connection(tcp_server &server, int socket)
{
    if (server.connections.size() >= max_connections)
        close_quietest(server);
    const int on = 1;
    const int idle_seconds = 60;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    // Clients keep connections for hours; one whose machine went away must not stay for ever.
    setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    setsockopt(socket, IPPROTO_TCP, TCP_KEEPIDLE, &idle_seconds, sizeof idle_seconds);

    connection &client = server.connections[socket];
    client.server = &server;
    client.socket = socket;
    client.last_active = now_ms();
    if (!watch(*server.loop, socket, EPOLLIN, on_connection, &client))
        close_connection(client);
}

std::string text_of(const sockaddr_storage &address, socklen_t size)
{
    char host[NI_MAXHOST];
    const auto *generic = reinterpret_cast<const sockaddr *>(&address);
    return getnameinfo(generic, size, host, sizeof host, nullptr, 0, NI_NUMERICHOST) == 0 ? host : "?";
}

/** Hangs up. The first of each second is told by its address, so that a flood fills no log. */
void refuse(tcp_server &server, int socket, const sockaddr_storage &from, socklen_t size)
{
    if (server.refused++ == 0)
        say(log_level::warning,
            "refused a client of " + text_of(from, size) + ": not among the networks of --allow");
    close(socket);
}

void on_listener(void *context, uint32_t)
{
    auto &server = *static_cast<tcp_server *>(context);
    for (int round = 0; round < 64; round++) {
        sockaddr_storage from{};
        socklen_t size = sizeof from;
        auto *const generic = reinterpret_cast<sockaddr *>(&from);
        const int socket = accept4(server.listener, generic, &size, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (socket >= 0) {
            if (is_within(server.allowed, from))
                add_connection(server, socket);
            else
                refuse(server, socket, from, size);
            continue;
        }
        const bool exhausted = errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM;
        // Without a free descriptor accept() fails even when nobody waits; in the first round somebody
        // does. That client stays ready and would keep the loop busy: the next tick looks at it again.
        if (exhausted && round == 0 && !close_quietest(server))
            accept_clients(server, false);
        return;
    }
}

/** Closes the connections that hold something up: a message that does not end, a reply that nobody reads. */
void on_server_tick(void *context)
{
    auto &server = *static_cast<tcp_server *>(context);
    if (!server.accepting)
        accept_clients(server, true);
    if (server.refused > 1)
        say(log_level::warning, "refused " + std::to_string(server.refused) + " clients within a second");
    server.refused = 0;
    const int64_t limit = now_ms() - patience_ms;
    for (auto next = server.connections.begin(); next != server.connections.end();) {
        connection &client = (next++)->second;
        const bool unread = waiting(client) > 0 && client.last_active < limit;
        const bool unfinished = client.message_began != 0 && client.message_began < limit && !is_busy(client);
        if (unread || unfinished)
            close_connection(client);
    }
}

std::string name_of(int socket)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    char host[NI_MAXHOST];
    char service[NI_MAXSERV];
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (getsockname(socket, generic, &size) != 0
        || getnameinfo(
               generic, size, host, sizeof host, service, sizeof service, NI_NUMERICHOST | NI_NUMERICSERV)
               != 0)
        return "?";
    if (address.ss_family == AF_INET6)
        return std::string("[") + host + "]:" + service;
    return std::string(host) + ":" + service;
}

/** A listening socket, or -1 with errno. */
int listen_on(const addrinfo &address)
{
    const int socket = ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return -1;
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (bind(socket, address.ai_addr, address.ai_addrlen) == 0 && listen(socket, SOMAXCONN) == 0)
        return socket;
    const int error = errno;
    close(socket);
    errno = error;
    return -1;
}

} // namespace

std::string open_server(
    tcp_server &server,
    event_loop &loop,
    const std::string &host,
    uint16_t port,
    on_message answer,
    void *context)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE;
    addrinfo *addresses = nullptr;
    const int code = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &addresses);
    if (code != 0)
        return "no address to listen on: " + host + ": " + gai_strerror(code);

    server.loop = &loop;
    server.answer = answer;
    server.context = context;
    server.accepting = true;
    server.listener = listen_on(*addresses);
    const int error = errno;
    freeaddrinfo(addresses);
    if (server.listener < 0)
        return "cannot listen on " + host + " port " + std::to_string(port) + ": " + std::strerror(error);

    server.address = name_of(server.listener);
    if (!watch(loop, server.listener, EPOLLIN, on_listener, &server))
        return std::string("cannot watch a socket: ") + std::strerror(errno);
    every_second(loop, on_server_tick, &server);
    return {};
}

void release_replies(tcp_server &server, uint64_t number)
{
    // Sending to one client may disconnect another.
    std::vector<int> sockets;
    for (const auto &[socket, client] : server.connections)
        if (client.held_for != 0 && client.held_for <= number)
            sockets.push_back(socket);
    for (const int socket : sockets) {
        const auto found = server.connections.find(socket);
        if (found == server.connections.end())
            continue;
        connection &client = found->second;
        client.output.insert(client.output.end(), client.held.begin(), client.held.end());
        client.held.clear();
        client.held_for = 0;
        client.last_active = now_ms();
        if (!settle(client))
            close_connection(client);
    }
}

void allow_networks(tcp_server &server, const std::vector<network> &networks)
{
    server.allowed = networks;
    for (auto next = server.connections.begin(); next != server.connections.end();) {
        connection &client = (next++)->second;
        sockaddr_storage from{};
        socklen_t size = sizeof from;
        if (getpeername(client.socket, reinterpret_cast<sockaddr *>(&from), &size) != 0
            || !is_within(server.allowed, from))
            close_connection(client);
    }
}

void close_server(tcp_server &server)
{
    while (close_quietest(server))
        ;
    if (server.listener >= 0) {
        unwatch(*server.loop, server.listener);
        close(server.listener);
    }
    server.listener = -1;
}
