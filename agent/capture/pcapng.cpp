// SPDX-License-Identifier: MIT
#include "agent/capture/pcapng.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uint32_t section_header = 0x0a0d0d0a; // the same in both byte orders
constexpr uint32_t interface_description = 1;
constexpr uint32_t packet = 2; // of the first years
constexpr uint32_t simple_packet = 3;
constexpr uint32_t enhanced_packet = 6;

constexpr uint32_t byte_order = 0x1a2b3c4d;

/** Of a block: its type and its length in front, its length again behind. */
constexpr uint32_t front = 8;
constexpr uint32_t frame_of_block = 12;

/** Octets of a block that is looked into; others may be as long as they like. */
constexpr uint32_t max_block = 16 * 1024 * 1024;

/** Octets of a frame, as libpcap bounds them. */
constexpr uint32_t max_capture = 262144;

/** Far more interfaces than a real file has. */
constexpr uint32_t max_interfaces = 1000;

constexpr std::size_t octets_at_once = 256 * 1024;

uint32_t number32(const pcapng_file &file, const uint8_t *bytes)
{
    uint32_t value;
    std::memcpy(&value, bytes, sizeof value);
    return file.swapped ? __builtin_bswap32(value) : value;
}

uint16_t number16(const pcapng_file &file, const uint8_t *bytes)
{
    uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return file.swapped ? __builtin_bswap16(value) : value;
}

uint64_t number64(const pcapng_file &file, const uint8_t *bytes)
{
    uint64_t value;
    std::memcpy(&value, bytes, sizeof value);
    return file.swapped ? __builtin_bswap64(value) : value;
}

pcapng_block damaged(pcapng_file &file, std::string why)
{
    file.wrong = std::move(why);
    return pcapng_block::damaged;
}

/** Octets that are there without reading. */
std::size_t waiting(const pcapng_file &file)
{
    return file.end - file.begin;
}

/** Has the buffer hold so many octets from begin on, if the file has them. False with errno 0 at its end. */
bool have(pcapng_file &file, std::size_t octets)
{
    if (waiting(file) >= octets)
        return true;
    if (waiting(file) > 0) // before the first read there is no buffer
        std::memmove(file.buffer.data(), file.buffer.data() + file.begin, waiting(file));
    file.end -= file.begin;
    file.begin = 0;
    if (file.buffer.size() < octets)
        file.buffer.resize(std::max(octets, octets_at_once));
    while (file.end < octets) {
        const ssize_t count =
            read(file.descriptor, file.buffer.data() + file.end, file.buffer.size() - file.end);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            errno = count < 0 ? errno : 0;
            return false;
        }
        file.end += static_cast<std::size_t>(count);
    }
    return true;
}

/** Passes over octets without keeping them. */
bool pass_over(pcapng_file &file, uint64_t octets)
{
    while (octets > 0) {
        if (waiting(file) == 0 && !have(file, 1))
            return false;
        const uint64_t now = std::min<uint64_t>(octets, waiting(file));
        file.begin += now;
        octets -= now;
    }
    return true;
}

/** What ended the reading in the middle of a block. */
pcapng_block cut_off(pcapng_file &file)
{
    return damaged(file, errno ? std::strerror(errno) : "truncated: it ends in a block");
}

/* ---- blocks; body is what stands between a block's two lengths ------------------------- */

struct block_body {
    const uint8_t *bytes;
    uint32_t length;
};

/** Sets the resolution of times from its octet. False when it is finer than a number can tell. */
bool take_resolution(pcapng_interface &to, uint8_t octet)
{
    constexpr uint8_t powers_of_two = 0x80;
    uint32_t exponent = octet & 0x7f;
    const bool binary = octet & powers_of_two;
    if (exponent > (binary ? 63 : 19))
        return false;
    for (to.ticks = 1; exponent > 0; exponent--)
        to.ticks *= binary ? 2 : 10;
    return true;
}

