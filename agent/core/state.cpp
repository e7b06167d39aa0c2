#include "agent/core/state.h"

#include "agent/core/settings_file.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char file_name[] = "settings";
constexpr const char new_file_name[] = "settings.new";

/** Of a file that is read; the agent's own stay far below it. */
constexpr std::size_t max_bytes = 64 * 1024 * 1024;

/** Of one record on the wire. */
constexpr std::size_t first_room = 1024;
constexpr std::size_t max_room = 1024 * 1024;

/* ---- reading ------------------------------------------------------------------------ */

const state_part *find_part(std::string_view name)
{
    for (const state_part &part : state_parts())
        if (part.name == name)
            return &part;
    return nullptr;
}

struct kept_record {
    const state_part *part;
    int line;                     // of the file
    std::vector<uint64_t> memory; // the decoded record
};

struct file_contents {
    std::set<const state_part *> parts;
    std::vector<kept_record> records;
};

bool decode_record(const settings_record &from, file_contents &contents)
{
    const state_part *part = find_part(from.part);
    kept_record kept{part, from.line, std::vector<uint64_t>(part->record->size / sizeof(uint64_t) + 1)};
    std::vector<char> bytes = from.bytes;
    XDR xdrs;
    xdrmem_create(&xdrs, bytes.data(), static_cast<u_int>(bytes.size()), XDR_DECODE);
    const bool whole =
        wire::xdr_layout(&xdrs, kept.memory.data(), *part->record) && XDR_GETPOS(&xdrs) == bytes.size();
    contents.records.push_back(std::move(kept)); // a part of a record has to be released as well
    return whole;
}

/** Takes a file apart. 0, or the number of the first line that is wrong. */
int read_lines(std::string_view text, file_contents &contents)
{
    settings_text lines;
    const int damaged = take_settings_apart(text, lines);
    for (std::size_t i = 0; i < lines.parts.size(); i++) {
        const state_part *part = find_part(lines.parts[i]);
        if (!part)
            return lines.part_lines[i];
        contents.parts.insert(part);
    }
    for (const settings_record &record : lines.records)
        if (record.line != damaged && !decode_record(record, contents))
            return record.line;
    return damaged;
}

/** Restores what the file holds. 0, or the number of the line that was refused. */
int take_back(probe &agent, const file_contents &contents)
{
    // What refers to others goes before them, and comes after them.
    const std::span<const state_part> parts = state_parts();
    for (std::size_t i = parts.size(); i-- > 0;)
        if (parts[i].clear && contents.parts.contains(&parts[i]))
            parts[i].clear(agent);
    for (const state_part &part : parts)
        for (const kept_record &kept : contents.records)
            if (kept.part == &part && !part.load(agent, kept.memory.data()))
                return kept.line;
    return 0;
}

/** The whole file; errno ENOENT when there is none. */
bool read_file(int directory, std::string &text)
{
    const int file = openat(directory, file_name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0)
        return false;
    char block[16 * 1024];
    ssize_t count;
    while ((count = read(file, block, sizeof block)) > 0 && text.size() < max_bytes)
        text.append(block, static_cast<std::size_t>(count));
    const int error = errno;
    close(file);
    errno = count < 0 ? error : EFBIG;
    return count == 0;
}

/* ---- writing --------------------------------------------------------------------------- */

std::string describe_state(probe &agent)
{
    state_writer writer{"", begin_settings()};
    for (const state_part &part : state_parts()) {
        writer.part = part.name;
        add_part(writer.text, part.name);
        part.save(agent, writer);
    }
    end_settings(writer.text);
    return std::move(writer.text);
}

bool write_all(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/** False, with errno, when the file could not be replaced; the old one stands then. */
bool replace_file(int directory, std::string_view text)
{
    unlinkat(directory, new_file_name, 0); // of a process that was killed
    const int file =
        openat(directory, new_file_name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0)
        return false;
    const bool written = write_all(file, text) && fsync(file) == 0;
    const int error = errno;
    close(file);
    errno = error;
    return written && renameat(directory, new_file_name, directory, file_name) == 0 && fsync(directory) == 0;
}

std::string failure(const char *what, const std::string &directory)
{
    return std::string("cannot ") + what + " " + directory + ": " + std::strerror(errno);
}

} // namespace

void write_record(state_writer &writer, const void *record, const wire::layout &layout)
{
    static std::vector<char> bytes(first_room);
    for (;;) {
        XDR xdrs;
        xdrmem_create(&xdrs, bytes.data(), static_cast<u_int>(bytes.size()), XDR_ENCODE);
        if (wire::xdr_layout(&xdrs, const_cast<void *>(record), layout)) {
            add_record(writer.text, writer.part, std::span(bytes).first(XDR_GETPOS(&xdrs)));
            return;
        }
        if (bytes.size() >= max_room)
            return;
        bytes.resize(bytes.size() * 4);
    }
}

void release_written(void *record, const wire::layout &layout)
{
    wire::release_layout(record, layout);
}

std::string open_state(probe &agent, const std::string &directory)
{
    state_store &store = state_store_of(agent);
    store.name = directory;
    if (mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
        return failure("make", directory);
    store.directory = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (store.directory < 0)
        return failure("open", directory);
    if (flock(store.directory, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? directory + " is in use by another agent" : failure("lock", directory);

    const std::string path = directory + "/" + file_name;
    std::string text;
    if (read_file(store.directory, text)) {
        file_contents contents;
        const int damaged = read_lines(text, contents);
        const int refused = damaged == 0 ? take_back(agent, contents) : 0;
        for (kept_record &kept : contents.records)
            wire::release_layout(kept.memory.data(), *kept.part->record);
        if (damaged != 0)
            return path + " is damaged in line " + std::to_string(damaged);
        if (refused != 0)
            return path + " has in line " + std::to_string(refused) + " what can't be set";
        store.written = std::move(text);
    } else if (errno == ENOENT) {
        store.written = describe_state(agent);
    } else {
        return failure("read", path);
    }
    return {};
}

void save_state(probe &agent)
{
    state_store &store = state_store_of(agent);
    if (!store.changed || store.directory < 0)
        return;
    std::string text = describe_state(agent);
    if (text != store.written) {
        if (!replace_file(store.directory, text)) {
            if (!store.failed)
                std::fprintf(stderr, "rmon-agent: %s\n", failure("keep the settings in", store.name).c_str());
            store.failed = true;
            return;
        }
        store.written = std::move(text);
    }
    store.changed = false;
    store.failed = false;
}

void close_state(probe &agent)
{
    int &directory = state_store_of(agent).directory;
    if (directory >= 0)
        close(directory);
    directory = -1;
}
