// SPDX-License-Identifier: MIT
/*
 * The disk's side of the settings: files are read, replaced and added to here,
 * by a thread of its own, so that the event loop never waits for the disk. It
 * knows descriptors and bytes, and nothing of what they mean.
 */
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include <pthread.h>

inline constexpr const char settings_name[] = "settings";
inline constexpr const char journal_name[] = "settings.journal";

/** Of a file that is read; the agent's own stay far below it. */
inline constexpr std::size_t max_settings = 64 * 1024 * 1024;

/** The whole file; false with errno, ENOENT when there is none. A link in its place is not followed. */
bool read_settings(int directory, const char *name, std::string &text);

/** One thing to do, which is done when all of it is on the disk. */
struct disk_work {
    int directory = -1;
    bool whole = false; // the bytes are the settings file, and its journal ends; else they go to the journal
    std::string bytes;
    int journal = -1; // its descriptor, which a first write opens and a whole file closes
    int error = 0;    // of errno; 0 when it was done
};

/** Does it and waits for the disk. The settings file stands as it was where it could not be replaced. */
void do_disk_work(disk_work &work);

struct disk_writer {
    int done = -1; // eventfd: the work is done
    pthread_t thread{};
    std::mutex mutex;
    std::condition_variable wake;
    disk_work work;     // the thread's while it is given
    bool given = false; // these two under the mutex
    bool ended = false;
};

/** Starts the thread. False, with errno, when there is none to be had. */
bool open_writer(disk_writer &writer);

/** Has one thing done; none may be under way. */
void give_work(disk_writer &writer, disk_work &&work);

/** Takes it back. Waits where `done` was not told yet. */
disk_work take_work(disk_writer &writer);

/** Ends the thread; nothing may be under way. */
void close_writer(disk_writer &writer);
