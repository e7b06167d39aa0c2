/*
 * The probe: what all families share. What one of them keeps is found by its
 * type (core/storage.h); this file knows none of them.
 */
#pragma once

#include "agent/capture/capture_files.h"
#include "agent/capture/frame_clock.h"
#include "agent/capture/interfaces.h"
#include "agent/capture/protocols.h"
#include "agent/capture/sources.h"
#include "agent/core/loop.h"
#include "agent/core/state.h"
#include "agent/core/storage.h"

#include <cstdint>
#include <string>

struct probe {
    event_loop loop;
    int64_t started = 0; // of the clock behind up_time(), in hundredths of a second
    state_store state;
    interface_table interfaces;
    protocol_directory protocols;
    source_table sources;
    capture_files files;
    struct frame_clock frame_clock;
    stored_objects stored = make_stored_objects();
};

/** sysUpTime: hundredths of a second since the agent's start, modulo 2^32. */
uint32_t up_time(const probe &agent);

/**
 * Finds the interfaces, of this machine or as files play them, and begins to
 * measure; files are not read yet (begin_capture_files). An empty text, or what
 * went wrong in one line. The probe must not move from then on.
 */
std::string start_probe(probe &agent, bool may_capture, const file_reading &reading);

void stop_probe(probe &agent);
