// SPDX-License-Identifier: MIT
/*
 * The bench's other contestants as PHP functions, so that a script calls them as
 * it calls the module: a plain client that only decodes and frees, one that also
 * converts its rows with the engine's add_assoc calls, and one that only receives
 * the bytes.
 */
#include "php.h"

#include "bench/ext/tables.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string_view>

static constexpr timeval time_out{25, 0};
static CLIENT *client;
static int floor_socket = -1;

/* ---- the plain client ------------------------------------------------------------- */

template <class Table>
static bool raw_call(const Table &table, u_int rows, raw_rows<typename Table::row> &reply)
{
    raw_key key{table.key_words, table.count_at, rows};
    reply = {};
    return clnt_call(
               client, table.procedure, routine(raw_key_field), &key, routine(raw_reply<typename Table::row>),
               &reply, time_out)
           == RPC_SUCCESS;
}

template <class Row, class Columns> static zend_long raw(const bench_table<Row, Columns> &table, u_int rows)
{
    raw_rows<Row> reply;
    if (!raw_call(table, rows, reply))
        return -1;
    const u_int length = reply.length;
    xdr_free(routine(raw_reply<Row>), &reply);
    return length;
}

template <class Entry> static zend_long raw(const bench_entry<Entry> &table, u_int)
{
    zend_long answered = 0;
    for (u_int call = 0; call < table.calls; call++) {
        raw_key key{table.key_words, 0, 0};
        Entry entry{};
        answered += clnt_call(
                        client, table.procedure, routine(raw_key_field), &key, routine(raw_row<Entry>),
                        &entry, time_out)
                    == RPC_SUCCESS;
    }
    return answered;
}

/* ---- the plain conversion ------------------------------------------------------------ */

static void show(zval *row, const char *key, int value)
{
    add_assoc_long(row, key, value);
}

static void show(zval *row, const char *key, u_int value)
{
    add_assoc_long(row, key, value);
}

static void show(zval *row, const char *key, u_quad_t value)
{
    auto number = static_cast<double>(static_cast<int64_t>(value));
    add_assoc_double(row, key, number < 0 ? number + 18446744073709551616.0 : number);
}

static void show(zval *row, const char *key, float_time value)
{
    add_assoc_double(row, key, value.value);
}

static void show(zval *row, const char *key, const raw_bytes &value)
{
    zval bytes;
    array_init(&bytes);
    for (u_int i = 0; i < value.length; i++)
        add_index_long(&bytes, i, static_cast<u_char>(value.value[i]));
    add_assoc_zval(row, key, &bytes);
}

template <class Row, class... Column> static void convert(zval *to, const Row &row, shown_list<Column...>)
{
    array_init(to);
    add_index_long(to, 0, std::get<0>(row));
    add_assoc_long(to, "status", std::get<0>(row));
    (show(to, Column::key, std::get<Column::field>(row)), ...);
}

template <class Table> static bool naive(const Table &table, u_int rows, zval *list)
{
    raw_rows<typename Table::row> reply;
    if (!raw_call(table, rows, reply))
        return false;
    array_init(list);
    for (u_int i = 0; i < reply.length; i++) {
        zval row;
        convert(&row, reply.value[i], typename Table::columns{});
        add_index_zval(list, i, &row);
    }
    xdr_free(routine(raw_reply<typename Table::row>), &reply);
    return true;
}

/* ---- the floor ------------------------------------------------------------------------- */

