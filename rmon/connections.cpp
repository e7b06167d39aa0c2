// SPDX-License-Identifier: MIT
#include "rmon/connections.h"

#include "rmon/arguments.h"
#include "rmon/rpc/rmonrpc_transport.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <pthread.h>

#include <algorithm>

namespace rmon {

namespace {

constexpr const char link_type_name[] = "RMON RPC link";

int le_conn;  // a normal link, closed with its resource
int le_pconn; // a persistent link, whose handle stays in the engine's persistent list

/**
 * What a link's resource points to. The count is the script's view: one for
 * each connect call that returned the resource and one that the module holds,
 * each taken off by rmon_close. It is not the engine's count of variables:
 * copies of a variable don't keep a link open that was closed often enough.
 */
struct rmon_link {
    CLIENT *client;
    uint32_t references;
    bool held; // the module's own reference (the default link's) is not dropped yet
};

rmon_link *link_of(const zend_resource *resource)
{
    return static_cast<rmon_link *>(resource->ptr);
}

bool is_link(const zend_resource *resource)
{
    return resource && (resource->type == le_conn || resource->type == le_pconn);
}

zend_resource *find_resource(zend_long id)
{
    return static_cast<zend_resource *>(
        zend_hash_index_find_ptr(&EG(regular_list), static_cast<zend_ulong>(id)));
}

/* ---- a link is of one process ------------------------------------------------ */

/**
 * What a forked process does first. It has none of its parent's links: it leaves
 * their sockets to the parent, and counts what it opens itself.
 */
void begin_process()
{
    leave_links_to_parent();
    RMON_G(num_links) = 0;
    RMON_G(num_persistent) = 0;
}

/* ---- the engine ends a link ------------------------------------------------ */

/** Ends a handle, and takes it off the counts in which it is. */
void close_client(CLIENT *client, bool persistent)
{
    if (of_this_process(client)) {
        RMON_G(num_links)--;
        RMON_G(num_persistent) -= persistent;
    }
    clnt_destroy(client);
}

void _close_rmon_conn(zend_resource *resource)
{
    close_client(link_of(resource)->client, false);
    efree(resource->ptr);
}

/** A request's resource over a persistent handle; the handle outlives it. */
void forget_rmon_pconn(zend_resource *resource)
{
    efree(resource->ptr);
}

/** The entry of the engine's persistent list, which points to the handle itself. */
void _close_rmon_pconn(zend_resource *resource)
{
    close_client(static_cast<CLIENT *>(resource->ptr), true);
}

/* ---- making links ------------------------------------------------------------ */

bool resolve(const char *host, in_addr &address)
{
    if (inet_aton(host, &address))
        return true;
    const hostent *entry = gethostbyname(host);
    if (!entry) {
        zend_error(E_WARNING, "RMON/RPC unable to resolv host %s", host);
        return false;
    }
    if (entry->h_addrtype != AF_INET) {
        zend_error(E_WARNING, "RMON/RPC bad AF (%d)", entry->h_addrtype);
        return false;
    }
    std::memcpy(
        &address, entry->h_addr_list[0],
        std::min<size_t>(sizeof address, static_cast<size_t>(entry->h_length)));
    return true;
}

/** Why the last failed connect failed: "10.1.200.7:9911: RPC: ...". The warning has no room for it. */
char failed_connect[512];

void keep_failure(const sockaddr_in &address)
{
    char host[INET_ADDRSTRLEN], target[INET_ADDRSTRLEN + sizeof ":65535"];
    inet_ntop(AF_INET, &address.sin_addr, host, sizeof host);
    snprintf(target, sizeof target, "%s:%d", host, ntohs(address.sin_port));
    snprintf(failed_connect, sizeof failed_connect, "%s", clnt_spcreateerror(target));
}

/** A new resource over client: one reference for the script, one for the module. */
zend_resource *new_link(CLIENT *client, int type)
{
    auto *link = static_cast<rmon_link *>(emalloc(sizeof(rmon_link)));
    *link = {client, 2, true};
    zend_resource *resource = zend_register_resource(link, type);
    GC_ADDREF(resource);
    RMON_G(default_link) = resource->handle;
    return resource;
}

/**
 * The request's link to the host of this key, with one more reference; null when there is none, or one that
 * the process in which the request began connected.
 */
zend_resource *link_in_use(const zend_resource *index)
{
    zend_resource *resource = find_resource(reinterpret_cast<zend_long>(index->ptr));
    if (!is_link(resource) || !of_this_process(link_of(resource)->client))
        return nullptr;
    link_of(resource)->references++;
    GC_ADDREF(resource);
    return resource;
}

zend_resource *connect_for_request(const char *host, zend_string *key)
{
    if (auto *index = static_cast<zend_resource *>(zend_hash_find_ptr(&EG(regular_list), key))) {
        if (index->type != le_index_ptr)
            return nullptr;
        if (zend_resource *resource = link_in_use(index))
            return resource;
        zend_hash_del(&EG(regular_list), key);
    }

    if (RMON_G(max_links) != -1 && RMON_G(num_links) >= RMON_G(max_links)) {
        zend_error(E_WARNING, "RMON:Too many open connections (" ZEND_LONG_FMT ")", RMON_G(num_links));
        return nullptr;
    }
    CLIENT *client = clnt_rmon_create(host);
    if (!client) {
        zend_error(E_WARNING, "RMON: RPC connection failed!");
        return nullptr;
    }

    zend_resource *resource = new_link(client, le_conn);
    RMON_G(num_links)++;
    zend_resource index{};
    GC_SET_REFCOUNT(&index, 1);
    index.type = le_index_ptr;
    // An id in the place of a pointer: a pointer would outlive the resource.
    index.ptr = reinterpret_cast<void *>( // NOLINT(performance-no-int-to-ptr)
        static_cast<zend_long>(resource->handle));
    zend_hash_update_mem(&EG(regular_list), key, &index, sizeof index);
    return resource;
}

bool is_alive(CLIENT *client)
{
    int32_t *reply = rmonrpc_test_1(nullptr, client);
    if (reply)
        release(reply);
    return reply != nullptr;
}

/**
 * Ends a persistent link. Resources of the running request that name its handle
 * are closed with it, so that none is left dangling.
 */
void drop_persistent(CLIENT *client, zend_string *key)
{
    zval *entry;
    ZEND_HASH_FOREACH_VAL(&EG(regular_list), entry) {
        auto *resource = static_cast<zend_resource *>(Z_PTR_P(entry));
        if (resource->type == le_pconn && link_of(resource)->client == client)
            zend_list_close(resource);
    }
    ZEND_HASH_FOREACH_END();
    zend_hash_del(&EG(persistent_list), key);
}

/** Ends a persistent link whose agent is gone. The report comes last: it may run user code. */
void drop_dead_link(CLIENT *client, zend_string *key)
{
    zend_string *reason = zend_strpprintf(0, "PHP/RMON link lost (%s)", clnt_sperror(client, ""));
    drop_persistent(client, key);
    zend_error(E_WARNING, "%s", ZSTR_VAL(reason));
    zend_string_release(reason);
}

/** The persistent handle of this key, or a new one; null after a failure. */
CLIENT *persistent_client(const char *host, zend_string *key)
{
    // Looked up again after a loss: its report may have run code that connected anew.
    while (auto *entry = static_cast<zend_resource *>(zend_hash_find_ptr(&EG(persistent_list), key))) {
        if (entry->type != le_pconn)
            return nullptr;
        auto *client = static_cast<CLIENT *>(entry->ptr);
        if (!of_this_process(client)) {
            // Nothing is lost: the parent process has it.
            drop_persistent(client, key);
        } else {
            if (is_alive(client))
                return client;
            drop_dead_link(client, key);
        }
    }

    if (RMON_G(max_links) != -1 && RMON_G(num_links) >= RMON_G(max_links)) {
        zend_error(E_WARNING, "RMON: Too many open links (" ZEND_LONG_FMT ")", RMON_G(num_links));
        return nullptr;
    }
    // A switch, not a limit: any value but -1 forbids new persistent links.
    if (RMON_G(max_persistent) != -1) {
        zend_error(
            E_WARNING, "RMON: Too many open persistent links (" ZEND_LONG_FMT ")", RMON_G(num_persistent));
        return nullptr;
    }
    CLIENT *client = clnt_rmon_create(host);
    if (!client)
        return nullptr;
    zend_register_persistent_resource(ZSTR_VAL(key), ZSTR_LEN(key), client, le_pconn);
    RMON_G(num_links)++;
    RMON_G(num_persistent)++;
    return client;
}

zend_resource *connect_for_process(const char *host, zend_string *key)
{
    CLIENT *client = persistent_client(host, key);
    return client ? new_link(client, le_pconn) : nullptr;
}

void php_rmon_do_connect(script_call call, bool persistent)
{
    const char *host;
    if (!take(call, host))
        return;
    zend_string *key = zend_strpprintf(0, "rmon_%s", host);
    zend_resource *resource = persistent && RMON_G(allow_persistent) > 0 ? connect_for_process(host, key)
                                                                         : connect_for_request(host, key);
    zend_string_release(key);
    if (resource)
        ZVAL_RES(call.return_value, resource);
    else
        ZVAL_FALSE(call.return_value);
}

/** The link that rmon_close is asked to close; null after the engine's words for what is wrong. */
zend_resource *link_to_close(zend_execute_data *execute_data)
{
    zend_resource *resource = nullptr;
    if (ZEND_NUM_ARGS() == 0) {
        if (RMON_G(default_link) == -1) {
            zend_error(E_WARNING, "rmon_close(): no %s resource supplied", link_type_name);
            return nullptr;
        }
        resource = find_resource(RMON_G(default_link));
    } else {
        zval *argument = ZEND_CALL_ARG(execute_data, 1);
        if (Z_TYPE_P(argument) != IS_RESOURCE) {
            zend_error(
                E_WARNING, "rmon_close(): supplied argument is not a valid %s resource", link_type_name);
            return nullptr;
        }
        resource = Z_RES_P(argument);
    }
    if (is_link(resource))
        return resource;
    zend_error(E_WARNING, "rmon_close(): supplied resource is not a valid %s resource", link_type_name);
    return nullptr;
}

} // namespace

CLIENT *clnt_rmon_create(const char *host)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(RMON_G(default_port)));
    if (!resolve(host, address.sin_addr))
        return nullptr;

    CLIENT *client = connect_client(address, RMONRPC_PROGRAM, RMONRPC_VERSION, TIMEOUT);
    if (!client)
        keep_failure(address);
    return client;
}

