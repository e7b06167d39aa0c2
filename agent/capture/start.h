// SPDX-License-Identifier: MIT
/* The probe's beginning and its end, and what it tells the families in between. */
#pragma once

#include "agent/capture/capture_files.h"

#include <string>

struct probe;

/**
 * Finds the interfaces, of this machine or as files play them, and begins to
 * measure; files are not read yet (begin_capture_files). An empty text, or what
 * went wrong in one line. The probe must not move from then on.
 */
std::string start_probe(probe &agent, bool may_capture, const file_reading &reading);

void stop_probe(probe &agent);
