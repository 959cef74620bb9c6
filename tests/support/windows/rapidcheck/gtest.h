#pragma once

/// Stands in for RapidCheck's own header where its library is missing: its tests are compiled, and skipped when they
/// run.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#define RC_GTEST_PROP(Suite, Name, Arguments)                                                                          \
    [[maybe_unused]] static inline void property_##Suite##_##Name Arguments;                                           \
    TEST(Suite, Name) {                                                                                                \
        GTEST_SKIP() << "needs the library RapidCheck";                                                                \
    }                                                                                                                  \
    static inline void property_##Suite##_##Name Arguments
