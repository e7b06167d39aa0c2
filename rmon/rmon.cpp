// SPDX-License-Identifier: MIT
#include "rmon/rmon.h"

#include "rmon/arguments.h"
#include "rmon/connections.h"
#include "rmon/groups/admin/identity.h"
#include "rmon/platform.h"
#include "rmon/rows.h"
#include "rmon/rpc/rmonrpc_admin.h"

#include "ext/standard/info.h"
#include "php_ini.h"

#include <cstdlib>

#include <arpa/inet.h>
#include <netdb.h>

#include "rmon/rmon_arginfo.h"

using namespace rmon;

/** All functions, in the order of rmon.stub.php. */
static const zend_function_entry *const rmon_functions = ext_functions;

ZEND_DECLARE_MODULE_GLOBALS(rmon)

/* ---- directives ------------------------------------------------------------------- */

/** The agent's port where no value is configured: the environment's, else the services database's, else ours.
 */
static zend_long unconfigured_port()
{
    if (const char *environment = getenv("RMONRPC_PORT"))
        return atoi(environment);
    if (const servent *service = getservbyname("rmonrpc", "tcp"))
        return ntohs(static_cast<uint16_t>(service->s_port));
    return RMONRPC_PORT;
}

static ZEND_INI_MH(OnRmonPort)
{
    RMON_G(default_port) = new_value ? atoi(ZSTR_VAL(new_value)) : unconfigured_port();
    return SUCCESS;
}

PHP_INI_BEGIN()
    STD_PHP_INI_BOOLEAN(
        "rmon.allow_persistent", "1", PHP_INI_SYSTEM, OnUpdateLong, allow_persistent, zend_rmon_globals,
        rmon_globals)
    STD_PHP_INI_ENTRY_EX(
        "rmon.max_persistent", "-1", PHP_INI_SYSTEM, OnUpdateLong, max_persistent, zend_rmon_globals,
        rmon_globals, display_link_numbers)
    STD_PHP_INI_ENTRY_EX(
        "rmon.max_links", "-1", PHP_INI_SYSTEM, OnUpdateLong, max_links, zend_rmon_globals, rmon_globals,
        display_link_numbers)
    PHP_INI_ENTRY("rmon.default_port", nullptr, PHP_INI_ALL, OnRmonPort)
PHP_INI_END()

/* ---- constants ---------------------------------------------------------------------- */

struct named_integer {
    const char *name;
    zend_long value;
};

static const named_integer constants[] = {
    {"COMM_RO", COMM_RO},
    {"COMM_RW", COMM_RW},
    {"AF_INET", AF_INET},
    {"AF_INET6", AF_INET6},
    {"PDIR_FLAG_NETWORK", 1},
    {"PDIR_FLAG_IP", 2},
    {"PDIR_FLAG_LEAF", 4},
    {"PDIR_FLAG_EXTENSION", 8},
    {"PDIR_FLAG_IP_DESC", 16},
    {"PDIR_FLAG_AUTO_LEARN", 32},
    {"PDIR_FLAG_BASE_PROTO", 64},
    {"PDIR_FLAG_OTHER_PROTO", 128},
    {"NORV_TARGET_ORN_AP", NORV_TARGET_ORN_AP},
    {"NORV_TARGET_NORV2_AP", NORV_TARGET_NORV2_AP},
    {"NORV_TARGET_NORV1_AP", NORV_TARGET_NORV1_AP},
    {"NORV_TARGET_DESK", NORV_TARGET_DESK},
    {"NORV_TARGET_TAMBO", NORV_TARGET_TAMBO},
    {"NORV_TARGET_VELDRIN", NORV_TARGET_VELDRIN},
};

/** The engine's sockets extension brings some of the same names, with the same values. */
static void register_constants(int module_number)
{
    for (const named_integer &constant : constants)
        if (!zend_get_constant_str(constant.name, strlen(constant.name)))
            zend_register_long_constant(
                constant.name, strlen(constant.name), constant.value, CONST_CS | CONST_PERSISTENT,
                module_number);
}

/* ---- hooks ------------------------------------------------------------------------------ */

static void initialise_globals(void *globals)
{
    *static_cast<zend_rmon_globals *>(globals) = {};
}

static PHP_MINIT_FUNCTION(rmon)
{
    if (!engine_agrees()) {
        zend_error(E_CORE_WARNING, "rmon: built for an engine whose arrays lie differently in memory");
        return FAILURE;
    }
    REGISTER_INI_ENTRIES();
    register_link_types(module_number);
    rmon_module_entry.type = static_cast<unsigned char>(type);
    register_constants(module_number);
    prepare_rows();
    return SUCCESS;
}

static PHP_MSHUTDOWN_FUNCTION(rmon)
{
    UNREGISTER_INI_ENTRIES();
    forget_rows();
    return SUCCESS;
}

/** Normal links never outlive a request; what a broken-off request left of replies goes now. */
static PHP_RINIT_FUNCTION(rmon)
{
    RMON_G(default_link) = -1;
    RMON_G(num_links) = RMON_G(num_persistent);
    release_abandoned_replies();
    return SUCCESS;
}

static void print_count(const char *name, zend_long count)
{
    char text[MAX_LENGTH_OF_LONG + 1];
    snprintf(text, sizeof text, ZEND_LONG_FMT, count);
    php_info_print_table_row(2, name, text);
}

static PHP_MINFO_FUNCTION(rmon)
{
    php_info_print_table_start();
    php_info_print_table_row(2, "RMON Module", "enabled");
    print_count("Active Persistent Links", RMON_G(num_persistent));
    print_count("Active Links", RMON_G(num_links));
    php_info_print_table_end();
    DISPLAY_INI_ENTRIES();
    php_info_print_table_start();
    php_info_print_table_row(2, "Version", PHP_RMON_VERSION);
    if (*last_failed_connect())
        php_info_print_table_row(2, "Last Failed Connect", last_failed_connect());
    php_info_print_table_end();
}

PHP_FUNCTION(confirm_rmon_compiled)
{
    const char *module;
    if (take({execute_data, return_value}, module))
        RETURN_STR(
            zend_strpprintf(0, "Congratulations, you have successfully loaded module %s in PHP", module));
}

/* ---- entry ------------------------------------------------------------------------------- */

static const zend_module_dep dependencies[] = {ZEND_MOD_OPTIONAL("sockets") ZEND_MOD_END};

zend_module_entry rmon_module_entry = {
    STANDARD_MODULE_HEADER_EX,
    nullptr,
    dependencies,
    "rmon",
    rmon_functions,
    PHP_MINIT(rmon),
    PHP_MSHUTDOWN(rmon),
    PHP_RINIT(rmon),
    nullptr,
    PHP_MINFO(rmon),
    PHP_RMON_VERSION,
    PHP_MODULE_GLOBALS(rmon),
    initialise_globals,
    nullptr,
    nullptr,
    STANDARD_MODULE_PROPERTIES_EX};

#ifdef COMPILE_DL_RMON
ZEND_GET_MODULE(rmon)
#endif
