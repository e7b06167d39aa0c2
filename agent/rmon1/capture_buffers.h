/* The tables of capture buffers and of what is in them (RFC 2819, bufferControlTable, captureBufferTable). */
#pragma once

#include "agent/rmon1/capture_ring.h"

struct probe;

/** A buffer's packets up to this moment, or null. */
buffer_work *find_buffer(probe &agent, int32_t control);

void buffer_ctl_describe(rmonrpc_buffer_ctl_t &record, int32_t index, const buffer_row &row);

rmonrpc_buffer_ctl_t buffer_ctl_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t buffer_ctl_set(probe &agent, const rmonrpc_buffer_ctl_t &request);
rmonrpc_capturebuf_t capture_buf_get(probe &agent, const rmonrpc_row_key3_t &key);
