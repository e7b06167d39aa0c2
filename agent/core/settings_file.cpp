// SPDX-License-Identifier: MIT
#include "agent/core/settings_file.h"

#include <array>

namespace {

constexpr std::string_view opening = "rmon-agent settings 2\n";
constexpr std::string_view closing = "end ";

/** The form without check values. */
constexpr std::string_view old_opening = "rmon-agent settings 1\n";
constexpr std::string_view old_closing = "end\n";

constexpr std::array<uint32_t, 256> make_remainders()
{
    constexpr uint32_t polynomial = 0x82f63b78; // bits reversed
    std::array<uint32_t, 256> table{};
    for (uint32_t byte = 0; byte < table.size(); byte++) {
        uint32_t value = byte;
        for (int bit = 0; bit < 8; bit++)
            value = value & 1 ? value >> 1 ^ polynomial : value >> 1;
        table[byte] = value;
    }
    return table;
}

constexpr std::array<uint32_t, 256> remainders = make_remainders();

constexpr uint32_t crc32c(std::string_view text)
{
    uint32_t value = UINT32_MAX;
    for (const char c : text)
        value = value >> 8 ^ remainders[(value ^ static_cast<uint8_t>(c)) & 0xff];
    return ~value;
}

static_assert(crc32c("123456789") == 0xe3069283);

constexpr std::string_view journal_opening = "rmon-agent journal 1 ";
constexpr std::string_view write_opening = "write ";

/* ---- hexadecimal ------------------------------------------------------------------ */

constexpr char digits[] = "0123456789abcdef";
constexpr std::size_t check_digits = 8;

void append_byte(std::string &text, uint8_t byte)
{
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

void append_number(std::string &text, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        append_byte(text, static_cast<uint8_t>(value >> shift));
}

void append_check(std::string &text, uint32_t value)
{
    text += ' ';
    append_number(text, value);
    text += '\n';
}

int digit(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/** False when the text is no bytes in hexadecimal. */
bool read_hex(std::string_view text, std::vector<char> &bytes)
{
    bytes.clear();
    if (text.size() % 2 != 0)
        return false;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = digit(text[i]);
        const int low = digit(text[i + 1]);
        if (high < 0 || low < 0)
            return false;
        bytes.push_back(static_cast<char>(high << 4 | low));
    }
    return true;
}

/** Whether the text is the check value of this other one. */
bool is_check_of(std::string_view value, std::string_view text)
{
    std::string right;
    append_check(right, crc32c(text));
    return value == std::string_view(right).substr(1, check_digits);
}

/** Takes the check value and the space before it off a line. False when it is not the line's. */
bool take_check(std::string_view &line)
{
    if (line.size() <= check_digits || line[line.size() - check_digits - 1] != ' ')
        return false;
    const std::string_view checked = line.substr(0, line.size() - check_digits - 1);
    if (!is_check_of(line.substr(checked.size() + 1), checked))
        return false;
    line = checked;
    return true;
}

/** What is left of a line without its check value: a part, or one of its records. */
bool take_line(std::string_view line, int number, settings_text &settings)
{
    const std::size_t space = line.find(' ');
    settings.parts.push_back(line.substr(0, space));
    settings.part_lines.push_back(number);
    if (space == line.npos)
        return true;
    settings_record &record = settings.records.emplace_back();
    record.part = settings.parts.back();
    record.line = number;
    return read_hex(line.substr(space + 1), record.bytes);
}

/* ---- the journal ------------------------------------------------------------------ */

/** A line about some bytes: their size and check value, and its own. Each with the same opening is as long.
 */
std::string line_about(std::string_view begin, std::string_view bytes)
{
    std::string line(begin);
    append_number(line, static_cast<uint32_t>(bytes.size()));
    line += ' ';
    append_number(line, crc32c(bytes));
    append_check(line, crc32c(line));
    return line;
}

constexpr std::size_t line_size(std::string_view begin)
{
    return begin.size() + 3 * (check_digits + 1);
}

/** Takes a number of eight digits, and the space or the line's end behind it. */
uint32_t take_number(std::string_view &text)
{
    uint32_t value = 0;
    for (const char c : text.substr(0, check_digits))
        value = value << 4 | static_cast<uint32_t>(digit(c) & 15);
    text.remove_prefix(check_digits + 1);
    return value;
}

/** Takes the line about some bytes that a text begins with. False when it is not right. */
bool take_line_about(std::string_view &text, std::string_view begin, uint32_t &size, uint32_t &check)
{
    std::string_view line = text.substr(0, line_size(begin));
    if (line.size() < line_size(begin) || !line.starts_with(begin) || line.back() != '\n')
        return false;
    std::string_view checked = line.substr(0, line.size() - 1);
    if (!take_check(checked))
        return false;
    text.remove_prefix(line.size());
    line.remove_prefix(begin.size());
    size = take_number(line);
    check = take_number(line);
    return true;
}

/** Whether a write that is not right was never finished: a file system may have kept its size, and zeros. */
bool unfinished(std::string_view rest, std::size_t needed)
{
    return rest.size() < needed || rest.back() == '\0';
}

/** The lines of one write, the first of which has this number. False: that one is damaged. */
bool take_write(std::string_view lines, int &number, settings_text &settings)
{
    while (!lines.empty()) {
        const std::size_t end = lines.find('\n');
        if (end == lines.npos)
            return false;
        std::string_view line = lines.substr(0, end);
        if (!take_check(line) || !take_line(line, number, settings))
            return false;
        lines.remove_prefix(end + 1);
        number++;
    }
    return true;
}

} // namespace

uint32_t check_value(std::string_view text)
{
    return crc32c(text);
}

int take_settings_apart(std::string_view text, settings_text &settings)
{
    const bool old = text.starts_with(old_opening);
    if (!old && !text.starts_with(opening))
        return 1;
    std::size_t at = opening.size();
    for (int number = 2;; number++) {
        const std::string_view rest = text.substr(at);
        if (old && rest == old_closing)
            return 0;
        const std::size_t end = rest.find('\n');
        if (end == rest.npos)
            return number;
        std::string_view line = rest.substr(0, end);
        if (!old && line.starts_with(closing)) {
            const bool last = at + end + 1 == text.size();
            return last && is_check_of(line.substr(closing.size()), text.substr(0, at + closing.size() - 1))
                       ? 0
                       : number;
        }
        if ((!old && !take_check(line)) || !take_line(line, number, settings))
            return number;
        at += end + 1;
    }
}

std::string begin_settings()
{
    return std::string(opening);
}

void add_part(std::string &text, std::string_view part)
{
    text += part;
    append_check(text, crc32c(part));
}

void add_record(std::string &text, std::string_view part, std::span<const char> bytes)
{
    const std::size_t begin = text.size();
    text += part;
    text += ' ';
    for (const char byte : bytes)
        append_byte(text, static_cast<uint8_t>(byte));
    append_check(text, crc32c(std::string_view(text).substr(begin)));
}

void end_settings(std::string &text)
{
    text += closing.substr(0, closing.size() - 1);
    append_check(text, crc32c(text));
}

std::string begin_journal(std::string_view settings)
{
    return line_about(journal_opening, settings);
}

std::string journal_write(std::string_view lines)
{
    std::string text = line_about(write_opening, lines);
    text += lines;
    return text;
}

int take_journal_apart(std::string_view text, std::string_view settings, journal_text &journal)
{
    if (text.empty())
        return 0;
    std::string_view rest = text;
    uint32_t size = 0;
    uint32_t check = 0;
    if (!take_line_about(rest, journal_opening, size, check))
        return unfinished(rest, line_size(journal_opening)) ? 0 : 1;
    journal.foreign = size != settings.size() || check != crc32c(settings);
    for (int number = 2; !rest.empty() && !journal.foreign;) {
        if (!take_line_about(rest, write_opening, size, check))
            return unfinished(rest, line_size(write_opening)) ? 0 : number;
        const std::string_view lines = rest.substr(0, size);
        if (lines.size() < size || crc32c(lines) != check)
            return unfinished(rest, size) ? 0 : number;
        number++;
        if (!take_write(lines, number, journal.lines))
            return number;
        rest.remove_prefix(size);
    }
    return 0;
}
