// SPDX-License-Identifier: MIT
/* The tables of the bench: their rows as the plain client has them, and how the plain conversion shows them.
 */
#pragma once

#include "bench/ext/raw.h"

#include <algorithm>

/** A key, given in a template argument. */
template <size_t N> struct bench_key {
    char value[N];

    consteval bench_key(const char (&text)[N]) { std::copy_n(text, N, value); }
};

/** A field of a row under its key. */
template <bench_key Key, size_t Field> struct shown {
    static constexpr const char *key = Key.value;
    static constexpr size_t field = Field;
};

template <class... Column> struct shown_list {
};

/**
 * A table: procedure and key of its call, its row. Columns are in the order in
 * which scripts see them, behind the status; tables whose plain conversion is
 * not measured have none. An address without bytes is the integer 0 where
 * ZeroAddress says so.
 */
template <class Row, class Columns = shown_list<>> struct bench_table {
    using row = Row;
    using columns = Columns;
    u_int procedure, key_words, count_at;
};

/** A table of which a call brings one entry, and what is measured is so many calls. */
template <class Entry> struct bench_entry {
    using row = Entry;
    u_int procedure, key_words, calls;
};

using quad = u_quad_t;
using address16 = std::array<u_char, 16>;
template <size_t N> using letters = std::array<char, N>;
template <size_t N> using octets = std::array<u_char, N>;
template <size_t N> using integers = std::array<std::tuple<u_int>, N>;

/* ---- narrow rows ------------------------------------------------------------------ */

inline constexpr bench_table<
    raw_record<int, int, int, u_int, quad, quad, quad, quad, quad, quad, quad, quad, quad, quad, quad, int>,
    shown_list<
        shown<"etherHistoryIndex", 1>,
        shown<"etherHistorySampleIndex", 2>,
        shown<"etherHistoryIntervalStart", 3>,
        shown<"etherHistoryDropEvents", 4>,
        shown<"etherHistoryOctets", 5>,
        shown<"etherHistoryPkts", 6>,
        shown<"etherHistoryBroadcastPkts", 7>,
        shown<"etherHistoryMulticastPkts", 8>,
        shown<"etherHistoryCRCAlignErrors", 9>,
        shown<"etherHistoryUndersizePkts", 10>,
        shown<"etherHistoryOversizePkts", 11>,
        shown<"etherHistoryJabbers", 13>,
        shown<"etherHistoryFragments", 12>,
        shown<"etherHistoryCollisions", 14>,
        shown<"etherHistoryUtilization", 15>>>
    etherhistory{8, 4, 1};

inline constexpr bench_table<
    raw_record<int, raw_bytes, int, int, quad, quad, quad, quad, quad, quad, quad>,
    shown_list<
        shown<"hostAddress", 1>,
        shown<"hostCreationOrder", 2>,
        shown<"hostIndex", 3>,
        shown<"hostInPkts", 4>,
        shown<"hostOutPkts", 5>,
        shown<"hostInOctets", 6>,
        shown<"hostOutOctets", 7>,
        shown<"hostOutErrors", 8>,
        shown<"hostOutBroadcastPkts", 9>,
        shown<"hostOutMulticastPkts", 10>>>
    host{11, 4, 2};

inline constexpr bench_table<
    raw_record<int, raw_bytes, raw_bytes, int, quad, quad, quad>,
    shown_list<
        shown<"matrixSDSourceAddress", 1>,
        shown<"matrixSDDestAddress", 2>,
        shown<"matrixSDIndex", 3>,
        shown<"matrixSDPkts", 4>,
        shown<"matrixSDOctets", 5>,
        shown<"matrixSDErrors", 6>>>
    matrix{18, 6, 3};

inline constexpr bench_table<
    raw_record<int, u_int, raw_bytes, quad, quad, quad, quad, quad, u_int, int, int, int>,
    shown_list<
        shown<"nlHostTimeMark", 1>,
        shown<"nlHostAddress", 2>,
        shown<"nlHostInPkts", 3>,
        shown<"nlHostOutPkts", 4>,
        shown<"nlHostInOctets", 5>,
        shown<"nlHostOutOctets", 6>,
        shown<"nlHostOutMacNonUnicastPkts", 7>,
        shown<"nlHostCreateTime", 8>,
        shown<"hlHostControlIndex", 9>,
        shown<"protocolDirLocalIndex", 10>>>
    nlhost{34, 8, 1};

