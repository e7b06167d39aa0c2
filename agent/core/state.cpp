// SPDX-License-Identifier: MIT
#include "agent/core/state.h"

#include "agent/core/log.h"
#include "agent/core/settings_file.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** A journal that grew beyond these, and beyond twice the settings file, ends with a new file. */
constexpr std::size_t long_journal = 4 * 1024 * 1024;

/** A write that takes as long is a slow one. */
constexpr int64_t slow_disk_ms = 2;

/** With more than these to go to the journal at once, the whole file is written instead. */
constexpr std::size_t max_noted = 1024 * 1024;

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
    const state_part *part; // null where the journal has something else in its place
    const char *file;
    int line;                     // of the file
    std::vector<uint64_t> memory; // the decoded record
    const wire::layout *record;
};

struct file_contents {
    std::set<const state_part *> parts;
    std::vector<kept_record> records;
};

/** Where something is wrong; a line of 0 is none. */
struct file_place {
    const char *file;
    int line;
};

/** Adds a record of the part. False when it is none; what there is of it has to be released as well. */
bool decode_record(
    const state_part &part, const char *file, const settings_record &from, file_contents &contents)
{
    const wire::layout &layout = *part.record;
    kept_record kept{
        &part, file, from.line, std::vector<uint64_t>(layout.size / sizeof(uint64_t) + 1), &layout};
    std::vector<char> bytes = from.bytes;
    XDR xdrs;
    xdrmem_create(&xdrs, bytes.data(), static_cast<u_int>(bytes.size()), XDR_DECODE);
    const bool whole =
        wire::xdr_layout(&xdrs, kept.memory.data(), layout) && XDR_GETPOS(&xdrs) == bytes.size();
    contents.records.push_back(std::move(kept));
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
        if (record.line != damaged
            && !decode_record(*find_part(record.part), settings_name, record, contents))
            return record.line;
    return damaged;
}

/** Where each record with a key stands. */
using record_places = std::map<std::pair<const state_part *, std::string>, std::size_t>;

/** The last record comes in the place of the one with its key, or takes it along. */
void put_last(file_contents &contents, record_places &places, bool gone)
{
    kept_record &last = contents.records.back();
    if (!last.part->key)
        return;
    const auto [place, added] =
        places.try_emplace({last.part, last.part->key(last.memory.data())}, contents.records.size() - 1);
    if (!added)
        contents.records[place->second].part = nullptr;
    place->second = contents.records.size() - 1;
    if (gone)
        last.part = nullptr;
}

/** One line of the journal, of a part alone or with a record. False when it is wrong. */
bool take_line(
    std::string_view name, const settings_record *record, file_contents &contents, record_places &places)
{
    const bool gone = name.starts_with(gone_mark);
    const state_part *part = find_part(gone ? name.substr(1) : name);
    if (!part || (gone && !(record && part->key)))
        return false;
    contents.parts.insert(part);
    if (record) {
        const bool whole = decode_record(*part, journal_name, *record, contents);
        if (whole)
            put_last(contents, places, gone);
        return whole;
    }
    for (kept_record &kept : contents.records)
        if (kept.part == part)
            kept.part = nullptr;
    return true;
}

/** Changes what the settings file has as its journal says. 0, or the number of the line that is wrong. */
int read_journal(const settings_text &lines, file_contents &contents)
{
    record_places places;
    for (std::size_t i = 0; i < contents.records.size(); i++) {
        const kept_record &kept = contents.records[i];
        if (kept.part->key)
            places[{kept.part, kept.part->key(kept.memory.data())}] = i;
    }
    auto record = lines.records.begin();
    for (std::size_t i = 0; i < lines.parts.size(); i++) {
        const bool has_record = record != lines.records.end() && record->line == lines.part_lines[i];
        if (!take_line(lines.parts[i], has_record ? &*record++ : nullptr, contents, places))
            return lines.part_lines[i];
    }
    return 0;
}

/** Restores what the files hold. What was refused. */
file_place take_back(probe &agent, const file_contents &contents)
{
    // What refers to others goes before them, and comes after them.
    const std::span<const state_part> parts = state_parts();
    for (std::size_t i = parts.size(); i-- > 0;)
        if (parts[i].clear && contents.parts.contains(&parts[i]))
            parts[i].clear(agent);
    for (const state_part &part : parts)
        for (const kept_record &kept : contents.records)
            if (kept.part == &part && !part.load(agent, kept.memory.data()))
                return {kept.file, kept.line};
    return {nullptr, 0};
}

/* ---- what is written ------------------------------------------------------------------- */

/** The lines of one part. */
void describe_part(probe &agent, const state_part &part, state_writer &writer)
{
    writer.part = part.name;
    add_part(writer.text, part.name);
    part.save(agent, writer);
}

