// SPDX-License-Identifier: MIT
/*
 * The files that the bundled agent reads. The first byte of an input says what
 * the rest is: a capture file, a scenario of voice calls, the kept settings.
 */
#include "agent/voice/scenario.h"
#include "agent/voice/voice.h"
#include "tests/fuzz/agent.h"
#include "tests/fuzz/common.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

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

/** Settings that were read are written, and what was written is read again as the same. */
void read_settings(std::span<const uint8_t> bytes)
{
    static const std::string directory = [] {
        char name[] = "/dev/shm/rmon-fuzz-XXXXXX";
        if (!mkdtemp(name))
            broken("there is a directory");
        static std::string made = name;
        atexit([] {
            unlink((made + "/settings").c_str());
            rmdir(made.c_str());
        });
        return made;
    }();
    const std::string path = directory + "/settings";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        broken("there is room for a file");
    close(file);

    std::string kept;
    for (int round = 0; round < 3; round++) {
        started_agent started;
        if (!start_agent(started, no_frames().path).empty())
            broken("the agent starts");
        const std::string wrong = open_state(started.agent, directory);
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const std::span bytes{data + 1, size - 1};
    switch (data[0] % 3) {
    case 0:
        read_capture(bytes);
        break;
    case 1:
        read_voice(bytes);
        break;
    default:
        read_settings(bytes);
    }
    return 0;
}
