// SPDX-License-Identifier: MIT
#include "agent/rmon1/capture_save.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/rmon1/capture_buffers.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <pcap/pcap.h>

namespace {

constexpr std::string_view ending = ".pcap";
constexpr std::size_t max_name = 200;

/** Files of the directory, so that nobody who reaches the agent fills the disk. */
constexpr int max_files = 100;

/** The name of a file that is being written; what is asked for never begins with a dot. */
constexpr const char unfinished[] = ".unfinished";

/** The length up to which a file says that it has packets, where none is longer. */
constexpr uint32_t usual_max_packet = 65535;

bool is_allowed(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || c == '.';
}

int files_in(int directory)
{
    const int again = openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *list = again < 0 ? nullptr : fdopendir(again);
    if (!list) {
        if (again >= 0)
            close(again);
        return max_files;
    }
    int count = 0;
    while (const dirent *entry = readdir(list))
        count += entry->d_name[0] != '.';
    closedir(list);
    return count;
}

bool has_room(int directory, const std::string &name)
{
    struct stat old;
    return fstatat(directory, name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0
           || files_in(directory) < max_files;
}

/** Writes packets of a buffer, of the indexes from first to last, and closes the file. False when it fails.
 */
bool write_packets(FILE *file, const buffer_work &work, int64_t first, int64_t last)
{
    const int64_t oldest = int64_t{work.last_index} - std::ssize(work.packets) + 1;
    const auto packet_of = [&](int64_t index) -> const captured_packet & {
        return work.packets[static_cast<std::size_t>(index - oldest)];
    };
    uint32_t max_packet = usual_max_packet;
    for (int64_t index = first; index <= last; index++)
        max_packet = std::max(max_packet, packet_of(index).stored);
    pcap_t *format = pcap_open_dead(DLT_EN10MB, static_cast<int>(max_packet));
    pcap_dumper_t *dump = format ? pcap_dump_fopen(format, file) : nullptr;
    if (!dump) {
        if (format)
            pcap_close(format);
        std::fclose(file);
        return false;
    }
    std::vector<uint8_t> bytes;
    for (int64_t index = first; index <= last; index++) {
        const captured_packet &packet = packet_of(index);
        bytes.clear();
        copy_packet(work, packet, 0, packet.stored, bytes);
        pcap_pkthdr header{};
        header.ts.tv_sec = packet.time / 1000000;
        header.ts.tv_usec = packet.time % 1000000;
        header.caplen = packet.stored;
        header.len = std::max(packet.length - std::min(packet.length, fcs_octets), packet.stored);
        pcap_dump(reinterpret_cast<u_char *>(dump), &header, bytes.data());
    }
    const bool written = pcap_dump_flush(dump) == 0 && !std::ferror(file);
    pcap_dump_close(dump);
    pcap_close(format);
    return written;
}

bool save(int directory, const std::string &name, const buffer_work &work, int64_t first, int64_t last)
{
    unlinkat(directory, unfinished, 0); // of a process that was killed
    const int descriptor =
        openat(directory, unfinished, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    FILE *file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
    if (!file) {
        if (descriptor >= 0)
            close(descriptor);
        return false;
    }
    if (write_packets(file, work, first, last)
        && renameat(directory, unfinished, directory, name.c_str()) == 0)
        return true;
    unlinkat(directory, unfinished, 0);
    return false;
}

} // namespace

std::string capture_file_name(std::string_view asked)
{
    std::string name(asked.substr(asked.rfind('/') + 1)); // npos + 1 is 0
    if (name.empty())
        return {};
    std::ranges::replace_if(
        name, [](char c) { return !is_allowed(c); }, '_');
    for (std::size_t i = 0; i < name.size() && name[i] == '.'; i++)
        name[i] = '_';
    if (name.ends_with(ending))
        name.resize(name.size() - ending.size());
    name.resize(std::min(name.size(), max_name));
    return name.append(ending);
}

std::string open_captures(probe &agent, const std::string &directory)
{
    if (mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
        return "cannot make " + directory + ": " + std::strerror(errno);
    storage<capture_directory>(agent).descriptor =
        open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (storage<capture_directory>(agent).descriptor < 0)
        return "cannot open " + directory + ": " + std::strerror(errno);
    return {};
}

rmonrpc_capture_save_result_t capture_save_file(probe &agent, const rmonrpc_capture_save_key_t &key)
{
    const std::string name = capture_file_name(text_of(key.fileName));
    const buffer_work *work = find_buffer(agent, signed_index(key.saveValue1));
    if (storage<capture_directory>(agent).descriptor < 0 || name.empty() || key.saveOption != 0 || !work)
        return {};
    const int64_t newest = work->last_index;
    const int64_t oldest = newest - std::ssize(work->packets) + 1;
    const int64_t first = std::max<int64_t>(key.saveValue2, oldest);
    const int64_t last = key.saveValue3 == 0 ? newest : std::min<int64_t>(key.saveValue3, newest);
    if (first > last || !has_room(storage<capture_directory>(agent).descriptor, name)
        || !save(storage<capture_directory>(agent).descriptor, name, *work, first, last))
        return {};
    return {static_cast<uint32_t>(last), static_cast<uint32_t>(last - first + 1)};
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

void close_captures(probe &agent)
{
    if (storage<capture_directory>(agent).descriptor >= 0)
        close(storage<capture_directory>(agent).descriptor);
    storage<capture_directory>(agent).descriptor = -1;
}

constexpr served_procedure procedures[] = {
    serve<capture_save_file>(capture_save_file_1),
};

} // namespace

extern const family capture_save_family = {
    .name = "capture_save",
    .stop = close_captures,
    .procedures = procedures,
};
