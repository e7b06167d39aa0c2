/*
 * The text of the settings file, without what it means.
 *
 *     rmon-agent settings 2
 *     PART CHECK                for each part that is kept, with records or without
 *     PART BYTES CHECK          for each of its records, its bytes in hexadecimal
 *     end CHECK
 *
 * A line's check value is the CRC-32C of what stands before it in the line, in
 * eight digits; the last line's that of the whole text before the value. Files
 * of form 1, which have no check values, are read as well.
 */
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** CRC-32C (Castagnoli), of "123456789" e3069283. */
uint32_t check_value(std::string_view text);

struct settings_record {
    std::string_view part; // in the text
    std::vector<char> bytes;
    int line; // of the file, from 1 on
};

struct settings_text {
    std::vector<std::string_view> parts; // each that has a line, as often as it has one
    std::vector<int> part_lines;         // of parts
    std::vector<settings_record> records;
};

/** Takes a file's text apart, which must stay where it is. 0, or the number of the first line that is
 * damaged. */
int take_settings_apart(std::string_view text, settings_text &settings);

std::string begin_settings();
void add_part(std::string &text, std::string_view part);
void add_record(std::string &text, std::string_view part, std::span<const char> bytes);
void end_settings(std::string &text);
