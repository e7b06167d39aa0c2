// SPDX-License-Identifier: MIT
/*
 * The files that the bundled agent reads. The first byte of an input says what
 * the rest is: a capture file, a scenario of voice calls, the kept settings as
 * they stand in their file, or with a journal and without check values, which no
 * fuzzer would get right.
 */
#include "agent/core/settings_file.h"
#include "agent/voice/scenario.h"
#include "agent/voice/voice.h"
#include "tests/fuzz/agent.h"
#include "tests/fuzz/common.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr int max_turns = 100000;

memory_file &no_frames()
{
    static auto *file = [] {
        auto *made = new memory_file;
        fill(*made, empty_capture());
        return made;
    }();
    return *file;
}

void read_capture(std::span<const uint8_t> bytes)
{
    static auto *file = new memory_file;
    fill(*file, bytes);
    started_agent started;
    if (start_agent(started, file->path).empty()) {
        start_groups(started.agent, 4);
        if (!begin_capture_files(started.agent.files, started.agent.loop))
            broken("there are timers");
        for (int i = 0; started.agent.files.front().reading; i++) {
            turn_loop(started.agent.loop, 0);
            if (i == max_turns)
                broken("a file has an end");
        }
        tick_loop(started.agent.loop);
        make_due_calls(started.agent.loop, INT64_MAX);
    }
    stop_agent(started);
}

void read_voice(std::span<const uint8_t> bytes)
{
    static auto *file = new memory_file;
    fill(*file, bytes);
    started_agent started;
    if (!start_agent(started, no_frames().path).empty())
        broken("the agent starts");
    if (read_scenario(storage<voice_monitors>(started.agent).scenario, file->path).empty()) {
        play_scenario(started.agent);
        tick_loop(started.agent.loop);
    }
    stop_agent(started);
}

const std::string &settings_directory()
{
    static const std::string directory = [] {
        char name[] = "/dev/shm/rmon-fuzz-XXXXXX";
        if (!mkdtemp(name))
            broken("there is a directory");
        static std::string made = name;
        atexit([] {
            for (const char *file : {settings_name, journal_name})
                unlink((made + '/' + file).c_str());
            rmdir(made.c_str());
        });
        return made;
    }();
    return directory;
}

void put_file(const char *name, std::string_view text)
{
    const std::string path = settings_directory() + '/' + name;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        broken("there is room for a file");
    close(file);
}

/** Settings that were read are written, and what was written is read again as the same. */
void read_and_keep()
{
    std::string kept;
    for (int round = 0; round < 3; round++) {
        started_agent started;
        if (!start_agent(started, no_frames().path).empty())
            broken("the agent starts");
        const std::string wrong = open_state(started.agent, settings_directory());
        if (!wrong.empty() && round > 0)
            broken("what the agent keeps can be read");
        if (wrong.empty()) {
            started.agent.state.changed = true;
            finish_state(started.agent);
            if (round > 1 && started.agent.state.written != kept)
                broken("settings that are read and kept are the same");
            kept = started.agent.state.written;
        }
        stop_agent(started);
        if (!wrong.empty())
            return;
    }
}

void read_settings(std::string_view text)
{
    put_file(settings_name, text);
    unlink((settings_directory() + '/' + journal_name).c_str());
    read_and_keep();
}

/** Takes what stands before a mark off a text, and the mark. */
std::string_view take_before(std::string_view &text, std::string_view mark)
{
    const std::size_t end = text.find(mark);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + mark.size());
    return taken;
}

/** Lines with their check values. */
std::string checked(std::string_view lines)
{
    std::string text;
    while (!lines.empty())
        add_part(text, take_before(lines, "\n"));
    return text;
}

/** The lines of the settings file and those of each write are apart by an empty line. Of the journal's end so
 * many octets are not there as the first byte says. */
void read_journal(std::string_view input)
{
    if (input.empty())
        return;
    const std::size_t lacking = static_cast<uint8_t>(input[0]);
    input.remove_prefix(1);
    std::string settings = begin_settings() + checked(take_before(input, "\n\n"));
    end_settings(settings);
    std::string journal = begin_journal(settings);
    while (!input.empty())
        journal += journal_write(checked(take_before(input, "\n\n")));
    const std::string_view there =
        std::string_view(journal).substr(0, journal.size() - std::min(lacking, journal.size()));

    journal_text whole;
    journal_text cut;
    if (take_journal_apart(journal, settings, whole) == 0 && take_journal_apart(there, settings, cut) != 0)
        broken("a journal that lacks its end is read");
    put_file(settings_name, settings);
    put_file(journal_name, there);
    read_and_keep();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const std::span bytes{data + 1, size - 1};
    const std::string_view text{reinterpret_cast<const char *>(bytes.data()), bytes.size()};
    switch (data[0] % 4) {
    case 0:
        read_capture(bytes);
        break;
    case 1:
        read_voice(bytes);
        break;
    case 2:
        read_settings(text);
        break;
    default:
        read_journal(text);
    }
    return 0;
}
