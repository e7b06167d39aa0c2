// SPDX-License-Identifier: MIT
/* The follower of RTP, and tshark: what both tell of the same packets. */
#include "tests/native/check.h"
#include "tests/native/rtp_frames.h"

#include "agent/voice/rtp.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

/** Numbers that look like chance and are the same each time. */
uint32_t next_number(uint32_t &state)
{
    state = state * 1664525 + 1013904223;
    return state >> 16;
}

struct sent_frame {
    int64_t time;
    octets bytes;
};

constexpr uint32_t reordered_streams = 20; // of those that are compared, the first ones
constexpr uint32_t compared_streams = 40;

/**
 * 400 packets with losses, jitter, copies and another order here and there. The
 * first ones, the last ones and those around 65535 are as they were sent: tshark
 * takes another order there for losses.
 */
std::vector<sent_frame> damaged_stream(uint32_t ssrc)
{
    std::vector<sent_frame> all;
    uint32_t state = ssrc;
    const path way{{10, 0, 0, 1}, {10, 0, 0, 2}, 5000, static_cast<uint16_t>(6000 + ssrc)};
    for (uint32_t i = 0; i < 400; i++) {
        const bool inside = (i > 3 && i < 130) || (i > 140 && i < 396);
        const packet one{0, static_cast<uint16_t>(65400 + i), i * 160, 0, ssrc};
        int64_t time = start + i * 20000 + next_number(state) % 9000;
        if (inside && next_number(state) % 20 == 0)
            continue;
        if (inside && next_number(state) % 20 == 0 && ssrc <= reordered_streams)
            time += 25000;
        all.push_back({time, ethernet(way, rtp(one))});
        if (inside && next_number(state) % 30 == 0)
            all.push_back({time + 1000, all.back().bytes});
    }
    return all;
}

void little(FILE *file, uint32_t value)
{
    for (int i = 0; i < 4; i++)
        fputc(static_cast<int>(value >> 8 * i & 255), file);
}

void write_capture(const std::string &path, const std::vector<sent_frame> &frames)
{
    FILE *file = fopen(path.c_str(), "wb");
    check(file != nullptr, "a capture can be written");
    if (!file)
        return;
    for (const uint32_t word : {0xa1b2c3d4u, 0x00040002u, 0u, 0u, 65535u, 1u})
        little(file, word);
    for (const sent_frame &one : frames) {
        little(file, static_cast<uint32_t>(one.time / 1000000));
        little(file, static_cast<uint32_t>(one.time % 1000000));
        little(file, static_cast<uint32_t>(one.bytes.size()));
        little(file, static_cast<uint32_t>(one.bytes.size()));
        fwrite(one.bytes.data(), 1, one.bytes.size(), file);
    }
    fclose(file);
}

/** Whether tshark leaves a packet out of the jitter when a later one overtook it, as it does from 4.4 on. */
bool leaves_out_overtaken()
{
    int major = 0, minor = 0;
    FILE *told = popen("tshark --version 2>/dev/null", "r");
    char line[1000];
    if (told && fgets(line, sizeof line, told))
        check(sscanf(line, "TShark (Wireshark) %d.%d", &major, &minor) == 2, "tshark tells its version");
    if (told)
        pclose(told);
    return major > 4 || (major == 4 && minor >= 4);
}

} // namespace

void test_rtp_like_tshark()
{
    const uint32_t of_another_jitter = leaves_out_overtaken() ? reordered_streams : 0;
    std::vector<sent_frame> frames;
    for (uint32_t ssrc = 1; ssrc <= compared_streams; ssrc++) {
        const auto more = damaged_stream(ssrc);
        frames.insert(frames.end(), more.begin(), more.end());
    }
    std::ranges::stable_sort(frames, {}, &sent_frame::time);
    rtp_follower follower;
    for (const sent_frame &one : frames)
        send(follower, one.bytes, one.time);

    char path[] = "/tmp/rmon-rtp-XXXXXX";
    const int descriptor = mkstemp(path);
    check(descriptor >= 0, "there is a temporary file");
    if (descriptor < 0)
        return;
    close(descriptor);
    write_capture(path, frames);
    const std::string command =
        "tshark -n -o rtp.heuristic_rtp:TRUE -q -z rtp,streams -r " + std::string(path) + " 2>/dev/null";
    FILE *told = popen(command.c_str(), "r");
    char line[1000];
    uint32_t compared = 0;
    while (told && fgets(line, sizeof line, told)) {
        unsigned int to_port, ssrc;
        unsigned long packets;
        long lost;
        double mean, highest;
        // Columns: times, from, to, SSRC, codec, packets, lost, deltas (3), jitters (3).
        if (sscanf(
                line, " %*f %*f %*s %*u %*s %u 0x%x %*s %lu %ld (%*f%%) %*f %*f %*f %*f %lf %lf", &to_port,
                &ssrc, &packets, &lost, &mean, &highest)
            != 6)
            continue;
        const ::path way{{10, 0, 0, 1}, {10, 0, 0, 2}, 5000, static_cast<uint16_t>(to_port)};
        const rtp_figures ours = only(follower, "a stream that tshark tells of", way);
        const std::string which = " of stream " + std::to_string(ssrc) + " as tshark counts";
        check(ours.ssrc == ssrc && ours.packets == packets, "packets" + which);
        check(ours.lost == lost, "losses" + which);
        compared++;
        if (ssrc <= of_another_jitter)
            continue;
        // It tells thousandths.
        check(std::abs(ours.mean_jitter - mean) < 0.0006, "mean jitter" + which);
        check(std::abs(ours.max_jitter - highest) < 0.0006, "greatest jitter" + which);
    }
    if (told)
        pclose(told);
    unlink(path);
    check(compared == compared_streams, "tshark told of " + std::to_string(compared) + " streams");
}