static bool read_all(int fd, char *to, size_t size)
{
    while (size) {
        const ssize_t got = read(fd, to, size);
        if (got <= 0)
            return false;
        to += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

/** Sends a call by hand; the number of the reply's bytes, 0 on failure. */
static size_t floor_call(u_int procedure, u_int key_words, u_int count_at, u_int rows)
{
    // Mark, xid, CALL, RPC version 2, program, version, procedure, two null authenticators, the key.
    u_int call[32] = {0x80000000u | (40 + 4 * key_words), 1, 0, 2, 99999, 1, procedure};
    const u_int words = 11 + key_words;
    if (count_at)
        call[words - count_at] = rows;
    for (u_int i = 0; i < words; i++)
        call[i] = htonl(call[i]);
    if (write(floor_socket, call, 4 * words) != static_cast<ssize_t>(4 * words))
        return 0;

    static char buffer[65536];
    size_t total = 0;
    for (bool last = false; !last;) {
        u_int mark;
        if (!read_all(floor_socket, reinterpret_cast<char *>(&mark), sizeof mark))
            return 0;
        last = ntohl(mark) & 0x80000000u;
        const size_t size = ntohl(mark) & 0x7fffffff;
        if (size > sizeof buffer || !read_all(floor_socket, buffer, size))
            return 0;
        total += size;
    }
    return total;
}

/* ---- PHP functions ------------------------------------------------------------------------ */

/** Whether the plain conversion of a table is measured. */
template <class Table> inline constexpr bool is_shown = false;
template <class Row, class... Column>
inline constexpr bool is_shown<bench_table<Row, shown_list<Column...>>> = sizeof...(Column) > 0;

/** The calls of one measurement, and where the number of rows stands in one. */
template <class Row, class Columns> static u_int calls_of(const bench_table<Row, Columns> &)
{
    return 1;
}
template <class Entry> static u_int calls_of(const bench_entry<Entry> &table)
{
    return table.calls;
}
template <class Row, class Columns> static u_int count_at(const bench_table<Row, Columns> &table)
{
    return table.count_at;
}
template <class Entry> static u_int count_at(const bench_entry<Entry> &)
{
    return 0;
}

/** Calls visit with the table of this name; false when there is none. */
template <class Visit> static bool with_table(std::string_view name, Visit visit)
{
    const auto is = [name, visit](std::string_view other, const auto &table) {
        const bool same = name == other;
        if (same)
            visit(table);
        return same;
    };
    return is("etherhistory", etherhistory) || is("host", host) || is("matrix_sd", matrix)
           || is("nlhost", nlhost) || is("almatrix_sd", almatrix) || is("art_rpt", art_rpt)
           || is("h323_phone_rec", h323_phone) || is("sccp_phone_rec", sccp_phone)
           || is("mgcp_call_rec", mgcp_call) || is("aggprofs", aggprofile) || is("pconnect", liveness);
}

/** rmon_bench_open(port): opens the connections of the plain client and of the floor. */
PHP_FUNCTION(rmon_bench_open)
{
    zend_long port;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "l", &port) == FAILURE)
        RETURN_THROWS();
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int any = -1;
    client = clnttcp_create(&address, 99999, 1, &any, 0, 0);
    floor_socket = socket(AF_INET, SOCK_STREAM, 0);
    const int on = 1;
    setsockopt(floor_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    RETURN_BOOL(client && connect(floor_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0);
}

/** rmon_bench_raw(table, rows): decodes and frees; the number of rows. */
PHP_FUNCTION(rmon_bench_raw)
{
    char *name;
    size_t length;
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "sl", &name, &length, &rows) == FAILURE)
        RETURN_THROWS();
    with_table({name, length}, [=](const auto &table) { RETVAL_LONG(raw(table, static_cast<u_int>(rows))); });
}

/** rmon_bench_naive(table, rows): decodes, converts with add_assoc calls, frees; the list of rows. */
PHP_FUNCTION(rmon_bench_naive)
{
    char *name;
    size_t length;
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "sl", &name, &length, &rows) == FAILURE)
        RETURN_THROWS();
    with_table({name, length}, [=](const auto &table) {
        if constexpr (is_shown<std::decay_t<decltype(table)>>)
            naive(table, static_cast<u_int>(rows), return_value);
    });
}

/** rmon_bench_floor(table, rows): receives; the number of bytes. */
PHP_FUNCTION(rmon_bench_floor)
{
    char *name;
    size_t length;
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "sl", &name, &length, &rows) == FAILURE)
        RETURN_THROWS();
    with_table({name, length}, [=](const auto &table) {
        size_t bytes = 0;
        for (u_int call = 0; call < calls_of(table); call++)
            bytes += floor_call(table.procedure, table.key_words, count_at(table), static_cast<u_int>(rows));
        RETVAL_LONG(static_cast<zend_long>(bytes));
    });
}

ZEND_BEGIN_ARG_INFO_EX(arginfo_any, 0, 0, 0)
ZEND_END_ARG_INFO()

static const zend_function_entry functions[] = {
    PHP_FE(rmon_bench_open, arginfo_any) PHP_FE(rmon_bench_raw, arginfo_any)
        PHP_FE(rmon_bench_naive, arginfo_any) PHP_FE(rmon_bench_floor, arginfo_any) PHP_FE_END};

static zend_module_entry rmon_bench_module_entry = {
    STANDARD_MODULE_HEADER,    "rmon_bench", functions, nullptr, nullptr, nullptr, nullptr, nullptr, "0",
    STANDARD_MODULE_PROPERTIES};

#pragma GCC visibility push(default)
ZEND_GET_MODULE(rmon_bench)
#pragma GCC visibility pop
