// SPDX-License-Identifier: MIT
/*
 * Writes a capture file of minimum-size frames among 1,000 hosts to standard
 * output, the same each time: IPv4 over Ethernet, a quarter of it tagged, TCP
 * and UDP of a few applications, all DSCPs.
 *
 * usage: make_capture FRAMES > FILE
 */

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t hosts = 1000;
constexpr uint32_t peers = 4;   // of each host
constexpr uint32_t octets = 60; // without the check sequence

struct file_header {
    uint32_t magic = 0xa1b2c3d4;
    uint16_t major = 2;
    uint16_t minor = 4;
    int32_t zone = 0;
    uint32_t accuracy = 0;
    uint32_t snapshot = 65535;
    uint32_t link = 1; // Ethernet
};

struct frame_header {
    uint32_t seconds;
    uint32_t microseconds;
    uint32_t captured;
    uint32_t length;
};

struct writer {
    uint8_t bytes[octets];
    uint32_t used;
};

void put8(writer &to, uint32_t value)
{
    to.bytes[to.used++] = static_cast<uint8_t>(value);
}

void put16(writer &to, uint32_t value)
{
    put8(to, value >> 8);
    put8(to, value);
}

void put32(writer &to, uint32_t value)
{
    put16(to, value >> 16);
    put16(to, value);
}

void put_mac(writer &to, uint32_t host)
{
    put16(to, 0x0200);
    put32(to, host);
}

uint32_t address_of(uint32_t host)
{
    return 10u << 24 | (host / 250) << 8 | (host % 250 + 1);
}

void put_ip(writer &to, uint32_t from, uint32_t dest, uint32_t dscp, uint32_t protocol, uint32_t length)
{
    const uint32_t start = to.used;
    put16(to, 0x4500 | dscp << 2);
    put16(to, length);
    put32(to, 0);
    put16(to, 64 << 8 | protocol);
    put16(to, 0);
    put32(to, address_of(from));
    put32(to, address_of(dest));
    uint32_t sum = 0;
    for (uint32_t i = start; i < to.used; i += 2)
        sum += uint32_t{to.bytes[i]} << 8 | to.bytes[i + 1];
    sum = (sum & 0xffff) + (sum >> 16);
    sum = ~((sum & 0xffff) + (sum >> 16));
    to.bytes[start + 10] = static_cast<uint8_t>(sum >> 8);
    to.bytes[start + 11] = static_cast<uint8_t>(sum);
}

/** The frame of a number: every host sends in turn, to its peers in turn. */
void make_frame(writer &to, uint32_t number)
{
    static constexpr uint32_t ports[] = {80, 443, 25, 22, 53, 161, 123, 5060};
    const uint32_t from = number % hosts;
    const uint32_t round = number / hosts;
    const uint32_t dest = (from + 1 + round % peers) % hosts;
    const uint32_t port = ports[(from + round) % 8];
    const bool udp = port == 53 || port == 161 || port == 123 || port == 5060;

    std::memset(&to, 0, sizeof to);
    put_mac(to, dest);
    put_mac(to, from);
    if (number % 4 == 3) {
        put16(to, 0x8100);
        put16(to, (from % 8) << 13 | (100 + from % 10));
    }
    put16(to, 0x0800);
    put_ip(to, from, dest, (from + round) % 64, udp ? 17 : 6, udp ? 28 : 40);
    put16(to, 40000 + from);
    put16(to, port);
    if (udp) {
        put32(to, 8 << 16);
    } else {
        put32(to, round);
        put32(to, 1);
        put32(to, 0x50102000);
        put32(to, 0);
    }
}

} // namespace

int main(int count, char **words)
{
    const uint32_t frames = count == 2 ? static_cast<uint32_t>(std::strtoul(words[1], nullptr, 10)) : 0;
    if (frames == 0) {
        std::fputs("usage: make_capture FRAMES > FILE\n", stderr);
        return 2;
    }
    const file_header opening;
    std::fwrite(&opening, sizeof opening, 1, stdout);
    for (uint32_t i = 0; i < frames; i++) {
        writer made;
        make_frame(made, i);
        const frame_header header{1700000000 + i / 1000000, i % 1000000, octets, octets};
        std::fwrite(&header, sizeof header, 1, stdout);
        std::fwrite(made.bytes, octets, 1, stdout);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
