// SPDX-License-Identifier: MIT
#include "agent/voice/scenario.h"

#include "agent/voice/fields.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

/** Phones and calls of one protocol. */
constexpr std::size_t max_entries = 10000;

/** Characters of a line. */
constexpr std::size_t max_line = 1024;

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string_view{}
                              : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/** The next word, which is taken off the text. */
std::string_view take_word(std::string_view &text)
{
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    const std::string_view word = text.substr(0, end);
    text = trimmed(text.substr(end));
    return word;
}

bool read_seconds(std::string_view value, uint32_t &seconds)
{
    constexpr uint32_t max_seconds = 365 * 24 * 3600;
    const char *end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, seconds);
    return error == std::errc{} && rest == end && seconds <= max_seconds;
}

/** The section in which the reader is: takes one "key = value". Empty, or what is wrong. */
using take_value = std::string (*)(voice_scenario &scenario, std::string_view key, std::string_view value);

std::string unknown(std::string_view key)
{
    return "there is no field " + std::string(key);
}

std::string senseless(std::string_view key, std::string_view value)
{
    return std::string(key) + " can't be " + std::string(value);
}

std::string
put(void *record, std::span<const voice_field> fields, std::string_view key, std::string_view value)
{
    const voice_field *field = find_field(fields, key);
    if (!field)
        return unknown(key);
    return put_field(record, *field, value) ? std::string{} : senseless(key, value);
}

template <auto Protocol, auto Fields>
std::string phone_value(voice_scenario &scenario, std::string_view key, std::string_view value)
{
    return put(&(scenario.*Protocol).phones.back().identity, Fields(), key, value);
}

std::string put_call(sccp_call &call, std::string_view key, std::string_view value)
{
    constexpr std::string_view prefix = "callee_";
    if (key.starts_with(prefix))
        return put(&call.callee_qual, sccp_call_fields(), key.substr(prefix.size()), value);
    return put(&call.qual, sccp_call_fields(), key, value);
}

std::string put_call(h323_call &call, std::string_view key, std::string_view value)
{
    return put(&call.qual, h323_call_fields(), key, value);
}

std::string put_call(mgcp_call &call, std::string_view key, std::string_view value)
{
    return put(&call.record, mgcp_call_fields(), key, value);
}

template <auto Protocol>
std::string call_value(voice_scenario &scenario, std::string_view key, std::string_view value)
{
    auto &part = scenario.*Protocol;
    auto &call = part.calls.back();
    if (key == "after" || key == "duration")
        return read_seconds(value, key == "after" ? call.times.after : call.times.duration)
                   ? std::string{}
                   : senseless(key, value);
    if (key != "caller" && key != "callee")
        return put_call(call, key, value);
    const auto phone = std::ranges::find_if(part.phones, [&](const auto &one) { return one.name == value; });
    if (phone == part.phones.end())
        return "there is no phone " + std::string(value) + " before";
    (key == "caller" ? call.caller : call.callee) = *phone;
    return {};
}

/** Begins a section of one protocol: "phone NAME" or "call". Empty, or what is wrong. */
template <auto Protocol, auto PhoneFields>
std::string begin_section(voice_scenario &scenario, std::string_view rest, take_value &take)
{
    auto &part = scenario.*Protocol;
    const std::string_view what = take_word(rest);
    if (what == "phone" && !rest.empty()) {
        if (std::ranges::any_of(part.phones, [&](const auto &one) { return one.name == rest; }))
            return "there is a phone " + std::string(rest) + " already";
        part.phones.emplace_back().name = rest;
        take = phone_value<Protocol, PhoneFields>;
    } else if (what == "call" && rest.empty()) {
        part.calls.emplace_back();
        take = call_value<Protocol>;
    } else {
        return "a section is [PROTOCOL phone NAME] or [PROTOCOL call]";
    }
    return part.phones.size() > max_entries || part.calls.size() > max_entries ? "there are too many"
                                                                               : std::string{};
}

std::string begin_section(voice_scenario &scenario, std::string_view header, take_value &take)
{
    take = nullptr;
    const std::string_view protocol = take_word(header);
    if (protocol == "sccp")
        return begin_section<&voice_scenario::sccp, sccp_phone_fields>(scenario, header, take);
    if (protocol == "h323")
        return begin_section<&voice_scenario::h323, h323_phone_fields>(scenario, header, take);
    if (protocol == "mgcp")
        return begin_section<&voice_scenario::mgcp, mgcp_phone_fields>(scenario, header, take);
    return "a section's protocol is sccp, h323 or mgcp";
}

std::string read_line(voice_scenario &scenario, std::string_view line, take_value &take)
{
    line = trimmed(line);
    if (line.empty() || line[0] == '#' || line[0] == ';')
        return {};
    if (line.front() == '[')
        return line.back() == ']' ? begin_section(scenario, trimmed(line.substr(1, line.size() - 2)), take)
                                  : "a section's header ends with ]";
    const std::size_t equals = line.find('=');
    if (equals == line.npos)
        return "neither a section nor KEY = VALUE";
    if (!take)
        return "a value before the first section";
    return take(scenario, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
}

/** Sorts the calls. False when one has no parties. */
template <class Part> bool finish(Part &part)
{
    std::ranges::stable_sort(part.calls, {}, [](const auto &call) { return call.times.after; });
    return std::ranges::none_of(
        part.calls, [](const auto &call) { return call.caller.name.empty() || call.callee.name.empty(); });
}

} // namespace

std::string read_scenario(voice_scenario &scenario, const std::string &path)
{
    std::FILE *file = std::fopen(path.c_str(), "re");
    if (!file)
        return "cannot read " + path + ": " + std::strerror(errno);
    take_value take = nullptr;
    std::string wrong;
    char line[max_line + 2];
    for (int number = 1; wrong.empty() && std::fgets(line, sizeof line, file); number++) {
        wrong = std::strlen(line) > max_line ? "the line is too long" : read_line(scenario, line, take);
        if (!wrong.empty())
            wrong.insert(0, path + " line " + std::to_string(number) + ": ");
    }
    if (wrong.empty() && std::ferror(file))
        wrong = "cannot read " + path + ": " + std::strerror(errno);
    std::fclose(file);
    if (wrong.empty() && !(finish(scenario.sccp) && finish(scenario.h323) && finish(scenario.mgcp)))
        wrong = path + ": a call needs a caller and a callee";
    return wrong;
}
