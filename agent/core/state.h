// SPDX-License-Identifier: MIT
/*
 * What survives a restart: everything that a set changed.
 *
 * The agent keeps it as the records with which it could be set again, in the
 * directory that --state names: in the file `settings`, and where that is long,
 * in a journal of what was set since it was written. A call that changed
 * something is answered only when the disk holds the change. What is set while
 * the disk works waits for the next write, all of it for the same one, and the
 * event loop goes on meanwhile.
 *
 * A file up to small_settings is written anew with each write: to a new file,
 * which is synced and takes the old one's name. A longer one gets a journal,
 * so that a set costs the same however much is set; it is written anew when
 * the journal has grown long, and at the end. So whenever the process ends, the
 * files have either all of a change or nothing of it.
 *
 * What is kept stands in the families, one line each:
 *
 *   keep_rows     a control table with the row-status rules (control_table.h)
 *   keep_each     other rows, by two functions and their key
 *   keep          anything else, by two functions
 *
 * The rows of the first two may be many. What changes one says so, by
 * note_row() or note_gone(), and the journal gets that row. Parts of the third
 * kind go to the journal as a whole, when they are not as they were before.
 *
 * At the start, the rows that the agent made itself give way to the file's, in
 * each table that the file knows. A row that was valid is made and set to work; if that is
 * refused now (its interface is gone), it stays under creation.
 */
#pragma once

#include "agent/core/loop.h"
#include "agent/core/reply.h"
#include "agent/core/settings_disk.h"

#include "rmon/rpc/wire.h"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

struct probe;

/** The file's text while it is put together. */
struct state_writer {
    const char *part;
    std::string text;
};

struct state_part {
    const char *name; // stays the same for ever: files have it
    const wire::layout *record;
    /** Writes each row with write_record(). */
    void (*save)(probe &agent, state_writer &writer);
    /** Takes what is there from the start out of the way of the file's rows. May be null. */
    void (*clear)(probe &agent);
    /** Takes back one row; the record is the caller's. False when it is refused. */
    bool (*load)(probe &agent, const void *record);
    /** What tells a record from the others of the part; null for a part that is kept as a whole. */
    std::string (*key)(const void *record) = nullptr;
};

void write_record(state_writer &writer, const void *record, const wire::layout &layout);

template <class Record> void write_record(state_writer &writer, const Record &record)
{
    write_record(writer, &record, wire::layout_of<Record>);
}

/** Releases what a record that was made for one write points to. */
void release_written(void *record, const wire::layout &layout);

/** Writes a record that was made for it, and releases it. */
template <class Record> void write_made_record(state_writer &writer, Record &&record)
{
    write_record(writer, record);
    release_written(&record, wire::layout_of<std::remove_cvref_t<Record>>);
}

template <class Function> struct second_argument;
template <class Result, class First, class Second> struct second_argument<Result (*)(First, Second)> {
    using type = std::remove_cvref_t<Second>;
};

/**
 * Something that two functions know:
 *
 *   void save(probe &, state_writer &)     calls write_record(writer, record) for each row, or for none
 *   void load(probe &, const Record &)     takes one back; where it may refuse,
 *                                          it returns a status as sets do
 */
template <auto Save, auto Load> constexpr state_part keep(const char *name, void (*clear)(probe &) = nullptr)
{
    using Record = typename second_argument<decltype(Load)>::type;
    return {name, &wire::layout_of<Record>, Save, clear, [](probe &agent, const void *from) {
                const auto &record = *static_cast<const Record *>(from);
                if constexpr (std::is_void_v<decltype(Load(agent, record))>) {
                    Load(agent, record);
                    return true;
                } else {
                    return Load(agent, record) == no_error;
                }
            }};
}

/** Key is what a record is known by: std::string key(const Record &). Its type is no other part's. */
template <auto Save, auto Load, auto Key> constexpr state_part keep_each(const char *name)
{
    state_part part = keep<Save, Load>(name);
    using Record = typename second_argument<decltype(Load)>::type;
    part.key = [](const void *record) { return Key(*static_cast<const Record *>(record)); };
    return part;
}

/** A key of numbers. */
template <class... Number> std::string key_of_numbers(Number... number)
{
    std::string key;
    ((key += std::to_string(number) + ' '), ...);
    return key;
}

/* What changes a row of keep_rows or keep_each, by a set or otherwise, says how it is now. */

void note_record(probe &agent, const void *record, const wire::layout &layout, bool gone);

template <class Record> void note_row(probe &agent, const Record &record)
{
    note_record(agent, &record, wire::layout_of<Record>, false);
}

/** The row with this record's key is gone. */
template <class Record> void note_gone(probe &agent, const Record &record)
{
    note_record(agent, &record, wire::layout_of<Record>, true);
}

/** Of a record that was made for it, which is released. */
template <class Record> void note_made_row(probe &agent, Record &&record)
{
    note_row(agent, record);
    release_written(&record, wire::layout_of<std::remove_cvref_t<Record>>);
}

/** Whether it is of use: where the next write is of the whole file, rows need not be noted. */
bool notes_rows(probe &agent);

/** All that is kept, in the order in which it is taken back: what a row refers to stands before it. */
std::span<const state_part> state_parts();

/** Up to this size the whole file is written each time: the disk's own time is most of it. */
inline constexpr std::size_t small_settings = 64 * 1024;

/** Told which writes ended: those up to this number. */
using on_written = void (*)(void *context, uint64_t number);

/** The directory of --state. */
struct state_store {
    int directory = -1;  // locked: one agent at a time; -1 without --state
    std::string name;    // for messages
    std::string written; // what the settings file holds
    bool set = false;    // since save_state() looked
    bool changed = false;
    bool failed = false; // the last write; it has been told

    /* What goes to the journal. */
    bool whole = true;        // the next write is of the whole file
    bool has_journal = false; // there is more than the settings file
    int journal = -1;         // its descriptor, once this process wrote to it
    std::size_t journal_size = 0;
    std::map<std::pair<const state_part *, std::string>, std::string> noted; // lines, by part and key
    std::size_t noted_size = 0;
    std::map<const state_part *, std::string> small_parts; // as the files have them

    /* The writes: one after the other, each with a number. */
    std::unique_ptr<disk_writer> writer;
    bool writing = false;
    bool asked = false; // for the next one, by begin
    timer begin;
    uint64_t begun = 0;
    int64_t began = 0; // grid_ms() of the last one
    on_written tell = nullptr;
    void *context = nullptr;
};

/** The probe's. */
state_store &state_store_of(probe &agent);
event_loop &loop_of(probe &agent);

/**
 * Opens the directory, which is made when it is not there, and takes back what
 * its file holds. An empty text on success, else what is wrong in one line.
 */
std::string open_state(probe &agent, const std::string &directory);

/**
 * After each call: has written what it set, if it did. The number of the write
 * for which the answer waits, 0 for none. A write that fails counts as well: it
 * is told on standard error, and tried again each second.
 */
uint64_t save_state(probe &agent);

/** Once a second: tries again what could not be written. */
void retry_state(probe &agent);

/** Writes all that is not written, and takes the journal into the settings file. Waits for the disk. */
void finish_state(probe &agent);

void close_state(probe &agent);
