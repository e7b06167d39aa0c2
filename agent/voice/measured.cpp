// SPDX-License-Identifier: MIT
#include "agent/voice/measured.h"

#include <cmath>

#include <arpa/inet.h>

namespace {

struct sum_of_streams {
    media_figures figures;
    double jitter = 0; // weighted by packets
};

uint32_t bounded(uint64_t value)
{
    return static_cast<uint32_t>(std::min<uint64_t>(value, UINT32_MAX));
}

void add_stream(void *context, const rtp_figures &stream)
{
    auto &sum = *static_cast<sum_of_streams *>(context);
    media_figures &figures = sum.figures;
    figures.streams++;
    figures.packets = bounded(figures.packets + stream.packets);
    figures.octets = bounded(figures.octets + stream.octets);
    figures.lost = bounded(figures.lost + static_cast<uint64_t>(std::max<int64_t>(stream.lost, 0)));
    sum.jitter += stream.mean_jitter * static_cast<double>(stream.packets);
    figures.round_trip_us = std::max(figures.round_trip_us, stream.round_trip_us);
    figures.last = std::max(figures.last, stream.last);
}

} // namespace

media_figures measured_at(
    const rtp_follower &follower,
    int32_t interface,
    const net_endpoint &to,
    int64_t from_time,
    int64_t to_time)
{
    if (!is_known(to))
        return {};
    sum_of_streams sum;
    streams_to(follower, interface, to.address, to.port, from_time, to_time, add_stream, &sum);
    if (sum.figures.packets > 0)
        sum.figures.jitter =
            static_cast<uint32_t>(std::min(std::round(sum.jitter / sum.figures.packets), 4e9));
    return sum.figures;
}

uint32_t round_trip(const media_figures &one, const media_figures &other)
{
    if (one.round_trip_us == 0 || other.round_trip_us == 0)
        return 0;
    return static_cast<uint32_t>((uint64_t{one.round_trip_us} + other.round_trip_us + 500) / 1000);
}

void put_text(char *field, std::size_t size, std::string_view text)
{
    // A character that is cut is left out: its first octet is not of the form 10xxxxxx.
    if (text.size() >= size) {
        std::size_t end = size - 1;
        while (end > 0 && (static_cast<uint8_t>(text[end]) & 0xc0) == 0x80)
            end--;
        text = text.substr(0, end);
    }
    std::memset(field, 0, size);
    for (std::size_t i = 0; i < text.size(); i++) {
        const auto octet = static_cast<uint8_t>(text[i]);
        field[i] = octet < ' ' || octet == 0x7f ? '?' : text[i];
    }
}

std::string text_of(const net_address &address)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (address.length != 0)
        inet_ntop(address.length == 4 ? AF_INET : AF_INET6, address.bytes, text, sizeof text);
    return text;
}
