// SPDX-License-Identifier: MIT
#include "agent/core/storage.h"

namespace {

/** Made when the first type is noted: there is no order among what runs before main(). */
std::vector<make_stored> &noted_types()
{
    static std::vector<make_stored> types;
    return types;
}

} // namespace

std::size_t note_stored_type(make_stored make)
{
    noted_types().push_back(make);
    return noted_types().size() - 1;
}

stored_objects make_stored_objects()
{
    stored_objects made;
    for (const make_stored make : noted_types())
        made.push_back(make());
    return made;
}
