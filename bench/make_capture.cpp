// SPDX-License-Identifier: MIT
/*
 * Writes a capture file of minimum-size frames to standard output, the same
 * each time: IPv4 over Ethernet, a quarter of it tagged, TCP and UDP of a few
 * applications.
 *
 *   turns HOSTS      each host sends in turn, to its peers in turn, with all DSCPs
 *   zipf HOSTS       a host sends the more the lower its number (Zipf's law), to one of its
 *                    peers, of an application and a DSCP that the pair always has
 *   uniform HOSTS    sender, receiver, application and DSCP are each as likely as all others
 *
 * usage: make_capture FRAMES [turns|zipf|uniform HOSTS] > FILE
 *   Without more, 1,000 hosts send in turn.
 */

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>
#include <vector>

namespace {

constexpr uint32_t usual_hosts = 1000;
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

/** What one frame is of. */
struct exchange {
    uint32_t from;
    uint32_t dest;
    uint32_t application; // which of the ports
    uint32_t dscp;
    uint32_t sequence;
    bool tagged;
};

/** Every host sends in turn, to its peers in turn. */
exchange in_turn(uint32_t number, uint32_t hosts)
{
    const uint32_t from = number % hosts;
    const uint32_t round = number / hosts;
    return {
        from,           (from + 1 + round % peers) % hosts, (from + round) % 8, (from + round) % 64, round,
        number % 4 == 3};
}

/** Chances: the host of a rank sends as often as the inverse of the rank, counted from 1 on, says. */
struct zipf {
    std::vector<double> sums;
    std::mt19937_64 random{1};

    explicit zipf(uint32_t hosts)
    {
        double sum = 0;
        for (uint32_t rank = 1; rank <= hosts; rank++)
            sums.push_back(sum += 1.0 / rank);
    }
};

/** From 0 to below 1; the library's distributions are not the same everywhere. */
double fraction(std::mt19937_64 &random)
{
    return static_cast<double>(random() >> 11) / 9007199254740992.0;
}

exchange by_rank(uint32_t number, zipf &chances)
{
    const auto hosts = static_cast<uint32_t>(chances.sums.size());
    const double drawn = fraction(chances.random) * chances.sums.back();
    const auto found = std::upper_bound(chances.sums.begin(), chances.sums.end() - 1, drawn);
    const auto from = static_cast<uint32_t>(found - chances.sums.begin());
    const auto peer = static_cast<uint32_t>(chances.random() % peers);
    const uint32_t application = (from + peer) % 8;
    return {from, (from + 1 + peer) % hosts, application, application * 8, number, from % 4 == 3};
}

exchange at_random(uint32_t number, uint32_t hosts, std::mt19937_64 &random)
{
    const uint64_t drawn = random();
    const auto from = static_cast<uint32_t>(drawn % hosts);
    const auto dest = static_cast<uint32_t>(random() % hosts);
    return {from,   dest,         static_cast<uint32_t>(drawn >> 61), static_cast<uint32_t>(drawn >> 55) & 63,
            number, from % 4 == 3};
}

void make_frame(writer &to, const exchange &of)
{
    static constexpr uint32_t ports[] = {80, 443, 25, 22, 53, 161, 123, 5060};
    const uint32_t port = ports[of.application];
    const bool udp = port == 53 || port == 161 || port == 123 || port == 5060;

    std::memset(&to, 0, sizeof to);
    put_mac(to, of.dest);
    put_mac(to, of.from);
    if (of.tagged) {
        put16(to, 0x8100);
        put16(to, (of.from % 8) << 13 | (100 + of.from % 10));
    }
    put16(to, 0x0800);
    put_ip(to, of.from, of.dest, of.dscp, udp ? 17 : 6, udp ? 28 : 40);
    put16(to, 40000 + of.from % 20000);
    put16(to, port);
    if (udp) {
        put32(to, 8 << 16);
    } else {
        put32(to, of.sequence);
        put32(to, 1);
        put32(to, 0x50102000);
        put32(to, 0);
    }
}

} // namespace

int main(int count, char **words)
{
    const auto number = [&](int at) { return static_cast<uint32_t>(std::strtoul(words[at], nullptr, 10)); };
    const uint32_t frames = count == 2 || count == 4 ? number(1) : 0;
    const std::string_view kind = count == 4 ? words[2] : "turns";
    const uint32_t hosts = count == 4 ? number(3) : usual_hosts;
    if (frames == 0 || hosts == 0 || (kind != "turns" && kind != "zipf" && kind != "uniform")) {
        std::fputs("usage: make_capture FRAMES [turns|zipf|uniform HOSTS] > FILE\n", stderr);
        return 2;
    }
    const file_header opening;
    std::fwrite(&opening, sizeof opening, 1, stdout);
    zipf chances(kind == "zipf" ? hosts : 1);
    for (uint32_t i = 0; i < frames; i++) {
        const exchange of = kind == "zipf"      ? by_rank(i, chances)
                            : kind == "uniform" ? at_random(i, hosts, chances.random)
                                                : in_turn(i, hosts);
        writer made;
        make_frame(made, of);
        const frame_header header{1700000000 + i / 1000000, i % 1000000, octets, octets};
        std::fwrite(&header, sizeof header, 1, stdout);
        std::fwrite(made.bytes, octets, 1, stdout);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
