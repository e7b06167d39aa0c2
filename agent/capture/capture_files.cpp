// SPDX-License-Identifier: MIT
#include "agent/capture/capture_files.h"

#include "agent/core/log.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include <linux/if.h>
#include <linux/if_arp.h>
#include <stdio_ext.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

/** Frames in one go, so that clients get their turn; some milliseconds of work. */
constexpr int frames_in_a_round = 4096;

/** A pause of the recording that is longer is cut to this: the recording's clock was set. */
constexpr int64_t max_pause = 60 * 60 * int64_t{1000000};

/** Octets of the longest frame; longer claims are cut to it. */
constexpr uint32_t max_frame = 1 << 20;

/** Microseconds between the last frame of a recording and its first one, so that a short one leaves time to
 * others. */
constexpr int64_t pause_of_loop = 1000;

/** The same for who goes by the frames' times: long enough for whatever one round left open to be over in the
 * next. */
constexpr int64_t time_between_rounds = 10 * 60 * int64_t{1000000};

/** How far such times reach: files may have any. */
constexpr int64_t last_time = INT64_MAX / 4;

int64_t now_us()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1000000 + now.tv_nsec / 1000;
}

/** Schedules the file's next turn, in microseconds from now. */
void wake_in(capture_file &file, int64_t delay)
{
    delay = std::max<int64_t>(delay, 0);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(delay / 1000000);
    when.it_value.tv_nsec = delay % 1000000 * 1000 + 1; // a time of zeros would stop the timer
    timerfd_settime(file.timer, 0, &when, nullptr);
}

bool is_ethernet(const pcapng_interface &iface)
{
    return iface.link_type == DLT_EN10MB;
}

/**
 * Opens a pcapng file, which is looked through for its interfaces: they may
 * come behind frames. What is damaged is told when the reading gets there.
 */
std::string open_blocks(capture_file &file, std::vector<pcapng_interface> &found)
{
    if (!open_pcapng(file.blocks, file.path))
        return "cannot read a capture: " + file.path + ": " + std::strerror(errno);
    pcapng_block next;
    while ((next = read_block(file.blocks)) != pcapng_block::end && next != pcapng_block::damaged)
        if (next == pcapng_block::interface)
            found.push_back(file.blocks.of_section.back());
    if (next == pcapng_block::damaged && found.empty())
        return "cannot read a capture: " + file.path + ": " + file.blocks.wrong;
    if (std::ranges::none_of(found, is_ethernet))
        return file.path + " has no Ethernet frames";
    rewind_pcapng(file.blocks);
    file.reading = true;
    return {};
}

/** Octets that are read at once. By a page, as a stream does by itself, the kernel takes a third of the time;
 * much more would leave the processor's cache. */
constexpr std::size_t read_at_once = 64 * 1024;

/** The stream of a file, by which libpcap reads it; null, with errno, when it can't be opened. */
std::FILE *open_stream(capture_file &file)
{
    std::FILE *stream = file.path == "-" ? stdin : std::fopen(file.path.c_str(), "rbe");
    if (!stream)
        return nullptr;
    file.buffer.resize(read_at_once);
    (void)!std::setvbuf(stream, file.buffer.data(), _IOFBF, file.buffer.size());
    __fsetlocking(stream, FSETLOCKING_BYCALLER); // no other thread has it
    return stream;
}

/** Opens a file of any other form, with Ethernet frames. An empty text, or what is wrong. */
std::string open_capture(capture_file &file)
{
    std::FILE *stream = open_stream(file);
    if (!stream)
        return "cannot read a capture: " + file.path + ": " + std::strerror(errno);
    char error[PCAP_ERRBUF_SIZE] = "";
    file.capture = pcap_fopen_offline(stream, error);
    if (!file.capture) {
        (void)!std::fclose(stream);
        return "cannot read a capture: " + file.path + ": " + error;
    }
    if (pcap_datalink(file.capture) != DLT_EN10MB)
        return file.path + " has no Ethernet frames";
    file.reading = true;
    return {};
}

