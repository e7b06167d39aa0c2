// SPDX-License-Identifier: MIT
/* A record with every kind of field, alone and side by side, and its bytes. */
#pragma once

#include "rmon/rpc/rmonrpc_xdr.h"
#include "tests/native/check.h"

struct sample_inner {
    int32_t first;
    wire::uchars<3> octets;
    uint64_t counter;
    wire::chars<33> letters;
};

struct sample_row {
    int32_t status;
    wire::byte_list address;
    uint64_t counter;
    wire::text<20> name;
};

struct sample_record {
    int32_t status;
    uint32_t ticks;
    wire::byte_list address;
    uint64_t in;
    uint64_t out;
    uint32_t odd; // a hyper behind it is not aligned on the wire, and not packed in memory
    uint64_t last;
    wire::text<255> owner;
    sample_inner nested;
    wire::repeated<sample_inner, 2> history;
    wire::rows<sample_row> rows;
    wire::text<> any;
    wire::uchars<1500> wide; // longer than one run
    int32_t end;
};

/** A record with `rows` rows and addresses and texts of the given lengths; owned by this file. */
struct sample {
    sample_record record;
    bytes encoded;
};
sample make_sample(uint32_t rows, uint32_t address_length, uint32_t text_length);

/** Decodes from memory; the record is to be released in any case. */
template <class Record> bool decode(const std::vector<uint8_t> &from, Record &to, size_t length)
{
    XDR xdrs;
    to = {};
    // The library's memory stream takes a pointer it may write to; decoding doesn't.
    xdrmem_create(
        &xdrs, const_cast<char *>(reinterpret_cast<const char *>(from.data())), static_cast<u_int>(length),
        XDR_DECODE);
    return xdr_record(&xdrs, &to);
}

/** Encodes into memory; empty on failure. */
template <class Record> std::vector<uint8_t> encode(Record &record)
{
    std::vector<uint8_t> out(1 << 20);
    XDR xdrs;
    xdrmem_create(&xdrs, reinterpret_cast<char *>(out.data()), static_cast<u_int>(out.size()), XDR_ENCODE);
    out.resize(xdr_record(&xdrs, &record) ? xdr_getpos(&xdrs) : 0);
    return out;
}
