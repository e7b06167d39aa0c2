// SPDX-License-Identifier: MIT
/*
 * The TCP side of the RPC server: connections, and the record marking by which
 * messages travel on them (RFC 5531, section 11).
 *
 * The RPC library's own server transport is not used: while a client does not
 * read its reply, that transport spins, for up to two seconds and with all
 * other clients waiting. Here nothing blocks. What a client does not read
 * waits in its connection, and while much waits, nothing more is taken from
 * it. What one client can make the agent hold is bounded (the constants in
 * server.cpp), and so is the number of clients: the one that was quiet for
 * longest gives way to a new one.
 */
#pragma once

#include "agent/core/loop.h"
#include "agent/rpc/networks.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/**
 * Answers one message: appends the reply, with its record mark, to output. Where waits_for is not 0 then, the
 * reply goes out with release_replies() of that number, and until then no more of the connection is answered.
 * False when the message is no call that could be answered: its sender does not speak RPC,
 * and its connection is closed.
 */
using on_message = bool (*)(
    void *context,
    const uint8_t *message,
    std::size_t size,
    std::vector<uint8_t> &output,
    uint64_t &waits_for);

struct tcp_server;

struct connection {
    tcp_server *server;
    int socket;
    std::vector<uint8_t> input;   // arrived, but not looked at: the output is too long for more answers
    std::vector<uint8_t> message; // the fragments of an unfinished message, without their marks
    uint8_t mark[4];              // of the next fragment, as far as it came
    uint32_t mark_length;
    uint32_t fragment_left; // bytes of the current fragment that did not come yet
    bool last_fragment;     // the current fragment ends its message
    int64_t message_began;  // now_ms() of its first byte, 0 between messages
    std::vector<uint8_t> output;
    std::size_t sent;          // bytes of output that are already gone
    std::vector<uint8_t> held; // a reply that may not go out yet
    uint64_t held_for;         // the number that it waits for, 0: nothing is held
    int64_t last_active;       // now_ms() of the last byte in either direction
    bool finishing;            // the client sends no more: closed once the output is gone
};

struct tcp_server {
    event_loop *loop = nullptr;
    int listener = -1;
    bool accepting = false;
    std::string address;                                // as in "127.0.0.1:9911"
    std::vector<network> allowed = loopback_networks(); // whose clients are taken
    uint64_t refused = 0;                               // clients of elsewhere, since the last tick
    std::map<int, connection> connections;
    on_message answer = nullptr;
    void *context = nullptr;
};

/**
 * Listens; port 0 takes any free one. An empty text on success, else what went
 * wrong in one line. The server must not move from then on.
 */
std::string open_server(
    tcp_server &server,
    event_loop &loop,
    const std::string &host,
    uint16_t port,
    on_message answer,
    void *context);

/** Sends the replies that wait for numbers up to this one. */
void release_replies(tcp_server &server, uint64_t number);

/** From now on clients of these networks alone are taken; those of others are sent away. */
void allow_networks(tcp_server &server, const std::vector<network> &networks);

void close_server(tcp_server &server);