std::string describe_state(probe &agent)
{
    state_writer writer{"", begin_settings()};
    for (const state_part &part : state_parts())
        describe_part(agent, part, writer);
    end_settings(writer.text);
    return std::move(writer.text);
}

/** The parts that are kept as a whole and are not as they were written. */
std::string changed_parts(probe &agent)
{
    state_store &store = state_store_of(agent);
    std::string changed;
    for (const state_part &part : state_parts()) {
        if (part.key)
            continue;
        state_writer writer{};
        describe_part(agent, part, writer);
        std::string &before = store.small_parts[&part];
        if (writer.text == before)
            continue;
        changed += writer.text;
        before = std::move(writer.text);
    }
    return changed;
}

void forget_noted(state_store &store)
{
    store.noted.clear();
    store.noted_size = 0;
}

/** What was set since the last write, for the journal; empty where that is nothing. */
std::string describe_changes(probe &agent)
{
    state_store &store = state_store_of(agent);
    std::string lines = changed_parts(agent);
    for (const auto &[row, line] : store.noted)
        lines += line;
    forget_noted(store);
    return lines;
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

namespace {

/* ---- the start ------------------------------------------------------------------------- */

void tell_of_foreign_journal(const state_store &store)
{
    say(log_level::warning,
        store.name + "/" + journal_name + " belongs to another settings file: nothing is taken from it");
}

/** Takes back what the files hold, or says what is wrong. */
std::string read_files(probe &agent, const std::string &text, const std::string &journal)
{
    state_store &store = state_store_of(agent);
    const auto path = [&](const char *file) { return store.name + "/" + file; };
    const auto damaged = [&](const char *file, int line) {
        return path(file) + " is damaged in line " + std::to_string(line);
    };
    file_contents contents;
    const auto take = [&]() -> std::string {
        if (const int line = read_lines(text, contents))
            return damaged(settings_name, line);
        journal_text changes;
        int line = take_journal_apart(journal, text, changes);
        if (line == 0 && changes.foreign)
            tell_of_foreign_journal(store);
        else if (line == 0)
            line = read_journal(changes.lines, contents);
        if (line != 0)
            return damaged(journal_name, line);
        store.has_journal = !changes.lines.parts.empty();
        const file_place refused = take_back(agent, contents);
        return refused.line == 0 ? std::string()
                                 : path(refused.file) + " has in line " + std::to_string(refused.line)
                                       + " what can't be set";
    };
    std::string wrong = take();
    for (kept_record &kept : contents.records)
        wire::release_layout(kept.memory.data(), *kept.record);
    return wrong;
}

/* ---- the writes ------------------------------------------------------------------------ */

void begin_write(probe &agent);

void on_due(void *context, void *)
{
    begin_write(*static_cast<probe *>(context));
}

/** Has a write begun behind what is ready in a turn of the loop: all that is set there shares it. */
void ask_for_write(probe &agent, int64_t due = 0)
{
    state_store &store = state_store_of(agent);
    if (store.writing || store.asked)
        return;
    store.asked = true;
    store.begin = call_at(loop_of(agent), due, on_due, &agent, nullptr);
}

/**
 * Tells those who wait, and has written what was set meanwhile. Where the disk is slow, this waits for what
 * the clients that are answered now set next: else those would wait for one write, and the others for the
 * next one, in turns.
 */
void end_write(probe &agent, bool awaited)
{
    state_store &store = state_store_of(agent);
    const int64_t now = grid_ms();
    if (awaited)
        ask_for_write(agent, now - store.began >= slow_disk_ms ? now + 1 : 0);
    if (store.tell)
        store.tell(store.context, store.begun);
}

/** Takes over what became of a write. Whether something was set meanwhile, which waits for the next one. */
bool take_result(probe &agent, disk_work &&work)
{
    state_store &store = state_store_of(agent);
    const bool awaited = store.changed;
    store.writing = false;
    store.journal = work.journal;
    if (work.error != 0) {
        errno = work.error;
        if (!store.failed)
            say(log_level::error, failure("keep the settings in", store.name));
        store.failed = true;
        store.changed = true;
        // Nobody knows what the disk has of the journal.
        store.whole = true;
        store.has_journal = store.has_journal || !work.whole;
        forget_noted(store);
        return awaited;
    }
    store.failed = false;
    if (work.whole) {
        store.written = std::move(work.bytes);
        store.has_journal = false;
        store.journal_size = 0;
        return awaited;
    }
    store.has_journal = true;
    store.journal_size += work.bytes.size();
    if (store.journal_size > long_journal && store.journal_size > 2 * store.written.size())
        store.whole = true;
    return awaited;
}

void on_disk_done(void *context, uint32_t)
{
    auto &agent = *static_cast<probe *>(context);
    const bool awaited = take_result(agent, take_work(*state_store_of(agent).writer));
    end_write(agent, awaited);
}

/** The next thing to do; false when the files hold it all. */
bool next_work(probe &agent, disk_work &work)
{
    state_store &store = state_store_of(agent);
    work.directory = store.directory;
    work.journal = store.journal;
    work.whole = store.whole;
    store.changed = false;
    if (!store.whole) {
        const std::string lines = describe_changes(agent);
        if (lines.empty())
            return false;
        if (store.journal < 0)
            work.bytes = begin_journal(store.written);
        work.bytes += journal_write(lines);
        return true;
    }
    work.bytes = describe_state(agent);
    if (work.bytes == store.written && !store.has_journal)
        return false;
    forget_noted(store);
    store.whole = work.bytes.size() <= small_settings;
    if (!store.whole)
        changed_parts(agent); // as this file has them
    return true;
}

/** The thread is there from the first write on. */
bool has_writer(probe &agent)
{
    state_store &store = state_store_of(agent);
    if (store.writer)
        return true;
    auto writer = std::make_unique<disk_writer>();
    if (!open_writer(*writer))
        return false;
    if (!watch(loop_of(agent), writer->done, EPOLLIN, on_disk_done, &agent)) {
        const int error = errno;
        close_writer(*writer);
        errno = error;
        return false;
    }
    store.writer = std::move(writer);
    return true;
}

void begin_write(probe &agent)
{
    state_store &store = state_store_of(agent);
    store.asked = false;
    store.begun++;
    store.began = grid_ms();
    disk_work work;
    if (!next_work(agent, work)) {
        store.failed = false;
        end_write(agent, false);
    } else if (!has_writer(agent)) {
        work.error = errno;
        take_result(agent, std::move(work));
        end_write(agent, false);
    } else {
        store.writing = true;
        give_work(*store.writer, std::move(work));
    }
}

} // namespace

bool notes_rows(probe &agent)
{
    return !state_store_of(agent).whole;
}

void note_record(probe &agent, const void *record, const wire::layout &layout, bool gone)
{
    state_store &store = state_store_of(agent);
    if (store.whole)
        return;
    const auto part =
        std::ranges::find_if(state_parts(), [&](const state_part &one) { return one.record == &layout; });
    if (part == state_parts().end() || !part->key)
        return; // what is kept as a whole is compared
    const std::string name = gone ? gone_mark + std::string(part->name) : part->name;
    state_writer writer{name.c_str(), {}};
    write_record(writer, record, layout);
    std::string &line = store.noted[{&*part, part->key(record)}];
    store.noted_size += writer.text.size() - line.size();
    line = std::move(writer.text);
    if (store.noted_size <= max_noted)
        return;
    store.whole = true;
    forget_noted(store);
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

    std::string text;
    std::string journal;
    const bool has_file = read_settings(store.directory, settings_name, text);
    if (!has_file && errno != ENOENT)
        return failure("read", directory + "/" + settings_name);
    if (!read_settings(store.directory, journal_name, journal) && errno != ENOENT)
        return failure("read", directory + "/" + journal_name);
    std::string wrong;
    if (has_file)
        wrong = read_files(agent, text, journal);
    else if (!journal.empty())
        tell_of_foreign_journal(store);
    if (wrong.empty())
        store.written = has_file ? std::move(text) : describe_state(agent);
    return wrong;
}

uint64_t save_state(probe &agent)
{
    state_store &store = state_store_of(agent);
    if (!std::exchange(store.set, false) || store.directory < 0)
        return 0;
    store.changed = true;
    ask_for_write(agent);
    return store.begun + 1;
}

void retry_state(probe &agent)
{
    if (state_store_of(agent).failed)
        ask_for_write(agent);
}

void finish_state(probe &agent)
{
    state_store &store = state_store_of(agent);
    while (store.writing)
        on_disk_done(&agent, 0);
    take_back(loop_of(agent), store.begin);
    store.asked = false;
    if (store.directory < 0 || (!store.changed && store.journal < 0))
        return;
    store.whole = true;
    store.begun++;
    disk_work work;
    if (next_work(agent, work)) {
        do_disk_work(work);
        take_result(agent, std::move(work));
    }
    if (store.tell)
        store.tell(store.context, store.begun);
}

void close_state(probe &agent)
{
    state_store &store = state_store_of(agent);
    if (store.writer) {
        unwatch(loop_of(agent), store.writer->done);
        close_writer(*store.writer);
        store.writer.reset();
    }
    for (int *descriptor : {&store.journal, &store.directory}) {
        if (*descriptor >= 0)
            close(*descriptor);
        *descriptor = -1;
    }
}
