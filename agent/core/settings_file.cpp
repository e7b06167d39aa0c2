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

/* ---- hexadecimal ------------------------------------------------------------------ */

constexpr char digits[] = "0123456789abcdef";
constexpr std::size_t check_digits = 8;

void append_byte(std::string &text, uint8_t byte)
{
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

void append_check(std::string &text, uint32_t value)
{
    text += ' ';
    for (int shift = 24; shift >= 0; shift -= 8)
        append_byte(text, static_cast<uint8_t>(value >> shift));
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