bool take_options(const pcapng_file &file, block_body rest, pcapng_interface &to)
{
    constexpr uint16_t end_of_options = 0, name = 2, speed = 8, resolution = 9, offset = 14;
    while (rest.length >= 4) {
        const uint16_t code = number16(file, rest.bytes);
        const uint16_t length = number16(file, rest.bytes + 2);
        const uint32_t padded = (length + 3u) & ~3u;
        if (code == end_of_options || padded > rest.length - 4)
            break;
        const uint8_t *value = rest.bytes + 4;
        if (code == name)
            to.name.assign(reinterpret_cast<const char *>(value), length);
        else if (code == resolution && length == 1 && !take_resolution(to, *value))
            return false;
        else if (code == offset && length == 8)
            to.offset = static_cast<int64_t>(number64(file, value));
        else if (code == speed && length == 8)
            to.speed = number64(file, value);
        rest.bytes += 4 + padded;
        rest.length -= 4 + padded;
    }
    return true;
}

pcapng_block take_interface(pcapng_file &file, block_body body)
{
    constexpr uint32_t fixed = 8;
    if (body.length < fixed)
        return damaged(file, "a block of an interface is too short");
    if (file.interfaces >= max_interfaces)
        return damaged(file, "too many interfaces");
    pcapng_interface &made = file.of_section.emplace_back();
    made.number = file.interfaces++;
    made.link_type = number16(file, body.bytes);
    made.max_octets = number32(file, body.bytes + 4);
    if (!take_options(file, {body.bytes + fixed, body.length - fixed}, made))
        return damaged(file, "the times of an interface are too fine");
    return pcapng_block::interface;
}

/** Microseconds in so many ticks, which are less than a second's. */
int64_t fraction_of(uint64_t ticks, uint64_t second)
{
    constexpr uint64_t million = 1000000;
    if (ticks <= UINT64_MAX / million)
        return static_cast<int64_t>(ticks * million / second);
    // Of finer ones the product takes more than 64 bits: it is divided while it
    // grows, by the binary digits of the million.
    int64_t quotient = 0;
    uint64_t rest = 0;
    const auto add = [&](uint64_t more) {
        const bool is_whole = rest >= second - more;
        quotient += is_whole;
        rest = is_whole ? rest - (second - more) : rest + more;
    };
    for (uint64_t digit = std::bit_floor(million); digit; digit /= 2) {
        quotient *= 2;
        add(rest);
        if (million & digit)
            add(ticks);
    }
    return quotient;
}

/** Microseconds since 1970 of a time in an interface's ticks. */
int64_t microseconds_of(const pcapng_interface &of, uint64_t time)
{
    constexpr int64_t latest = UINT32_MAX;
    const int64_t fraction = fraction_of(time % of.ticks, of.ticks);
    // Seconds reach farther than any clock.
    const auto seconds = static_cast<int64_t>(std::min<uint64_t>(time / of.ticks, INT64_MAX));
    int64_t moved;
    if (__builtin_add_overflow(seconds, of.offset, &moved))
        moved = latest;
    return std::clamp<int64_t>(moved, 0, latest) * 1000000 + fraction;
}

/** A frame of the section's interface of this number; its octets begin behind so many of the block. */
pcapng_block take_frame(
    pcapng_file &file,
    block_body body,
    uint32_t interface,
    uint32_t fixed,
    uint32_t captured,
    uint32_t length)
{
    if (interface >= file.of_section.size())
        return damaged(file, "a frame is of no interface");
    if (captured > body.length - fixed || captured > max_capture)
        return damaged(file, "a frame is longer than its block");
    file.frame.from = &file.of_section[interface];
    file.frame.bytes = body.bytes + fixed;
    file.frame.captured = captured;
    file.frame.length = length;
    file.frame.time = 0;
    return pcapng_block::frame;
}

pcapng_block take_timed_frame(pcapng_file &file, block_body body, bool old)
{
    constexpr uint32_t fixed = 20;
    if (body.length < fixed)
        return damaged(file, "a block of a frame is too short");
    const uint32_t interface = old ? number16(file, body.bytes) : number32(file, body.bytes);
    const uint64_t time = uint64_t{number32(file, body.bytes + 4)} << 32 | number32(file, body.bytes + 8);
    const pcapng_block taken = take_frame(
        file, body, interface, fixed, number32(file, body.bytes + 12), number32(file, body.bytes + 16));
    if (taken == pcapng_block::frame)
        file.frame.time = microseconds_of(*file.frame.from, time);
    return taken;
}