void close_capture(capture_file &file)
{
    if (file.capture)
        pcap_close(file.capture);
    file.capture = nullptr;
    close_pcapng(file.blocks);
    file.reading = false;
}

interface interface_of(const std::string &name, int32_t index, const pcapng_interface &of)
{
    interface iface;
    iface.index = index;
    iface.name = name;
    iface.hardware_type = is_ethernet(of) ? ARPHRD_ETHER : ARPHRD_NONE;
    iface.flags = IFF_UP | IFF_RUNNING;
    iface.oper_state = IF_OPER_UP;
    iface.mtu = 1500;
    iface.file = true;
    iface.file_speed = of.speed;
    return iface;
}

/** One of several interfaces of a file: by its place, and by its name if that can be read. */
std::string name_of(const std::string &path, const pcapng_interface &iface)
{
    std::string name = path + "#" + std::to_string(iface.number + 1);
    const auto is_printable = [](char c) { return c > ' ' && c <= '~'; };
    if (!iface.name.empty() && std::ranges::all_of(iface.name, is_printable))
        name += " " + iface.name;
    return name;
}

enum class next_frame { there, skipped, none };

/** Reports damage, at which the file ends. */
next_frame tell_damage(capture_file &file, const char *what)
{
    say(log_level::error, file.path + ": " + what);
    file.repeat = false;
    return next_frame::none;
}

next_frame read_next_block(capture_file &file)
{
    switch (read_block(file.blocks)) {
    case pcapng_block::frame:
        break;
    case pcapng_block::end:
        return next_frame::none;
    case pcapng_block::damaged:
        return tell_damage(file, file.blocks.wrong.c_str());
    case pcapng_block::interface:
    case pcapng_block::other:
        return next_frame::skipped;
    }
    const pcapng_frame &frame = file.blocks.frame;
    if (!is_ethernet(*frame.from)) {
        file.skipped++;
        return next_frame::skipped;
    }
    if (frame.from->number >= file.interfaces.size())
        return tell_damage(file, "it has changed since the start");
    file.from = frame.from->number;
    file.bytes = frame.bytes;
    file.captured = frame.captured;
    file.length = std::clamp(frame.length, frame.captured, max_frame);
    file.stamp = frame.time;
    return next_frame::there;
}

/** Reads the next frame. None at the end of the file, or where it is damaged. */
next_frame read_frame(capture_file &file)
{
    if (!file.capture)
        return read_next_block(file);
    pcap_pkthdr *header = nullptr;
    const int result = pcap_next_ex(file.capture, &header, &file.bytes);
    if (result == PCAP_ERROR)
        return tell_damage(file, pcap_geterr(file.capture));
    if (result != 1)
        return next_frame::none;
    file.captured = header->caplen;
    file.length = std::clamp(header->len, header->caplen, max_frame);
    // Stamps of pcapng reach farther than any clock.
    const int64_t seconds = std::clamp<int64_t>(header->ts.tv_sec, 0, UINT32_MAX);
    const int64_t microseconds = std::clamp<int64_t>(header->ts.tv_usec, 0, 999999);
    file.stamp = seconds * 1000000 + microseconds;
    return next_frame::there;
}

void begin_round(capture_file &file)
{
    file.round_began = now_us();
    file.first_stamp = file.stamp;
    if (file.frames == 0)
        file.began = file.round_began;
}

/** Counts as a kernel does for the interfaces that it has. */
void count_interface(capture_file &file)
{
    file.frames++;
    file.frames_of_round++;
    const int64_t time = std::clamp<int64_t>(file.stamp, 0, last_time);
    file.oldest = std::min(file.oldest, time);
    file.newest = std::max(file.newest, time);
    kernel_counters &counters = file.interfaces[file.from]->counters;
    counters.rx_packets++;
    counters.rx_bytes += file.length;
    if (file.captured > 0 && file.bytes[0] & 1)
        counters.multicast++;
}

