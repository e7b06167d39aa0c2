#include "agent/capture/capture_files.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <ctime>

#include <linux/if.h>
#include <linux/if_arp.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

/** Frames in one go, so that clients get their turn; some milliseconds of work. */
constexpr int frames_in_a_round = 4096;

/** A pause of the recording that is longer is cut to this: the recording's clock was set. */
constexpr int64_t longest_pause = 60 * 60 * int64_t{1000000};

/** Octets; what a file claims beyond is no frame's length. */
constexpr uint32_t longest_frame = 1 << 20;

/** Microseconds between the last frame of a recording and its first one, so that a short one leaves time to
 * others. */
constexpr int64_t pause_of_loop = 1000;

int64_t now_us()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1000000 + now.tv_nsec / 1000;
}

/** Has the file's turn come in so many microseconds: at once with 0. */
void wake_in(capture_file &file, int64_t delay)
{
    delay = std::max<int64_t>(delay, 0);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(delay / 1000000);
    when.it_value.tv_nsec = delay % 1000000 * 1000 + 1; // all zeros would be never
    timerfd_settime(file.timer, 0, &when, nullptr);
}

/** Opens a file that is Ethernet frames. Null, with what is wrong. */
pcap_t *open_file(const std::string &path, std::string &wrong)
{
    char error[PCAP_ERRBUF_SIZE] = "";
    pcap_t *capture = pcap_open_offline(path.c_str(), error); // its message names the file
    if (!capture) {
        wrong = std::string("cannot read a capture: ") + error;
        return nullptr;
    }
    if (pcap_datalink(capture) != DLT_EN10MB) {
        wrong = path + " has no Ethernet frames";
        pcap_close(capture);
        return nullptr;
    }
    return capture;
}

interface interface_of(const std::string &path, int32_t index)
{
    interface link;
    link.index = index;
    link.name = path;
    link.hardware_type = ARPHRD_ETHER;
    link.flags = IFF_UP | IFF_RUNNING;
    link.oper_state = IF_OPER_UP;
    link.mtu = 1500;
    link.file = true;
    return link;
}

/** Reads the next frame. False at the end of the file, or where it is damaged; that is told, and is the end.
 */
bool read_frame(capture_file &file)
{
    pcap_pkthdr *header = nullptr;
    const int result = pcap_next_ex(file.capture, &header, &file.bytes);
    if (result == 1) {
        file.captured = header->caplen;
        file.length = std::clamp(header->len, header->caplen, longest_frame);
        // Stamps of pcapng reach farther than any clock.
        const int64_t seconds = std::clamp<int64_t>(header->ts.tv_sec, 0, UINT32_MAX);
        const int64_t microseconds = std::clamp<int64_t>(header->ts.tv_usec, 0, 999999);
        file.stamp = seconds * 1000000 + microseconds;
        return true;
    }
    if (result == PCAP_ERROR) {
        std::fprintf(stderr, "rmon-agent: %s: %s\n", file.path.c_str(), pcap_geterr(file.capture));
        file.repeat = false;
    }
    return false;
}

void begin_round(capture_file &file)
{
    file.round_began = now_us();
    file.first_stamp = file.stamp;
    if (file.frames == 0)
        file.began = file.round_began;
}

/** Counts as a kernel does for the interfaces that it has. */
void count_link(capture_file &file)
{
    file.frames++;
    file.frames_of_round++;
    link_counters &counters = file.link->counters;
    counters.rx_packets++;
    counters.rx_bytes += file.length;
    if (file.captured > 0 && file.bytes[0] & 1)
        counters.multicast++;
}

/** The end of the file: begins again, or tells of the end. */
void end_round(capture_file &file)
{
    pcap_close(file.capture);
    file.capture = nullptr;
    const bool again = file.repeat && file.frames_of_round > 0;
    if (again) {
        std::string wrong;
        file.capture = open_file(file.path, wrong);
        file.frames_of_round = 0;
        if (file.capture) {
            wake_in(file, file.recorded ? pause_of_loop : 0);
            return;
        }
        std::fprintf(stderr, "rmon-agent: %s\n", wrong.c_str());
    }
    std::fprintf(
        stderr, "rmon-agent: %s ended: %" PRIu64 " frames in %.3f s\n", file.path.c_str(), file.frames,
        static_cast<double>(now_us() - file.began) / 1e6);
}

/** Whether the frame that was read must wait; if so, the timer is set. */
bool must_wait(capture_file &file)
{
    const int64_t due =
        file.round_began + std::clamp<int64_t>(file.stamp - file.first_stamp, 0, INT64_MAX / 2);
    const int64_t delay = due - now_us();
    if (delay <= 0)
        return false;
    if (delay > longest_pause) {
        file.first_stamp += delay - longest_pause;
        wake_in(file, longest_pause);
    } else {
        wake_in(file, delay);
    }
    return true;
}

void on_turn(void *context, uint32_t)
{
    auto &file = *static_cast<capture_file *>(context);
    uint64_t expirations;
    (void)!read(file.timer, &expirations, sizeof expirations);
    if (!file.capture)
        return;

    // Nothing opens or closes a source while frames are counted.
    const auto found = file.sources->rows.find(file.link->index);
    data_source *source = found == file.sources->rows.end() ? nullptr : &found->second;
    for (int i = 0; i < frames_in_a_round; i++) {
        if (!file.waiting && !read_frame(file)) {
            end_round(file);
            return;
        }
        file.waiting = false;
        if (file.frames_of_round == 0)
            begin_round(file);
        if (file.recorded && must_wait(file)) {
            file.waiting = true;
            return;
        }
        count_link(file);
        if (source)
            take_frame(*source, file.bytes, file.captured, file.length, file.stamp);
    }
    wake_in(file, 0);
}

} // namespace

std::string open_capture_files(
    capture_files &files, const file_reading &wanted, source_table &sources, interface_table &interfaces)
{
    for (const std::string &path : wanted.files) {
        std::string wrong;
        pcap_t *capture = open_file(path, wrong);
        if (!capture)
            return wrong;
        capture_file &file = files.emplace_back();
        file.sources = &sources;
        file.path = path;
        file.recorded = wanted.recorded;
        file.repeat = wanted.repeat;
        file.capture = capture;
        const auto index = static_cast<int32_t>(files.size());
        file.link = &interfaces.rows.emplace(index, interface_of(path, index)).first->second;
    }
    return {};
}

bool begin_capture_files(capture_files &files, event_loop &loop)
{
    for (capture_file &file : files) {
        if (file.timer >= 0)
            continue; // reading already
        file.timer = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
        if (file.timer < 0 || !watch(loop, file.timer, EPOLLIN, on_turn, &file))
            return false;
        wake_in(file, 0);
    }
    return true;
}

void close_capture_files(capture_files &files, event_loop &loop)
{
    for (capture_file &file : files) {
        if (file.timer >= 0) {
            unwatch(loop, file.timer);
            close(file.timer);
        }
        if (file.capture)
            pcap_close(file.capture);
    }
    files.clear();
}
