// SPDX-License-Identifier: MIT
/*
 * The plain client that the module is measured against: records as lists of
 * fields, and for each field one of the RPC library's primitives, one after
 * another, as a stub compiler writes them.
 */
#pragma once

#include <rpc/types.h>
#include <rpc/xdr.h>
#include <rpc/auth.h>
#include <rpc/clnt.h>

#include <array>
#include <cstdint>
#include <tuple>

template <class Record> xdrproc_t routine(bool_t (*function)(XDR *, Record *))
{
    return reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(function));
}

/* ---- fields -------------------------------------------------------------------- */

struct raw_bytes {
    u_int length;
    char *value;
};

inline bool_t raw_field(XDR *x, int *field)
{
    return xdr_int(x, field);
}

inline bool_t raw_field(XDR *x, u_int *field)
{
    return xdr_u_int(x, field);
}

inline bool_t raw_field(XDR *x, u_quad_t *field)
{
    return xdr_u_longlong_t(x, field);
}

inline bool_t raw_field(XDR *x, raw_bytes *field)
{
    return xdr_array(x, &field->value, &field->length, ~0u, 1, routine(xdr_u_char));
}

template <size_t N> bool_t raw_field(XDR *x, std::array<u_char, N> *field)
{
    return xdr_vector(x, reinterpret_cast<char *>(field->data()), N, 1, routine(xdr_u_char));
}

template <size_t N> bool_t raw_field(XDR *x, std::array<char, N> *field)
{
    return xdr_vector(x, field->data(), N, 1, routine(xdr_char));
}

template <class... Field> using raw_record = std::tuple<Field...>;

template <class... Field> bool_t raw_field(XDR *x, std::tuple<Field...> *record)
{
    return std::apply([x](Field &...field) { return (raw_field(x, &field) && ...); }, *record);
}

template <class... Field, size_t N> bool_t raw_field(XDR *x, std::array<std::tuple<Field...>, N> *records)
{
    for (auto &record : *records)
        if (!raw_field(x, &record))
            return FALSE;
    return TRUE;
}

/* ---- replies ---------------------------------------------------------------------- */

template <class Row> bool_t raw_row(XDR *x, Row *row)
{
    return raw_field(x, row);
}

template <class Row> struct raw_rows {
    u_int length;
    Row *value;
};

template <class Row> bool_t raw_reply(XDR *x, raw_rows<Row> *rows)
{
    return xdr_array(
        x, reinterpret_cast<char **>(&rows->value), &rows->length, ~0u, sizeof(Row), routine(raw_row<Row>));
}

/* ---- requests: as many zero words as the key has in front of what matters ---------- */

struct raw_key {
    u_int words;    // of the whole key
    u_int count_at; // of the number of rows, from the end; 0: none
    u_int rows;
};

inline bool_t raw_key_field(XDR *x, raw_key *key)
{
    for (u_int left = key->words; left > 0; left--) {
        u_int word = left == key->count_at ? key->rows : 0;
        if (!xdr_u_int(x, &word))
            return FALSE;
    }
    return TRUE;
}
