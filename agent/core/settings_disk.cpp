// SPDX-License-Identifier: MIT
#include "agent/core/settings_disk.h"

#include <cerrno>
#include <cstdint>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr const char new_name[] = "settings.new";

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

/** Makes a file that only its owner reads, in the place of one that a killed process left. */
int make_file(int directory, const char *name)
{
    unlinkat(directory, name, 0);
    return openat(directory, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
}

/** False, with errno, when the file could not be replaced; the old one stands then. */
bool replace_file(int directory, std::string_view text)
{
    const int file = make_file(directory, new_name);
    if (file < 0)
        return false;
    const bool written = write_all(file, text) && fsync(file) == 0;
    const int error = errno;
    close(file);
    errno = error;
    return written && renameat(directory, new_name, directory, settings_name) == 0 && fsync(directory) == 0;
}

void end_journal(disk_work &work)
{
    if (work.journal >= 0)
        close(work.journal);
    work.journal = -1;
    unlinkat(work.directory, journal_name, 0);
}

/** False, with errno, when the bytes may not be there after a power cut. */
bool add_to_journal(disk_work &work)
{
    const bool first = work.journal < 0;
    if (first)
        work.journal = make_file(work.directory, journal_name);
    return work.journal >= 0 && write_all(work.journal, work.bytes) && fdatasync(work.journal) == 0
           && (!first || fsync(work.directory) == 0);
}

void *write_on(void *context)
{
    auto &writer = *static_cast<disk_writer *>(context);
    std::unique_lock lock(writer.mutex);
    for (;;) {
        writer.wake.wait(lock, [&] { return writer.given || writer.ended; });
        if (!writer.given)
            return nullptr;
        lock.unlock();
        do_disk_work(writer.work);
        lock.lock();
        writer.given = false;
        eventfd_write(writer.done, 1);
    }
}

} // namespace

bool read_settings(int directory, const char *name, std::string &text)
{
    const int file = openat(directory, name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0)
        return false;
    char block[16 * 1024];
    ssize_t count;
    while ((count = read(file, block, sizeof block)) > 0 && text.size() < max_settings)
        text.append(block, static_cast<std::size_t>(count));
    const int error = errno;
    close(file);
    errno = count < 0 ? error : EFBIG;
    return count == 0;
}

void do_disk_work(disk_work &work)
{
    const bool done = work.whole ? replace_file(work.directory, work.bytes) : add_to_journal(work);
    work.error = done ? 0 : errno;
    // All that the journal has is in the file now. A kill before this leaves one that belongs to another
    // file.
    if (done && work.whole)
        end_journal(work);
}

bool open_writer(disk_writer &writer)
{
    writer.done = eventfd(0, EFD_CLOEXEC);
    if (writer.done < 0)
        return false;
    const int error = pthread_create(&writer.thread, nullptr, write_on, &writer);
    if (error == 0)
        return true;
    close(writer.done);
    writer.done = -1;
    errno = error;
    return false;
}

void give_work(disk_writer &writer, disk_work &&work)
{
    const std::scoped_lock lock(writer.mutex);
    writer.work = std::move(work);
    writer.given = true;
    writer.wake.notify_one();
}

disk_work take_work(disk_writer &writer)
{
    eventfd_t count;
    while (eventfd_read(writer.done, &count) != 0 && errno == EINTR)
        ;
    const std::scoped_lock lock(writer.mutex); // the thread let go of it before
    return std::move(writer.work);
}

void close_writer(disk_writer &writer)
{
    if (writer.done < 0)
        return;
    {
        const std::scoped_lock lock(writer.mutex);
        writer.ended = true;
        writer.wake.notify_one();
    }
    pthread_join(writer.thread, nullptr);
    close(writer.done);
    writer.done = -1;
}
