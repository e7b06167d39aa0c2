// SPDX-License-Identifier: MIT
/* The tables of capture buffers and of what is in them (RFC 2819, bufferControlTable, captureBufferTable). */
#pragma once

#include "agent/rmon1/capture_ring.h"

struct probe;

/** A buffer's packets up to this moment, or null. */
buffer_work *find_buffer(probe &agent, int32_t control);
