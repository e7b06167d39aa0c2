// SPDX-License-Identifier: MIT
/* The appliance's identity, as its settings file tells. */
#pragma once

#include <cstdint>

namespace rmon {

/* Platform codes, which scripts know by the same names. */
inline constexpr int32_t NORV_TARGET_ORN_AP = 1;
inline constexpr int32_t NORV_TARGET_NORV2_AP = 3;
inline constexpr int32_t NORV_TARGET_NORV1_AP = 4;
inline constexpr int32_t NORV_TARGET_DESK = 5;
inline constexpr int32_t NORV_TARGET_TAMBO = 6;
inline constexpr int32_t NORV_TARGET_VELDRIN = 7;

/**
 * The platform code, -1 when there is none. The settings file is read once, and
 * again at each call until a code was found; that it can't be read is reported.
 */
int32_t target_identity();

} // namespace rmon
