// SPDX-License-Identifier: MIT
/* Datagrams of signalling that have several messages, or came as fragments. */
#include "tests/native/check.h"
#include "tests/native/voice_frames.h"

#include "agent/voice/datagrams.h"

#include <string>
#include <vector>

namespace {

frame decoded(const octets &bytes, int64_t time = 1000000)
{
    frame seen;
    const auto size = static_cast<uint32_t>(bytes.size());
    decode_frame(seen, bytes.data(), size, size + 4, time);
    return seen;
}

/** Payloads of the datagrams that a datagram was parted into. */
std::vector<std::string> parted(const octets &bytes)
{
    std::vector<std::string> texts;
    visit_messages(
        decoded(bytes),
        [](void *list, const frame &one) {
            const std::string text(reinterpret_cast<const char *>(one.payload), one.payload_length);
            check(
                one.from_port == 2427 && one.to_port == 2727 && one.payload_on_wire == text.size()
                    && one.time == 1000000,
                "a message has the ports, the time, and lengths of its own");
            static_cast<std::vector<std::string> *>(list)->push_back(text);
        },
        &texts);
    return texts;
}

std::vector<std::string> parted(const std::string &text)
{
    return parted(udp_frame(20, 2427, 2, 2727, text));
}

/** The same over IPv6, behind a tag and in front of what fills up the frame. */
octets ip6_frame(const octets &ip4, uint8_t filling)
{
    octets made(ip4.begin(), ip4.begin() + 12);
    put_u32(made, 0x81000064);
    put_u16(made, 0x86dd);
    put_u32(made, 0x60000000);
    put_u16(made, static_cast<uint32_t>(ip4.size() - 34));
    put_u16(made, 0x1140);
    for (const uint8_t host : {20, 2}) {
        put_u32(made, 0x20010db8);
        put_u32(made, 0);
        put_u32(made, 0);
        put_u32(made, host);
    }
    made.insert(made.end(), ip4.begin() + 34, ip4.end());
    made.resize(made.size() + filling, '.');
    return made;
}

void test_messages()
{
    const std::string first = "200 1 OK\r\nI: A\r\n\r\nv=0\r\n";
    const std::string second = "CRCX 2 a@b MGCP 1.0\n";
    using texts = std::vector<std::string>;
    check(parted(first) == texts{first}, "one message stays as it is");
    check(parted(first + ".\r\n" + second) == texts{first, second}, "a dot parts two");
    check(parted(first + ".\n" + second + ".\n") == texts{first, second}, "with either end of line");
    check(parted("." + first) == texts{"." + first}, "a dot is a line by itself");
    check(parted("").size() == 1, "an empty datagram is one");
    check(
        parted(ip6_frame(udp_frame(20, 2427, 2, 2727, first + ".\r\n" + second), 9)) == texts{first, second},
        "over IPv6 as well");
    std::string many;
    for (int i = 0; i < 1000; i++)
        many += "x\n.\n";
    const texts all = parted(many);
    check(all.size() == max_mgcp_messages && all.back().size() > 3000, "no datagram is many frames");
}

/** One fragment of a datagram; the first one has its header. */
octets fragment(uint16_t identification, uint16_t offset, bool more, const octets &data)
{
    octets made = frame_of(17, 20, 2, data);
    made[18] = static_cast<uint8_t>(identification >> 8);
    made[19] = static_cast<uint8_t>(identification);
    const int field = (more ? 0x2000 : 0) | offset / 8;
    made[20] = static_cast<uint8_t>(field >> 8);
    made[21] = static_cast<uint8_t>(field);
    return made;
}

/** The same over IPv6, with a header of options in front where it is wanted. */
octets fragment6(uint32_t identification, uint16_t offset, bool more, const octets &data, bool options)
{
    octets packet;
    if (options) {
        put_u32(packet, 0x2c000104); // the fragment's comes next; 4 octets of padding
        put_u32(packet, 0);
    }
    put_u16(packet, 0x1100);
    put_u16(packet, offset | static_cast<uint32_t>(more));
    put_u32(packet, identification);
    packet.insert(packet.end(), data.begin(), data.end());
    octets made = ip6_frame(frame_of(17, 20, 2, packet), 0);
    made[24] = options ? 0 : 44;
    return made;
}

void test_fragments()
{
    const octets header{9, 123, 10, 167, 0, 20, 0, 0, 'C', 'R', 'C', 'X', ' ', '1', ' ', 'a'}; // 2427 to 2727
    const octets rest{'b', 'c', 'd', 'e'};
    check(!identification_of(decoded(frame_of(17, 20, 2, header))), "a whole datagram is no fragment");
    check(!identification_of(decoded(frame_of(6, 20, 2, octets(20)))), "and TCP is none");
    fragmented_datagrams table;
    const auto take = [&](const octets &first, const octets &later, int64_t delay, int32_t interface) {
        const frame one = decoded(first);
        const frame other = decoded(later, 1000000 + delay);
        const auto of_one = identification_of(one);
        const auto of_other = identification_of(other);
        check(of_one && of_other && other.later_fragment && !one.later_fragment, "fragments are known");
        note_fragment(table, 1, one, of_one.value_or(0));
        const datagram_ports *ports = ports_of_fragment(table, interface, other, of_other.value_or(0));
        return ports && ports->from == 2427 && ports->to == 2727;
    };
    check(take(fragment(7, 0, true, header), fragment(7, 16, false, rest), 29000000, 1), "they have ports");
    check(!take(fragment(8, 0, true, header), fragment(9, 16, false, rest), 0, 1), "of their own datagram");
    check(!take(fragment(8, 0, true, header), fragment(8, 16, false, rest), 0, 2), "of their interface");
    check(!take(fragment(8, 0, true, header), fragment(8, 16, false, rest), 31000000, 1), "not for ever");
    for (const bool options : {false, true})
        check(
            take(
                fragment6(0x10007, 0, true, header, options), fragment6(0x10007, 16, false, rest, options), 0,
                1),
            "also of IPv6");
    octets cut = fragment6(1, 16, false, rest, true);
    for (; cut.size() > 14; cut.pop_back())
        identification_of(decoded(octets(cut)));
    for (uint16_t i = 0; i < 3000; i++) {
        const octets bytes = fragment(i, 0, true, header);
        note_fragment(table, 1, decoded(bytes), i);
    }
    check(table.entries.size() == max_fragmented, "first fragments alone grow nothing");
}

} // namespace

void test_datagrams()
{
    test_messages();
    test_fragments();
}