/** A frame without a time, of the section's first interface; what was captured has no length of its own. */
pcapng_block take_simple_frame(pcapng_file &file, block_body body)
{
    constexpr uint32_t fixed = 4;
    if (body.length < fixed)
        return damaged(file, "a block of a frame is too short");
    const uint32_t length = number32(file, body.bytes);
    uint32_t captured = std::min(length, body.length - fixed);
    if (!file.of_section.empty() && file.of_section[0].max_octets != 0)
        captured = std::min(captured, file.of_section[0].max_octets);
    return take_frame(file, body, 0, fixed, captured, length);
}

/** A section begins: its byte order, which its own length has already. */
pcapng_block begin_section(pcapng_file &file)
{
    if (!have(file, front + 4 + 2))
        return cut_off(file);
    const uint8_t *bytes = file.buffer.data() + file.begin;
    file.swapped = false;
    file.swapped = number32(file, bytes + front) != byte_order;
    if (number32(file, bytes + front) != byte_order)
        return damaged(file, "a section has no byte order");
    if (number16(file, bytes + front + 4) != 1)
        return damaged(file, "a section is of an unknown version");
    file.in_section = true;
    file.of_section.clear();
    return pcapng_block::other;
}

pcapng_block take_block(pcapng_file &file, uint32_t type, block_body body)
{
    switch (type) {
    case interface_description:
        return take_interface(file, body);
    case packet:
        return take_timed_frame(file, body, true);
    case simple_packet:
        return take_simple_frame(file, body);
    case enhanced_packet:
        return take_timed_frame(file, body, false);
    default:
        return pcapng_block::other;
    }
}

bool is_looked_into(uint32_t type)
{
    return type == interface_description || type == packet || type == simple_packet
           || type == enhanced_packet;
}

} // namespace

bool is_pcapng(const std::string &path)
{
    // A pipe gives what it has once; who writes into it must not see it opened and closed.
    struct stat kind;
    if (stat(path.c_str(), &kind) != 0 || !S_ISREG(kind.st_mode))
        return false;
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    uint32_t opening = 0;
    const bool is =
        pread(descriptor, &opening, sizeof opening, 0) == sizeof opening && opening == section_header;
    close(descriptor);
    return is;
}

bool open_pcapng(pcapng_file &file, const std::string &path)
{
    file.descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    return file.descriptor >= 0;
}

pcapng_block read_block(pcapng_file &file)
{
    if (!have(file, front)) {
        if (waiting(file) == 0 && errno == 0)
            return pcapng_block::end;
        return cut_off(file);
    }
    const uint32_t type = number32(file, file.buffer.data() + file.begin);
    if (type == section_header) {
        const pcapng_block begun = begin_section(file);
        if (begun == pcapng_block::damaged)
            return begun;
    } else if (!file.in_section) {
        return damaged(file, "it does not begin with a section");
    }
    const uint32_t length = number32(file, file.buffer.data() + file.begin + 4);
    if (length < frame_of_block || length % 4 != 0)
        return damaged(file, "a block is of an impossible length");

    pcapng_block taken = pcapng_block::other;
    if (is_looked_into(type)) {
        if (length > max_block)
            return damaged(file, "a block is too long");
        if (!have(file, length))
            return cut_off(file);
        const uint8_t *body = file.buffer.data() + file.begin + front;
        if (number32(file, body + length - frame_of_block) != length)
            return damaged(file, "a block's two lengths differ");
        taken = take_block(file, type, {body, length - frame_of_block});
        file.begin += length;
        return taken;
    }
    if (!pass_over(file, length - 4) || !have(file, 4))
        return cut_off(file);
    if (number32(file, file.buffer.data() + file.begin) != length)
        return damaged(file, "a block's two lengths differ");
    file.begin += 4;
    return taken;
}

void rewind_pcapng(pcapng_file &file)
{
    lseek(file.descriptor, 0, SEEK_SET);
    file.begin = file.end = 0;
    file.in_section = false;
    file.interfaces = 0;
    file.of_section.clear();
}

void close_pcapng(pcapng_file &file)
{
    if (file.descriptor >= 0)
        close(file.descriptor);
    file = {};
}
