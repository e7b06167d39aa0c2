// SPDX-License-Identifier: MIT
/*
 * Sends the frames of a capture file on an interface, at a steady rate, over
 * and over; says how many there were and how many seconds they took.
 *
 * usage: send_frames INTERFACE FILE RATE SECONDS
 *   RATE  frames a second; 0: as fast as it can
 */

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using seconds = std::chrono::duration<double>;

/** Frames of one system call. */
constexpr unsigned batch = 32;

/** Where the frames of a file in the format of libpcap, of this machine's byte order, stand in it. */
std::vector<iovec> frames_of(std::vector<char> &file)
{
    constexpr std::size_t file_header = 24, frame_header = 16, captured_at = 8;
    std::vector<iovec> frames;
    for (std::size_t at = file_header; at + frame_header <= file.size();) {
        uint32_t captured;
        std::memcpy(&captured, &file[at + captured_at], sizeof captured);
        at += frame_header;
        if (captured > file.size() - at)
            break;
        frames.push_back({&file[at], captured});
        at += captured;
    }
    return frames;
}

/** A socket that sends on an interface past the queue that others share; -1 with errno. */
int open_sender(const char *interface)
{
    const int sender = socket(AF_PACKET, SOCK_RAW, 0);
    sockaddr_ll where{};
    where.sll_family = AF_PACKET;
    where.sll_protocol = htons(ETH_P_ALL);
    where.sll_ifindex = static_cast<int>(if_nametoindex(interface));
    const int yes = 1;
    if (sender < 0 || setsockopt(sender, SOL_PACKET, PACKET_QDISC_BYPASS, &yes, sizeof yes) != 0
        || bind(sender, reinterpret_cast<sockaddr *>(&where), sizeof where) != 0)
        return -1;
    return sender;
}

/** Sends until the time is over; how many frames. Each batch waits for its turn. */
uint64_t send_all(int sender, std::vector<iovec> &frames, double rate, double duration, seconds &taken)
{
    std::array<mmsghdr, batch> messages{};
    const auto began = std::chrono::steady_clock::now();
    uint64_t sent = 0;
    for (std::size_t next = 0;;) {
        taken = std::chrono::steady_clock::now() - began;
        if (taken.count() >= duration)
            return sent;
        if (rate > 0 && static_cast<double>(sent) > taken.count() * rate)
            continue;
        for (mmsghdr &message : messages) {
            message.msg_hdr.msg_iov = &frames[next];
            message.msg_hdr.msg_iovlen = 1;
            next = next + 1 == frames.size() ? 0 : next + 1;
        }
        for (unsigned done = 0; done < batch;) {
            const int more = sendmmsg(sender, &messages[done], batch - done, 0);
            if (more < 0 && errno != ENOBUFS && errno != EAGAIN) {
                std::perror("sendmmsg");
                std::exit(1);
            }
            done += static_cast<unsigned>(std::max(more, 0));
        }
        sent += batch;
    }
}

} // namespace

int main(int count, char **words)
{
    if (count != 5) {
        std::fputs("usage: send_frames INTERFACE FILE RATE SECONDS\n", stderr);
        return 2;
    }
    std::ifstream in(words[2], std::ios::binary);
    std::vector<char> file(std::istreambuf_iterator<char>(in), {});
    std::vector<iovec> frames = frames_of(file);
    const int sender = open_sender(words[1]);
    if (frames.empty() || sender < 0) {
        std::perror(frames.empty() ? words[2] : words[1]);
        return 1;
    }
    seconds taken{};
    const uint64_t sent = send_all(sender, frames, std::atof(words[3]), std::atof(words[4]), taken);
    std::printf("%llu %.6f\n", static_cast<unsigned long long>(sent), taken.count());
    close(sender);
    return 0;
}
