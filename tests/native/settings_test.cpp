// SPDX-License-Identifier: MIT
/* The text of the bundled agent's settings file: no damage goes unnoticed, whichever bit it is. */
#include "agent/core/settings_file.h"
#include "tests/native/check.h"

namespace {

std::string sample()
{
    std::string text = begin_settings();
    add_part(text, "system");
    add_record(text, "system", std::vector<char>{0, 0, 0, 2, 'm', 'e', 0, 0});
    add_part(text, "history");
    add_part(text, "host");
    add_record(text, "host", std::vector<char>{'\x7f', '\x80', '\xff', 0});
    add_record(text, "host", std::vector<char>{});
    add_part(text, "sccp");
    end_settings(text);
    return text;
}

void round_trip()
{
    const std::string text = sample();
    settings_text read;
    check(take_settings_apart(text, read) == 0, "a file is read");
    check(
        read.parts
            == std::vector<std::string_view>{"system", "system", "history", "host", "host", "host", "sccp"},
        "parts of a file");
    check(read.records.size() == 3, "records of a file");
    if (read.records.size() != 3)
        return;
    check(read.records[0].part == "system" && read.records[0].line == 3, "place of a record");
    check(read.records[1].bytes == std::vector<char>{'\x7f', '\x80', '\xff', 0}, "bytes of a record");
    check(read.records[2].bytes.empty() && read.records[2].line == 7, "a record without bytes");
}

void every_bit()
{
    const std::string text = sample();
    int unnoticed = 0;
    for (std::size_t bit = 0; bit < text.size() * 8; bit++) {
        std::string damaged = text;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        settings_text read;
        unnoticed += take_settings_apart(damaged, read) == 0;
    }
    check(unnoticed == 0, std::to_string(unnoticed) + " flipped bits go unnoticed");
}

void every_end()
{
    const std::string text = sample();
    int unnoticed = 0;
    for (std::size_t size = 0; size < text.size(); size++) {
        settings_text read;
        unnoticed += take_settings_apart(std::string_view(text).substr(0, size), read) == 0;
    }
    settings_text read;
    unnoticed += take_settings_apart(text + "\n", read) == 0;
    check(unnoticed == 0, std::to_string(unnoticed) + " wrong ends go unnoticed");
}

/** Lines that are right each for itself, of another file or at another place. */
void wrong_lines()
{
    const std::string text = sample();
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at) + 1;
        lines.push_back(text.substr(at, end - at));
        at = end;
    }
    int unnoticed = 0;
    for (std::size_t left_out = 0; left_out < lines.size(); left_out++) {
        std::string damaged;
        for (std::size_t i = 0; i < lines.size(); i++)
            if (i != left_out)
                damaged += lines[i];
        settings_text read;
        unnoticed += take_settings_apart(damaged, read) == 0;
        damaged.clear();
        for (std::size_t i = 0; i < lines.size(); i++)
            damaged += i == left_out ? lines[i] + lines[i] : lines[i];
        settings_text twice;
        unnoticed += take_settings_apart(damaged, twice) == 0;
    }
    check(unnoticed == 0, std::to_string(unnoticed) + " lines that are missing or twice go unnoticed");
}

void older_form()
{
    settings_text read;
    check(
        take_settings_apart("rmon-agent settings 1\nsystem\nsystem 00ff\nend\n", read) == 0
            && read.records.size() == 1 && read.records[0].bytes == std::vector<char>{0, '\xff'},
        "a file without check values is read");
    for (const char *wrong :
         {"rmon-agent settings 1\nsystem 0\nend\n", "rmon-agent settings 1\nsystem 0G\nend\n",
          "rmon-agent settings 1\nsystem\n", "rmon-agent settings 1\nsystem\nend",
          "rmon-agent settings 0\nend\n"}) {
        settings_text none;
        check(take_settings_apart(wrong, none) != 0, std::string("damaged: ") + wrong);
    }
}

/* ---- the journal -------------------------------------------------------------------------- */

std::string lines_of(const std::string &owner)
{
    std::string lines;
    add_record(lines, "host", std::vector<char>(owner.begin(), owner.end()));
    return lines;
}

/** What is taken of a journal: the records, each with a line's end, and what is wrong. */
struct taken {
    int damaged;
    bool foreign;
    std::string records;
};

taken take(const std::string &journal)
{
    journal_text read;
    const std::string settings = sample();
    const int damaged = take_journal_apart(journal, settings, read);
    taken result{damaged, read.foreign, {}};
    for (const settings_record &record : read.lines.records)
        result.records +=
            std::string(record.part) + " " + std::string(record.bytes.begin(), record.bytes.end()) + "\n";
    return result;
}

void journal_lines()
{
    std::string lines = lines_of("me");
    add_record(lines, "-host", std::vector<char>{'y', 'o', 'u'});
    add_part(lines, "system");
    const std::string journal =
        begin_journal(sample()) + journal_write(lines) + journal_write(lines_of("again"));
    const taken read = take(journal);
    check(read.damaged == 0 && !read.foreign, "a journal is read");
    check(read.records == "host me\n-host you\nhost again\n", "records of a journal: " + read.records);
    journal_text parts;
    take_journal_apart(journal, sample(), parts);
    check(
        parts.lines.parts == std::vector<std::string_view>{"host", "-host", "system", "host"}
            && parts.lines.part_lines == std::vector<int>{3, 4, 5, 7},
        "places in a journal");

    const taken header = take(begin_journal(sample()));
    check(header.damaged == 0 && !header.foreign && header.records.empty(), "a journal of a header alone");
    const taken none = take("");
    check(none.damaged == 0 && !none.foreign && none.records.empty(), "an empty journal");
    const taken other = take(begin_journal(sample() + " ") + journal_write(lines));
    check(other.damaged == 0 && other.foreign && other.records.empty(), "a journal of another file");
}

/** However much of the last write there is, or zeros in the place of it: the writes before it are taken. */
void journal_ends()
{
    const std::string first = begin_journal(sample()) + journal_write(lines_of("first"));
    const std::string whole = first + journal_write(lines_of("second"));
    int wrong = 0;
    for (std::size_t size = 0; size < whole.size(); size++) {
        const std::string expected = size < first.size() ? "" : "host first\n";
        std::string zeros = whole.substr(0, size);
        zeros.resize(whole.size());
        for (const std::string &torn : {whole.substr(0, size), zeros}) {
            const taken read = take(torn);
            wrong += read.damaged != 0 || read.foreign || read.records != expected;
        }
    }
    check(wrong == 0, std::to_string(wrong) + " ends of a journal are not taken for what they are");
}

/** No flipped bit goes unnoticed. */
void journal_bits()
{
    const std::string whole =
        begin_journal(sample()) + journal_write(lines_of("first")) + journal_write(lines_of("second"));
    int unnoticed = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; bit++) {
        std::string damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        unnoticed += take(damaged).damaged == 0;
    }
    check(unnoticed == 0, std::to_string(unnoticed) + " flipped bits of a journal go unnoticed");
    // A line that has its check value, in a write that has not.
    std::string other = whole;
    const std::string second = lines_of("second");
    other.replace(other.find(second), second.size(), lines_of("third!"));
    check(take(other).damaged == 4, "another line in the place of a journal's");
}

} // namespace

void test_settings()
{
    check(check_value("123456789") == 0xe3069283, "the published check value");
    round_trip();
    every_bit();
    every_end();
    wrong_lines();
    older_form();
    journal_lines();
    journal_ends();
    journal_bits();
}