/** Back to the beginning of the file. False, after a report, when that is not possible. */
bool begin_again(capture_file &file)
{
    if (!file.capture) {
        rewind_pcapng(file.blocks);
        return true;
    }
    close_capture(file);
    const std::string wrong = open_capture(file);
    if (wrong.empty())
        return true;
    say(log_level::error, wrong);
    return false;
}

/** How many frames there were, how long they took, and what was left out. */
void tell_end(const capture_file &file)
{
    std::string line = file.path + " ended: " + std::to_string(file.frames) + " frames";
    if (file.frames > 0) {
        char duration[40];
        std::snprintf(
            duration, sizeof duration, " in %.3f s", static_cast<double>(now_us() - file.began) / 1e6);
        line += duration;
    }
    if (file.skipped > 0)
        line += ", " + std::to_string(file.skipped) + " skipped that are not Ethernet's";
    say(log_level::info, line);
}

/** The next round's times go on behind those of this one. */
void move_on(capture_file &file)
{
    if (file.later < last_time)
        file.later += file.newest - file.oldest + time_between_rounds;
}

/** The end of the file: begins again, or tells of the end. */
void end_round(capture_file &file)
{
    const bool again = file.repeat && file.frames_of_round > 0;
    file.frames_of_round = 0;
    if (again && begin_again(file)) {
        move_on(file);
        wake_in(file, file.recorded ? pause_of_loop : 0);
        return;
    }
    close_capture(file);
    settle(file.sources->late); // while nobody waits
    tell_end(file);
}

/** Who counts the frames of this turn. Nothing opens or closes a source meanwhile. */
void find_counted(capture_file &file)
{
    file.counted.clear();
    for (const interface *iface : file.interfaces) {
        const auto found = file.sources->rows.find(iface->index);
        file.counted.push_back(found == file.sources->rows.end() ? nullptr : &found->second);
        if (file.counted.back())
            file.counted.back()->later = file.later;
    }
}

/** Whether the frame that was read must wait; if so, the timer is set. */
bool must_wait(capture_file &file)
{
    const int64_t due =
        file.round_began + std::clamp<int64_t>(file.stamp - file.first_stamp, 0, INT64_MAX / 2);
    const int64_t delay = due - now_us();
    if (delay <= 0)
        return false;
    if (delay > max_pause) {
        file.first_stamp += delay - max_pause;
        wake_in(file, max_pause);
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
    if (!file.reading)
        return;

    find_counted(file);
    for (int i = 0; i < frames_in_a_round; i++) {
        const next_frame next = file.waiting ? next_frame::there : read_frame(file);
        if (next == next_frame::none) {
            end_round(file);
            return;
        }
        if (next == next_frame::skipped)
            continue;
        file.waiting = false;
        if (file.frames_of_round == 0)
            begin_round(file);
        if (file.recorded && must_wait(file)) {
            file.waiting = true;
            return;
        }
        count_interface(file);
        if (data_source *source = file.counted[file.from])
            take_frame(*source, file.bytes, file.captured, file.length, file.stamp);
    }
    wake_in(file, 0);
}

} // namespace

std::string open_capture_files(
    capture_files &files, const file_reading &wanted, source_table &sources, interface_table &interfaces)
{
    for (const std::string &path : wanted.files) {
        capture_file &file = files.emplace_back();
        file.sources = &sources;
        file.path = path;
        file.recorded = wanted.recorded;
        file.repeat = wanted.repeat;
        std::vector<pcapng_interface> found;
        const bool in_blocks = is_pcapng(path);
        std::string wrong = in_blocks ? open_blocks(file, found) : open_capture(file);
        if (!wrong.empty())
            return wrong;
        if (found.empty())
            found.emplace_back().link_type = DLT_EN10MB;
        for (const pcapng_interface &iface : found) {
            const auto index = static_cast<int32_t>(interfaces.rows.size() + 1);
            const std::string name = found.size() == 1 ? path : name_of(path, iface);
            file.interfaces.push_back(
                &interfaces.rows.emplace(index, interface_of(name, index, iface)).first->second);
        }
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
        close_capture(file);
    }
    files.clear();
}
