// SPDX-License-Identifier: MIT
/*
 * Any bytes as the result of any function's call: decoded, converted to a value
 * of PHP's and released. The engine and the module are a part of this program.
 *
 * An input: which function (two bytes), the result's bytes. The agent's end of
 * the connection is closed behind them.
 */
#include "rmon/connections.h"
#include "tests/fuzz/common.h"

#include <cstdlib>

#include <arpa/inet.h>
#include <sapi/embed/php_embed.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int listener;

/** Functions that take a link, which is their first argument. */
std::vector<const zend_function_entry *> callable;

void listen_somewhere()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *any = reinterpret_cast<sockaddr *>(&address);
    listener = socket(AF_INET, SOCK_STREAM, 0);
    if (bind(listener, any, size) != 0 || listen(listener, 4) != 0 || getsockname(listener, any, &size) != 0)
        broken("there are ports");
    RMON_G(default_port) = ntohs(address.sin_port);
}

void call(const char *function, zval *result, uint32_t count, zval *arguments)
{
    zval name;
    ZVAL_STRING(&name, function);
    if (call_user_function(nullptr, nullptr, &name, result, count, arguments) != SUCCESS)
        broken("the module's functions can be called");
    zval_ptr_dtor(&name);
    if (EG(exception))
        broken("nothing throws");
}

/** One for a number or a text; where an array is converted in place, an address. */
void make_argument(zval *argument, const zend_internal_arg_info &parameter)
{
    if (ZEND_ARG_SEND_MODE(&parameter) == 0) {
        ZVAL_LONG(argument, 1);
        return;
    }
    array_init(argument);
    for (const zend_long byte : {10, 0, 0, 1})
        add_next_index_long(argument, byte);
}

/** The reply to the first call on this link. */
void answer(int agent, zend_long link, std::span<const uint8_t> result)
{
    uint32_t xid = 0;
    clnt_control(rmon::client_of({link}), CLGET_XID, reinterpret_cast<char *>(&xid));
    std::vector<uint8_t> reply;
    const auto size = static_cast<uint32_t>(24 + result.size());
    for (const uint32_t unit : {size | 0x80000000, xid - 1, 1u, 0u, 0u, 0u, 0u})
        for (int shift = 24; shift >= 0; shift -= 8)
            reply.push_back(static_cast<uint8_t>(unit >> shift));
    reply.insert(reply.end(), result.begin(), result.end());
    if (send(agent, reply.data(), reply.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(reply.size()))
        broken("a reply is sent in one piece");
    shutdown(agent, SHUT_WR);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    setenv("USE_ZEND_ALLOC", "0", 1);
    php_embed_module.php_ini_ignore = 1;
    php_embed_module.startup = [](sapi_module_struct *sapi) -> int {
        return php_module_startup(sapi, &rmon_module_entry);
    };
    php_embed_module.ub_write = [](const char *, size_t size) { return size; };
    php_embed_module.log_message = [](const char *, int) {};
    if (php_embed_init(0, nullptr) != SUCCESS)
        broken("the engine starts");
    atexit(php_embed_shutdown);
    listen_somewhere();
    for (const auto *each = rmon_module_entry.functions; each->fname; each++)
        if (each->num_args > 0 && strcmp(each->arg_info[1].name, "connid") == 0)
            callable.push_back(each);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    go_on_after_alarms();
    const zend_function_entry &function = *callable[(data[0] << 8 | data[1]) % callable.size()];

    zval host, link;
    ZVAL_STRING(&host, "127.0.0.1");
    call("rmon_connect", &link, 1, &host);
    zval_ptr_dtor(&host);
    const int agent = accept(listener, nullptr, nullptr);
    if (Z_TYPE(link) != IS_RESOURCE || agent == -1)
        broken("a link is made");
    answer(agent, Z_RES_HANDLE(link), {data + 2, size - 2});

    std::vector<zval> arguments(function.num_args);
    arguments[0] = link;
    for (uint32_t i = 1; i < function.num_args; i++)
        make_argument(&arguments[i], function.arg_info[i + 1]);
    zval result;
    call(function.fname, &result, function.num_args, arguments.data());
    for (uint32_t i = 1; i < function.num_args; i++)
        zval_ptr_dtor(&arguments[i]);
    zval_ptr_dtor(&result);

    for (int references = 2; references > 0; references--)
        call("rmon_close", &result, 1, &link);
    zval_ptr_dtor(&link);
    close(agent);
    return 0;
}
