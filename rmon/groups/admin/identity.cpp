// SPDX-License-Identifier: MIT
/* Local utilities: the appliance's identity, its host name, addresses as texts. */

#include "rmon/groups/admin/identity.h"

#include "rmon/answers.h"
#include "rmon/platform.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <cstdio>

using namespace rmon;

namespace {

/* ---- the settings file ------------------------------------------------------------ */

constexpr size_t settings_line = 255;

using settings_text = char[settings_line];

/* Known once per process. */
constinit int32_t norv_target_id = -1; // below 0: not known yet
constinit settings_text product_number;
constinit settings_text product_description;

/**
 * Takes the value of a line KEY="value". The opening quote is skipped whatever
 * it is; the closing one goes, and the line's end with it, only where it stands
 * right before the last character.
 */
bool read_value(const char *line, std::string_view key, settings_text &value)
{
    if (!std::string_view(line).starts_with(key))
        return false;
    line += key.size();
    if (*line)
        line++;
    std::memset(value, 0, sizeof value);
    const size_t length = strnlen(line, sizeof value - 1 - key.size());
    std::memcpy(value, line, length);
    if (length >= 2 && value[length - 2] == '"')
        value[length - 2] = '\0';
    return true;
}

/** 0 when the file tells the platform code, 1 otherwise. */
int read_norv_settings()
{
    FILE *settings = fopen(settings_file, "re");
    if (!settings) {
        zend_error(E_WARNING, "unable to read norv_settings file!");
        return 1;
    }
    int result = 1;
    char line[settings_line];
    while (fgets(line, sizeof line, settings)) {
        int target;
        if (sscanf(line, "NORV_TARGET_ID=%d", &target) == 1) {
            norv_target_id = target;
            result = 0;
        } else if (!read_value(line, "NORV_PROD_NO=", product_number)) {
            read_value(line, "NORV_PROD_DESCR=", product_description);
        }
    }
    fclose(settings);
    return result;
}

/** A text of the settings file. */
void return_setting(zval *return_value, const settings_text &text)
{
    target_identity();
    RETURN_STRING(text);
}

} // namespace

int32_t rmon::target_identity()
{
    if (norv_target_id < 0)
        read_norv_settings();
    return norv_target_id;
}

PHP_FUNCTION(norv_target_id) { RETURN_LONG(target_identity()); }
PHP_FUNCTION(norv_prod_no) { return_setting(return_value, product_number); }
PHP_FUNCTION(norv_prod_descr) { return_setting(return_value, product_description); }

PHP_FUNCTION(rmon_gethostname)
{
    char name[256];
    if (gethostname(name, sizeof name) != 0)
        RETURN_FALSE;
    RETURN_STR(zend_string_init(name, strnlen(name, sizeof name), 0));
}

/* ---- addresses as texts -------------------------------------------------------------- */

namespace {

struct address_family {
    int number;
    const char *name;
    uint32_t size;
};

constexpr address_family families[] = {
    {AF_INET, "AF_INET", sizeof(in_addr)},
    {AF_INET6, "AF_INET6", sizeof(in6_addr)},
};

/** The longest address of all families. */
using address_bytes = uint8_t[sizeof(in6_addr)];

/** Null after a warning. */
const address_family *find_family(zend_long number)
{
    for (const address_family &family : families)
        if (family.number == number)
            return &family;
    zend_error(E_WARNING, "rmon_inet_pton: unsupported address family!");
    return nullptr;
}

/** Integers only: nothing is converted. The messages name the other function, on purpose. */
bool read_address(const zval *argument, address_bytes &bytes)
{
    if (Z_TYPE_P(argument) != IS_ARRAY) {
        zend_error(E_WARNING, "rmon_inet_pton: addr is not array!");
        return false;
    }
    if (zend_hash_num_elements(Z_ARRVAL_P(argument)) > sizeof bytes) {
        zend_error(E_WARNING, "rmon_inet_pton: too many elements in array!");
        return false;
    }
    const zval *element;
    uint8_t *next = bytes;
    ZEND_HASH_FOREACH_VAL(Z_ARRVAL_P(argument), element) {
        ZVAL_DEREF(element);
        if (Z_TYPE_P(element) != IS_LONG) {
            zend_error(E_WARNING, "rmon_inet_pton: arr el not LONG!");
            return false;
        }
        *next++ = static_cast<uint8_t>(Z_LVAL_P(element));
    }
    ZEND_HASH_FOREACH_END();
    return true;
}

} // namespace

PHP_FUNCTION(rmon_inet_pton)
{
    zend_long number;
    const char *text;
    if (!take({execute_data, return_value}, number, text))
        return;
    const address_family *family = find_family(number);
    if (!family)
        RETURN_FALSE;
    address_bytes bytes;
    if (inet_pton(family->number, text, bytes) < 1) {
        zend_error(E_WARNING, "rmon_inet_pton: inet_pton(%s, %s) failed!", family->name, text);
        RETURN_FALSE;
    }
    set_bytes(return_value, bytes, family->size);
}

/** Bytes that the array doesn't have are 0. An unknown family is FALSE, every other mistake NULL. */
PHP_FUNCTION(rmon_inet_ntop)
{
    zend_long number;
    zval *argument;
    address_bytes bytes{};
    if (!take({execute_data, return_value}, number, argument) || !read_address(argument, bytes))
        return;
    const address_family *family = find_family(number);
    if (!family)
        RETURN_FALSE;
    char text[INET6_ADDRSTRLEN];
    if (!inet_ntop(family->number, bytes, text, sizeof text)) {
        zend_error(E_WARNING, "rmon_inet_ntop: inet_pton(%s) failed!", family->name);
        return;
    }
    RETURN_STRING(text);
}
