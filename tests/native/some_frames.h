// SPDX-License-Identifier: MIT
/* Frames of many kinds, by chance and yet the same in each run. */
#pragma once

#include <cstdint>
#include <random>
#include <vector>

using octets = std::vector<uint8_t>;

/** Numbers from 0 to below an end, the same in each run. */
struct chances {
    std::mt19937_64 random{20261};

    uint32_t below(uint32_t end) { return static_cast<uint32_t>(random() % end); }
    bool one_in(uint32_t number) { return below(number) == 0; }
};

/** What frames differ in. */
struct traffic {
    uint32_t hosts;
    bool odd = true; // also frames of bad length, ARP, neighbour discovery, addresses that move
};

/** Appends a number in network order. */
void put(octets &to, uint64_t value, uint32_t bytes);

/** Appends a host's address: each number is another one. */
void put_mac(octets &to, uint32_t host);
void put_ip4(octets &to, uint32_t host);

/** A frame with its header, tags and payload as far as a capture has them. */
octets some_frame(chances &by, const traffic &of);
