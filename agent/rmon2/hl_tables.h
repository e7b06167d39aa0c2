// SPDX-License-Identifier: MIT
/*
 * What the higher-layer hosts and the higher-layer matrix (RFC 2021, nlHost,
 * alHost, nlMatrix, alMatrix) have in common: a control row counts the frames
 * of a data source in two learned tables, one for the network layer and one for
 * all protocols above it.
 */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/capture/key_address.h"
#include "agent/core/learned_table.h"

#include "rmon/rpc/rmonrpc_rmon2.h"

#include <cstdint>
#include <map>
#include <string_view>

struct probe;

/** One layer's table of a control row. View is the order, or the orders, in which it is read. */
template <class Key, class Row, class View> struct hl_table {
    learned_table<Key, Row> rows;
    View view;
    uint32_t dropped_frames = 0; // for which there was no room: the table was full of rows that stay
};

template <class Key, class Row, class View> struct hl_counts {
    using table = hl_table<Key, Row, View>;
    probe *agent = nullptr;
    table network;
    table application;
};

template <class Counts> struct hl_row : counting_row<Counts> {
    int32_t desired_network = -1; // rows
    int32_t desired_application = -1;
};
