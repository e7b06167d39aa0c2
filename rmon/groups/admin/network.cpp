// SPDX-License-Identifier: MIT
/* The appliance's network settings: addresses, host name, name servers. */

#include "rmon/answers.h"
#include "rmon/groups/admin/identity.h"
#include "rmon/platform.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <cstdlib>

using namespace rmon;

namespace {

/** Has the appliance write out the settings that its agent just changed. What becomes of that is not told. */
void saveNetConfig()
{
    const char *command;
    switch (target_identity()) {
    case NORV_TARGET_NORV2_AP:
    case NORV_TARGET_NORV1_AP:
        command = net_conf_init_command;
        break;
    case NORV_TARGET_VELDRIN:
        command = vd_net_conf_command;
        break;
    default:
        return;
    }
    [[maybe_unused]] const int status = system(command);
}

/** The agent's answer to a change of the settings, which are then written out, whatever the answer is. */
void return_saved(script_call call, int32_t *reply)
{
    return_integer(call, reply);
    if (reply)
        saveNetConfig();
}

/* ---- addresses -------------------------------------------------------------------------- */

using I = rmonrpc_ipconfig_t;

/** The word's bytes in memory, as inet_ntoa shows them. */
void show_word(zval *slot, const uint32_t &word)
{
    set_dotted(slot, reinterpret_cast<const uint8_t *>(&word));
}

template <auto Member> using dotted = column<member_key<Member>, set_by<show_word>, Member>;

using ipconfig_row = row_shape<
    status<&I::status>,
    dotted<&I::ipAddress>,
    dotted<&I::ipNetmask>,
    dotted<&I::ipBroadcast>,
    dotted<&I::ipGateway>,
    field<&I::ipInterface>>;

/** Warns with the address's name when the text is not an address. */
bool parse_address(const char *text, const char *name, uint32_t &word)
{
    in_addr parsed;
    if (!inet_aton(text, &parsed)) {
        zend_error(E_WARNING, "rmon_set_ipconfig: invalid IP %s!\n", name);
        return false;
    }
    word = parsed.s_addr;
    return true;
}

/* ---- name servers ------------------------------------------------------------------------ */

/** The names as they stand in the script's array, which must outlive them; false when there are other things
 * in it. */
bool read_names(HashTable *elements, rmonrpc_sys_resolver_name *names)
{
    const zval *element;
    ZEND_HASH_FOREACH_VAL(elements, element) {
        ZVAL_DEREF(element);
        if (Z_TYPE_P(element) != IS_STRING)
            return false;
        *names++ = {Z_STRVAL_P(element)};
    }
    ZEND_HASH_FOREACH_END();
    return true;
}

} // namespace

PHP_FUNCTION(rmon_get_ipconfig)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_row<ipconfig_row>(call, ask(call, sys_ipconf_get_1, link, 0, "rmon_get_ipconfig"));
}

PHP_FUNCTION(rmon_set_ipconfig)
{
    const script_call call{execute_data, return_value};
    link_id link;
    const char *address, *netmask, *broadcast, *gateway;
    I row{};
    if (ZEND_NUM_ARGS() != 5 && !counted(call, 6))
        return;
    if (ZEND_NUM_ARGS() == 6 && !convert_from(call, 6, row.ipInterface))
        return;
    if (!convert_from(call, 1, link) || !connected(call, link)
        || !convert_from(call, 2, address, netmask, broadcast, gateway))
        return;
    if (!parse_address(address, "address", row.ipAddress) || !parse_address(netmask, "netmask", row.ipNetmask)
        || !parse_address(broadcast, "broadcast", row.ipBroadcast)
        || !parse_address(gateway, "gateway", row.ipGateway))
        RETURN_FALSE;
    return_saved(call, ask(call, sys_ipconf_set_1, link, row, "rmon_set_ipconfig"));
}

/** This machine's own name. */
PHP_FUNCTION(rmon_get_hostname)
{
    char name[256]{};
    gethostname(name, sizeof name - 1);
    RETURN_STRING(name);
}

PHP_FUNCTION(rmon_set_hostname)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_sys_hostname_t row{};
    if (take_linked(call, link, row.hostname))
        return_saved(call, ask(call, sys_hostname_set_1, link, row, "rmon_set_hostname"));
}

/** The names alone: the status is not shown. */
PHP_FUNCTION(rmon_get_resolvers)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (!take(call, link))
        return;
    rmonrpc_sys_resolvers_t *reply = ask(call, sys_resolvers_get_1, link, {}, "rmon_get_resolvers");
    if (!reply)
        return;
    zend_array *names = make_list(
        reply->resolvers.length, [=](zval *name, uint32_t i) { set(name, reply->resolvers.value[i]); });
    release(reply);
    RETURN_ARR(names);
}

PHP_FUNCTION(rmon_set_resolvers)
{
    const script_call call{execute_data, return_value};
    link_id link;
    zval *argument;
    if (!take_linked(call, link, argument))
        return;
    ZVAL_DEREF(argument);
    if (Z_TYPE_P(argument) != IS_ARRAY) {
        zend_error(E_WARNING, "Expected array as second parameter");
        RETURN_FALSE;
    }
    const uint32_t count = zend_hash_num_elements(Z_ARRVAL_P(argument));
    auto *names =
        static_cast<rmonrpc_sys_resolver_name *>(std::malloc(count * sizeof(rmonrpc_sys_resolver_name)));
    if (!names && count) {
        zend_error(E_WARNING, "malloc failed!\n");
        RETURN_FALSE;
    }
    // The names are freed before anything is reported: a report need not come back.
    const bool all_names = read_names(Z_ARRVAL_P(argument), names);
    const rmonrpc_sys_resolvers_t row{0, {count, names}};
    CLIENT *client = client_of(link);
    int32_t *reply = all_names ? sys_resolvers_set_1(&row, client) : nullptr;
    std::free(names);
    RETVAL_FALSE;
    if (!all_names)
        zend_error(E_WARNING, "unexpected error");
    else if (!reply)
        report_failure(client, "rmon_set_resolvers");
    return_saved(call, reply);
}