const char *last_failed_connect()
{
    return failed_connect;
}

CLIENT *client_of(link_id link)
{
    const zend_resource *resource = find_resource(link.number);
    if (is_link(resource))
        return link_of(resource)->client;
    zend_error(E_WARNING, ZEND_LONG_FMT " is not a RMON/RPC conn id!", link.number);
    return nullptr;
}

void register_link_types(int module_number)
{
    le_conn = zend_register_list_destructors_ex(_close_rmon_conn, nullptr, link_type_name, module_number);
    le_pconn = zend_register_list_destructors_ex(
        forget_rmon_pconn, _close_rmon_pconn, link_type_name, module_number);
    pthread_atfork(nullptr, nullptr, begin_process);
}

} // namespace rmon

using namespace rmon;

PHP_FUNCTION(rmon_connect)
{
    php_rmon_do_connect({execute_data, return_value}, false);
}

PHP_FUNCTION(rmon_pconnect)
{
    php_rmon_do_connect({execute_data, return_value}, true);
}

PHP_FUNCTION(rmon_close)
{
    if (ZEND_NUM_ARGS() > 1) {
        wrong_parameter_count();
        return;
    }
    zend_resource *resource = link_to_close(execute_data);
    if (!resource)
        return;

    rmon_link *link = link_of(resource);
    link->references--;
    if (link->held) {
        // The module's own goes first; the link ends here when no variable names it any more.
        link->held = false;
        zend_list_delete(resource);
    } else if (link->references == 0) {
        zend_list_close(resource);
    }
    RETURN_TRUE;
}