/** The create time is shown as a float, like a counter. */
struct float_time {
    u_int value;
};

inline bool_t raw_field(XDR *x, float_time *field)
{
    return xdr_u_int(x, &field->value);
}

inline constexpr bench_table<
    raw_record<int, u_int, raw_bytes, raw_bytes, quad, quad, float_time, int, int, int>,
    shown_list<
        shown<"alMatrixSDTimeMark", 1>,
        shown<"nlMatrixSDSourceAddress", 2>,
        shown<"nlMatrixSDDestAddress", 3>,
        shown<"alMatrixSDPkts", 4>,
        shown<"alMatrixSDOctets", 5>,
        shown<"alMatrixSDCreateTime", 6>,
        shown<"hlMatrixControlIndex", 7>,
        shown<"protocolDirLocalIndex", 8>,
        shown<"protocolDirLocalIndex2", 9>>>
    almatrix{37, 10, 1};

inline constexpr bench_table<
    raw_record<
        int,
        raw_bytes,
        raw_bytes,
        int,
        int,
        int,
        u_int,
        u_int,
        u_int,
        u_int,
        u_int,
        u_int,
        u_int,
        u_int,
        quad,
        quad,
        u_int,
        u_int,
        int,
        int>,
    shown_list<
        shown<"artServerAddress", 1>,
        shown<"artClientAddress", 2>,
        shown<"artAvgRspTime", 3>,
        shown<"artMinRspTime", 4>,
        shown<"artMaxRspTime", 5>,
        shown<"artTotalResponses", 6>,
        shown<"artRsps1", 7>,
        shown<"artRsps2", 8>,
        shown<"artRsps3", 9>,
        shown<"artRsps4", 10>,
        shown<"artRsps5", 11>,
        shown<"artRsps6", 12>,
        shown<"artRsps7", 13>,
        shown<"artClientOctets", 14>,
        shown<"artServerOctets", 15>,
        shown<"artRetries", 16>,
        shown<"artTimeouts", 17>,
        shown<"artControlIndex", 18>,
        shown<"protocolDirLocalIndex", 19>>>
    art_rpt{101, 6, 1};

/* ---- one entry a call ---------------------------------------------------------------- */

inline constexpr bench_entry<raw_record<int, u_int, u_int, u_int>> aggprofile{103, 3, 64};

/** Whether the link lives. */
inline constexpr bench_entry<raw_record<int>> liveness{0, 0, 1};

/* ---- wide rows --------------------------------------------------------------------- */

using raw_endpoint = raw_record<address16, u_int, u_int>;
using raw_media = raw_record<raw_endpoint, raw_endpoint, u_int, raw_endpoint, raw_endpoint>;
using raw_h323_call = raw_record<
    raw_endpoint,
    letters<132>,
    letters<81>,
    raw_endpoint,
    letters<132>,
    letters<81>,
    integers<3>,
    address16,
    address16,
    integers<4>,
    octets<257>,
    octets<257>,
    octets<257>,
    octets<257>,
    integers<4>,
    raw_media,
    raw_media,
    integers<2>,
    integers<18>,
    integers<3>>;

inline constexpr bench_table<raw_record<
    int,
    u_int,
    raw_endpoint,
    letters<132>,
    letters<81>,
    integers<7>,
    int,
    std::array<raw_h323_call, 5>>>
    h323_phone{116, 3, 1};

using raw_sccp_call = raw_record<integers<3>, letters<16>, letters<24>, letters<40>, integers<23>>;

inline constexpr bench_table<raw_record<
    int,
    u_int,
    int,
    address16,
    letters<24>,
    letters<40>,
    letters<40>,
    letters<10>,
    integers<6>,
    int,
    std::array<raw_sccp_call, 5>>>
    sccp_phone{83, 3, 1};

using raw_mgcp_media = raw_record<
    letters<33>,
    letters<33>,
    int,
    letters<32>,
    letters<32>,
    integers<4>,
    letters<10>,
    integers<4>,
    integers<14>,
    int>;

inline constexpr bench_table<raw_record<
    integers<3>,
    address16,
    address16,
    integers<2>,
    address16,
    address16,
    letters<33>,
    letters<33>,
    letters<256>,
    letters<256>,
    letters<256>,
    letters<256>,
    letters<24>,
    letters<24>,
    integers<3>,
    raw_mgcp_media,
    u_int>>
    mgcp_call{185, 3, 1};
