/*
 * What survives a restart: everything that a set changed.
 *
 * The agent keeps it as the records with which it could be set again, in one
 * file of the directory that --state names. A call that changed something is
 * answered only when the file holds the change: the whole of it is written to
 * a new file, which is synced and takes the old one's name. So whenever the
 * process ends, the file has either all of a change or nothing of it.
 *
 * What is kept stands in the families, one line each:
 *
 *   keep_rows     a control table with the row-status rules (control_table.h)
 *   keep          anything else, by two functions
 *
 * At the start, the rows that the agent made itself give way to the file's, in
 * each table that the file knows. A row that was valid is made and set to work; if that is
 * refused now (its interface is gone), it stays under creation.
 */
#pragma once

#include "agent/core/reply.h"

#include "rmon/rpc/wire.h"

#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

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

/** All that is kept, in the order in which it is taken back: what a row refers to stands before it. */
std::span<const state_part> state_parts();

/** The directory of --state. */
struct state_store {
    int directory = -1;  // locked: one agent at a time; -1 without --state
    std::string name;    // for messages
    std::string written; // what the file holds
    bool changed = false;
    bool failed = false; // the last write; it has been told
};

/** The probe's. */
state_store &state_store_of(probe &agent);

/**
 * Opens the directory, which is made when it is not there, and takes back what
 * its file holds. An empty text on success, else what is wrong in one line.
 */
std::string open_state(probe &agent, const std::string &directory);

/** Writes the file if something changed since the last time; tells of it on standard error when it cannot. */
void save_state(probe &agent);

void close_state(probe &agent);
