/* The table of filters (RFC 2819, filterTable). */
#pragma once

#include "agent/rmon1/filter_match.h"

struct probe;

void filter_describe(rmonrpc_filter_t &record, int32_t index, const filter_row &row);

rmonrpc_filter_t filter_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t filter_set(probe &agent, const rmonrpc_filter_t &request);
