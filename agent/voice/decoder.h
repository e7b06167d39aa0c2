// SPDX-License-Identifier: MIT
/*
 * The decoder of voice signalling: a child process takes frames apart, and what
 * it says of them comes back as messages.
 *
 * Frames wait in a queue of a fixed size and go to the child as a capture in
 * the order in which they were seen; for each of them it prints one JSON
 * object, in the same order. A frame whose object cannot be read costs what it
 * would have told and nothing else, as do those that were in a child when it
 * died. Nothing here waits: what finds no room is dropped, counted and told.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/loop.h"
#include "agent/voice/launcher.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct json_t;

enum class voice_protocol : uint8_t { sccp, mgcp, h225_ras, h225_cs, h245 };

/**
 * A part of what was decoded: an object of named values, texts or parts. It is
 * read only, and gone when whoever was handed it returns. Names are those that
 * the decoder gives to fields ("skinny.callReference"); a search goes through
 * all parts below, in the order in which they were decoded. An empty part has
 * nothing.
 */
struct decoded_part {
    const json_t *tree = nullptr;
};

/** The first field of this name, decimal or hexadecimal. */
std::optional<uint64_t> number_of(decoded_part part, std::string_view name);

/** The first field of this name, up to a NUL; empty when there is none. */
std::string_view text_of(decoded_part part, std::string_view name);

/** The first field of this name, IPv4 or IPv6; of length 0 when there is none. */
net_address address_of(decoded_part part, std::string_view name);

/** The first part of this name. */
decoded_part part_of(decoded_part part, std::string_view name);

/** Whether there is a field or a part of this name. */
bool has(decoded_part part, std::string_view name);

/** All texts of this name. */
std::vector<std::string_view> texts_of(decoded_part part, std::string_view name);

/** All parts of this name, those inside another one behind it. */
std::vector<decoded_part> parts_of(decoded_part part, std::string_view name);

/** A text of the decoder's as a number; nothing when it is none. */
std::optional<uint64_t> decoded_number(std::string_view text);

/** One message of signalling. A frame may have several, of one protocol or of two. */
struct voice_message {
    voice_protocol protocol;
    int32_t interface;
    int64_t time;     // of the frame in which it ended, microseconds since 1970
    uint32_t up_time; // sysUpTime when that frame passed by
    net_address from;
    net_address to;
    uint16_t from_port;
    uint16_t to_port;
    decoded_part body;
    decoded_part beside; // of mgcp its session description (SDP), of h225_cs its Q.931 header; else empty
};

using take_voice_message = void (*)(void *context, const voice_message &message);

/** Calls take for each message of what the child printed for one frame. False when that is no JSON. */
bool read_messages(
    const char *text, std::size_t size, const voice_message &frame, take_voice_message take, void *context);

/** A frame on its way. */
struct signalling_frame {
    voice_message origin;        // as far as the frame tells
    std::vector<uint8_t> record; // of a pcap file, empty once the child has it
};

struct voice_decoder {
    event_loop *loop = nullptr;
    voice_launcher *launcher = nullptr;
    take_voice_message take = nullptr;
    void *context = nullptr;

    std::deque<signalling_frame> waiting; // the first one may be written in part
    std::size_t waiting_octets = 0;
    std::size_t written = 0;           // of the first one
    std::deque<signalling_frame> sent; // and not answered
    decoder_pipes pipes;
    bool asked = false;              // for a child
    int64_t last_start = 0;          // of now_ms(); 0: never
    int64_t last_sign = 0;           // of the child's life, of now_ms()
    int64_t pause_of_starts = 10000; // milliseconds between two, at least
    int64_t max_silence = 30000;     // milliseconds in which a child that has frames prints something
    std::string output;              // of an object that is not complete
    std::size_t searched = 0;        // octets of it in which there is no end

    uint64_t messages = 0;
    uint64_t dropped = 0;    // frames: no room, or in a child that died
    uint64_t unreadable = 0; // frames whose object is no JSON
    uint64_t starts = 0;     // of a child
    uint64_t told = 0;       // frames lost, dropped or unreadable, of which a line was printed
    int64_t last_told = 0;   // of now_ms()
};

/** The launcher is open, and stays where it is. */
void open_decoder(
    voice_decoder &decoder,
    event_loop &loop,
    voice_launcher &launcher,
    take_voice_message take,
    void *context);

/** Has a frame decoded, of which a copy is taken. The child starts with the first one. The round is that of a
 * file that is read again and again: its connections are others each time. */
void decode_signalling(
    voice_decoder &decoder, int32_t interface, const frame &seen, uint32_t up_time, uint32_t round = 0);

/** Once a second: ends a child that hangs, starts one where one is missed, tells what was lost. */
void tick_decoder(voice_decoder &decoder);

/** Whether frames wait or are in the child. */
bool is_decoding(const voice_decoder &decoder);

/** The oldest frame of an interface that is not decoded yet; null when all are. */
const voice_message *next_undecoded(const voice_decoder &decoder, int32_t interface);

void close_decoder(voice_decoder &decoder);
