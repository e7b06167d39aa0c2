// SPDX-License-Identifier: MIT
/*
 * What the tables keep while the agent runs: one object of each type that
 * storage() is asked for somewhere in the program, found by its type. So a
 * table's type is known where the table is used, and nowhere else.
 *
 * The types give themselves a place each before main() begins; a probe makes
 * all objects when it is made, and they go with it.
 */
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

struct probe;

using stored_objects = std::vector<std::shared_ptr<void>>;
using make_stored = std::shared_ptr<void> (*)();

/** Notes a type; its place. */
std::size_t note_stored_type(make_stored make);

/** An object of each type that was noted. */
stored_objects make_stored_objects();

const stored_objects &stored_objects_of(const probe &agent);

template <class Type> std::shared_ptr<void> make_stored_object()
{
    return std::make_shared<Type>();
}

template <class Type> inline const std::size_t stored_place = note_stored_type(make_stored_object<Type>);

template <class Type> Type &storage(probe &agent)
{
    return *static_cast<Type *>(stored_objects_of(agent)[stored_place<Type>].get());
}

template <class Type> const Type &storage(const probe &agent)
{
    return *static_cast<const Type *>(stored_objects_of(agent)[stored_place<Type>].get());
}
