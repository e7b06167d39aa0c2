/*
 * The bench's contestants as PHP functions, so that they run in one process
 * with the module, call by call in turns: a plain client that only decodes and
 * frees, one that also converts its rows with the engine's add_assoc calls, and
 * one that only receives the bytes.
 */
#include "php.h"

#include "bench/ext/raw.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

static CLIENT *client;
static int floor_socket = -1;

static double counter(u_quad_t value)
{
    auto number = static_cast<double>(static_cast<int64_t>(value));
    return number < 0 ? number + 18446744073709551616.0 : number;
}

static void convert_host(zval *row, const raw_host &host)
{
    array_init(row);
    add_index_long(row, 0, host.status);
    add_assoc_long(row, "status", host.status);
    add_assoc_long(row, "nlHostTimeMark", host.timeMark);
    zval bytes;
    array_init(&bytes);
    for (u_int i = 0; i < host.nlHostAddress.length; i++)
        add_index_long(&bytes, i, host.nlHostAddress.value[i]);
    add_assoc_zval(row, "nlHostAddress", &bytes);
    add_assoc_double(row, "nlHostInPkts", counter(host.inPkts));
    add_assoc_double(row, "nlHostOutPkts", counter(host.outPkts));
    add_assoc_double(row, "nlHostInOctets", counter(host.inOctets));
    add_assoc_double(row, "nlHostOutOctets", counter(host.outOctets));
    add_assoc_double(row, "nlHostOutMacNonUnicastPkts", counter(host.outMacNonUnicastPkts));
    add_assoc_long(row, "nlHostCreateTime", host.createTime);
    add_assoc_long(row, "hlHostControlIndex", host.hlHostControlIndex);
    add_assoc_long(row, "protocolDirLocalIndex", host.protocolDirLocalIndex);
}

/** Opens the connections of the plain client and of the floor to a loopback port. */
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

/** Decodes and frees: the number of rows. */
PHP_FUNCTION(rmon_bench_raw)
{
    bool wide;
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "bl", &wide, &rows) == FAILURE)
        RETURN_THROWS();
    raw_hosts hosts;
    raw_phones phones;
    if (wide && raw_call_phones(client, static_cast<u_int>(rows), phones)) {
        RETVAL_LONG(phones.length);
        raw_free(phones);
    } else if (!wide && raw_call_hosts(client, static_cast<u_int>(rows), hosts)) {
        RETVAL_LONG(hosts.length);
        raw_free(hosts);
    }
}

/** Decodes narrow rows, converts them with add_assoc calls, frees: the list of rows. */
PHP_FUNCTION(rmon_bench_naive)
{
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "l", &rows) == FAILURE)
        RETURN_THROWS();
    raw_hosts hosts;
    if (!raw_call_hosts(client, static_cast<u_int>(rows), hosts))
        RETURN_FALSE;
    array_init(return_value);
    for (u_int i = 0; i < hosts.length; i++) {
        zval row;
        convert_host(&row, hosts.value[i]);
        add_index_zval(return_value, i, &row);
    }
    raw_free(hosts);
}

/** Receives: the number of bytes. */
PHP_FUNCTION(rmon_bench_floor)
{
    bool wide;
    zend_long rows;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "bl", &wide, &rows) == FAILURE)
        RETURN_THROWS();
    RETURN_LONG(static_cast<zend_long>(floor_call(floor_socket, wide ? 116 : 34, static_cast<u_int>(rows))));
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
