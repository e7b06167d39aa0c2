// SPDX-License-Identifier: MIT
/* Protocol directory (RFC 2021, protocolDirTable), and descriptions of protocols from a local file. */

#include "rmon/answers.h"
#include "rmon/platform.h"

#include <cstdio>

using namespace rmon;

namespace {

/* ---- the directory --------------------------------------------------------------- */

/** A protocol's identifier or its parameters: an address whose elements must be integers already. */
struct identifier : address {};

/** The first element that is not an integer; null when all of them are. */
const zval *other_than_integer(HashTable *elements)
{
    zval *element;
    ZEND_HASH_FOREACH_VAL(elements, element) {
        ZVAL_DEREF(element);
        if (Z_TYPE_P(element) != IS_LONG)
            return element;
    }
    ZEND_HASH_FOREACH_END();
    return nullptr;
}

/** Too many elements are reported before the type of any. */
bool convert(script_call call, zval *argument, identifier &to)
{
    ZVAL_DEREF(argument);
    if (Z_TYPE_P(argument) == IS_ARRAY && zend_hash_num_elements(Z_ARRVAL_P(argument)) <= max_address_bytes) {
        if (const zval *other = other_than_integer(Z_ARRVAL_P(argument))) {
            zend_error(E_WARNING, "addr element not a LONG (%d)!", type_number(other));
            ZVAL_FALSE(call.return_value);
            return false;
        }
    }
    return convert(call, argument, static_cast<address &>(to));
}

using R = rmonrpc_pdir_t;

using pdir_row = row_shape<
    status<&R::status>,
    field<&R::protocolDirID>,
    field<&R::protocolDirParameters>,
    field<&R::protocolDirLocalIndex>,
    field<&R::protocolDirDescr>,
    field<&R::protocolDirType>,
    field<&R::protocolDirAddressMapConfig>,
    field<&R::protocolDirHostConfig>,
    field<&R::protocolDirMatrixConfig>,
    field<&R::protocolDirOwner>,
    field<&R::protocolDirStatus>,
    field<&R::protocolDirArtConfig>,
    field<&R::is_leaf>,
    field<&R::is_network>,
    field<&R::flags>>;

/** Reports under the address map's label, on purpose. */
void rmon_pdir_get(script_call call, int32_t getType)
{
    link_id link;
    int32_t count;
    identifier id, parameters;
    if (!take_rows_linked(call, getType, count, link, id, parameters))
        return;
    const rmonrpc_pdir_key_t key{list_of(id), list_of(parameters), getType, count};
    return_rows<pdir_row>(call, ask(call, pdir_get_1, link, key, "addrmap_entry_get"), getType);
}

/** Narrower than the row found by identifier. */
using pdir_byidx_row = row_shape<
    status<&R::status>,
    field<&R::protocolDirID>,
    field<&R::protocolDirParameters>,
    field<&R::protocolDirLocalIndex>,
    field<&R::protocolDirDescr>,
    field<&R::protocolDirAddressMapConfig>,
    field<&R::protocolDirHostConfig>,
    field<&R::protocolDirMatrixConfig>,
    field<&R::protocolDirArtConfig>,
    field<&R::is_leaf>,
    field<&R::is_network>,
    field<&R::flags>,
    left_out<&R::protocolDirType, &R::protocolDirOwner, &R::protocolDirStatus>>;

void pdir_byidx_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<pdir_byidx_row>(call, ask(call, pdir_byidx_get_1, link, key, unreported));
}

/* ---- descriptions ------------------------------------------------------------------ *
 *
 * The file holds macros like
 *
 *     ip PROTOCOL-IDENTIFIER
 *         ...
 *         DESCRIPTION
 *             "The Internet Protocol,
 *              version 4."
 */

/** Room for a description and its terminating zero; what is longer is cut. */
using description = char[1024];

/** Room for a line. */
using line_buffer = char[1023];

/** Reads a line, or as much of a longer one as fits; false at the end of the file and on errors. */
bool next_line(FILE *file, line_buffer &buffer, std::string_view &line)
{
    size_t length = 0;
    for (int c = 0; length < sizeof buffer && c != '\n' && (c = std::fgetc(file)) != EOF;)
        buffer[length++] = static_cast<char>(c);
    line = {buffer, length};
    return length > 0 && !std::ferror(file);
}

