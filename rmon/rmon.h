// SPDX-License-Identifier: MIT
/*
 * The module's shared declarations: its globals and what every other file of
 * the core and of the table families needs of the engine.
 */
#pragma once

#ifdef HAVE_CONFIG_H
#include "config.h"
#endif

#include "rmon/version.h"

#include "php.h"

#ifdef ZTS
#error                                                                                                       \
    "rmon keeps one set of globals, links and replies per process: build it for a PHP without thread safety (NTS)"
#endif

#define PHP_RMON_VERSION RMON_VERSION

extern zend_module_entry rmon_module_entry;
#define phpext_rmon_ptr &rmon_module_entry

ZEND_BEGIN_MODULE_GLOBALS(rmon)
zend_long default_link;     // resource id of the link opened last in this request, -1 when none
zend_long num_links;        // links open now, normal and persistent
zend_long num_persistent;   // persistent links open now
zend_long max_links;        // limit on num_links, -1 for none
zend_long max_persistent;   // -1 allows new persistent links, any other value forbids them
zend_long allow_persistent; // persistent links are made when greater than 0
zend_long default_port;     // TCP port of the agent
ZEND_END_MODULE_GLOBALS(rmon)

ZEND_EXTERN_MODULE_GLOBALS(rmon)
#define RMON_G(field) ZEND_MODULE_GLOBALS_ACCESSOR(rmon, field)

namespace rmon {

/** A call of one of our functions, as the engine hands it to the handler. */
struct script_call {
    zend_execute_data *execute_data;
    zval *return_value; // NULL until the handler sets it
};

} // namespace rmon

/** The call that runs, in the body of a PHP_FUNCTION(). */
#define CALL (rmon::script_call{execute_data, return_value})
