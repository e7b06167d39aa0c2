// SPDX-License-Identifier: MIT
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
 *
 * A journal has what was set since a certain settings file was written:
 *
 *     rmon-agent journal 1 SIZE FILE CHECK    which file: its size, and the check value of all of it
 *     write SIZE LINES CHECK                  for each write, the size of its lines and their check value
 *     PART CHECK                              what was there of the part is gone
 *     PART BYTES CHECK                        one more record, in the place of one with the same key
 *     -PART BYTES CHECK                       the record with this one's key is gone
 *
 * Numbers have eight hexadecimal digits. The last write may be there in part, or end in zeros: the process
 * or the machine ended before it was answered. All else that is not right is damage.
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

/** In front of a part's name: the record is gone. */
inline constexpr char gone_mark = '-';

/** The opening of the journal of a settings file. */
std::string begin_journal(std::string_view settings);

/** One write of these lines, which add_part() and add_record() made. */
std::string journal_write(std::string_view lines);

struct journal_text {
    bool foreign = false; // it belongs to another settings file; nothing of it is taken
    settings_text lines;  // of whole writes
};

/**
 * Takes a journal apart, whose text must stay where it is, next to the settings file's text. 0, or the number
 * of the first line that is damaged.
 */
int take_journal_apart(std::string_view text, std::string_view settings, journal_text &journal);
