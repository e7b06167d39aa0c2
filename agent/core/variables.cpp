// SPDX-License-Identifier: MIT
#include "agent/core/variables.h"

#include "agent/core/variable.h"

#include <array>
#include <charconv>

namespace {

/** Numbers of an instance: more than any has. */
constexpr std::size_t max_numbers = 64;

/** Numbers with a dot before each; none when the text is something else. */
variable_instance numbers_of(std::string_view text, std::array<uint32_t, max_numbers> &numbers)
{
    std::size_t count = 0;
    const char *at = text.data();
    const char *const end = at + text.size();
    while (at != end && *at == '.' && count < max_numbers) {
        const auto [rest, error] = std::from_chars(at + 1, end, numbers[count++]);
        if (error != std::errc{})
            return {};
        at = rest;
    }
    return at == end ? variable_instance(numbers).first(count) : variable_instance();
}

/** The numbers behind one of a variable's names; none when this is no name of an instance of it. */
variable_instance
instance_of(std::string_view name, const char *known, std::array<uint32_t, max_numbers> &numbers)
{
    return known && name.starts_with(known) ? numbers_of(name.substr(std::string_view(known).size()), numbers)
                                            : variable_instance();
}

} // namespace

std::optional<variable_reading> read_variable(probe &agent, std::string_view name)
{
    const bool dotted = name.starts_with('.');
    if (dotted)
        name.remove_prefix(1);
    std::array<uint32_t, max_numbers> numbers{};
    for (const known_variable &one : known_variables()) {
        variable_instance instance = instance_of(name, one.identifier, numbers);
        if (instance.empty() && !dotted)
            instance = instance_of(name, one.name, numbers);
        uint64_t value = 0;
        if (!instance.empty())
            return one.read(agent, instance, value) ? std::optional(variable_reading{value, one.counter})
                                                    : std::nullopt;
    }
    return {};
}
