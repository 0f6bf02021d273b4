#pragma once

#include "platform/ado/errors.h"

#include <gtest/gtest.h>

/// Expects `statement` to throw AdoError whose first error has this number.
#define EXPECT_ADO_ERROR(statement, number)                                                                  \
    try {                                                                                                    \
        statement;                                                                                           \
        ADD_FAILURE() << #statement " did not throw";                                                        \
    } catch (const ::veldran::ado::AdoError& error) {                                                        \
        EXPECT_EQ(error.first().Number, number) << error.what();                                             \
    }