/** A line as a text, which a zero byte ends like the line's own end. */
std::string_view text_of(std::string_view line)
{
    return line.substr(0, line.find_first_of(std::string_view{"\n\0", 2}));
}

/** Whether a macro of this very name begins in a line. */
bool is_header(std::string_view line, std::string_view name)
{
    if (!line.starts_with(name))
        return false;
    line.remove_prefix(name.size());
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return line.starts_with("PROTOCOL-IDENTIFIER");
}

/** Reads up to the description of a macro, which begins on the line behind the keyword's. */
bool find_description(FILE *file, std::string_view name)
{
    line_buffer buffer;
    std::string_view line;
    do {
        if (!next_line(file, buffer, line))
            return false;
    } while (!is_header(line, name));
    do {
        if (!next_line(file, buffer, line))
            return false;
    } while (text_of(line).find("DESCRIPTION") == line.npos);
    return true;
}

/**
 * Copies what stands before the second quote, the first one left out: line
 * breaks vanish and runs of spaces shrink to one, so that a continued line's
 * indentation parts its words from those before.
 */
bool copy_description(FILE *file, description &to)
{
    line_buffer buffer;
    std::string_view line;
    size_t length = 0;
    bool behind_space = false, inside_quotes = false, complete = false;
    while (!complete && next_line(file, buffer, line)) {
        line = text_of(line);
        for (size_t i = 0; i < line.size() && !complete; i++) {
            const char c = line[i];
            if (c == '"') {
                complete = inside_quotes;
                inside_quotes = true;
            } else if (c != ' ' || !behind_space) {
                to[length++] = c;
                behind_space = c == ' ';
                complete = length == sizeof to - 1;
            }
        }
    }
    to[complete ? length : 0] = '\0';
    return complete;
}

/** Looks a protocol's description up. 0, or -1 when there is none, with an empty text. */
int getprotdesc(std::string_view name, description &to)
{
    to[0] = '\0';
    // Asked for under this name, ether2 is compared at the longer name's length, at which nothing matches.
    if (name.empty() || name == "w-ether2")
        return -1;
    FILE *file = std::fopen(protocol_description_file, "re");
    if (!file)
        return -1;
    const bool found = find_description(file, name) && copy_description(file, to);
    std::fclose(file);
    return found ? 0 : -1;
}

} // namespace

PHP_FUNCTION(rmon_pdir_lastchange_get)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_integer(call, ask(call, pdir_lastchange_get_1, link, {}, unreported));
}

PHP_FUNCTION(rmon_pdir_get) { rmon_pdir_get(CALL, GET); }
PHP_FUNCTION(rmon_pdir_getnext) { rmon_pdir_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_pdir_getbulk) { rmon_pdir_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_pdir_byidx_get) { pdir_byidx_get(CALL, GET); }
PHP_FUNCTION(rmon_pdir_byidx_getnext) { pdir_byidx_get(CALL, GETNEXT); }

/** Converts the identifiers before the other arguments: their errors come before a report about the link. */
PHP_FUNCTION(rmon_pdir_set)
{
    const script_call call{execute_data, return_value};
    identifier id, parameters;
    link_id link;
    R row{};
    if (!counted(call, 10) || !convert_from(call, 2, id, parameters) || !convert_from(call, 1, link)
        || !convert_from(
            call, 4, row.protocolDirDescr, row.protocolDirAddressMapConfig, row.protocolDirHostConfig,
            row.protocolDirMatrixConfig, row.protocolDirArtConfig, row.protocolDirOwner,
            row.protocolDirStatus))
        return;
    row.protocolDirID = list_of(id);
    row.protocolDirParameters = list_of(parameters);
    return_integer(call, ask(call, pdir_set_1, link, row, "rmon_pdir_set"));
}

PHP_FUNCTION(rmon_getprotdesc)
{
    const script_call call{execute_data, return_value};
    std::string_view name;
    if (!take(call, name))
        return;
    description text;
    if (getprotdesc(name, text) == 0)
        RETURN_STRING(text);
    RETURN_FALSE;
}
