// The rows that recordsets share, when memory runs out.
#include "platform/ado/cursor_rows.h"
#include "tests/support/failing_allocations.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

namespace veldran::test {
namespace {

using ado::CursorRows;
using Indexes = std::vector<std::size_t>;

constexpr std::size_t width = 3;
const int someone = 0; // stands for the recordset that edits

Value stored(std::size_t row, std::size_t column) {
    return std::to_string(row) + "." + std::to_string(column);
}

CursorRows storedRows(std::size_t count) {
    auto rows = std::make_unique<ado::RowSet>(std::vector<ado::ColumnInfo>(width));
    for (std::size_t cell = 0; cell < count * width; ++cell) {
        rows->append(stored(cell / width, cell % width));
    }
    return CursorRows(std::move(rows));
}

/// Does `action` to new rows over and over, with memory for one allocation more each time, until it succeeds;
/// after each failure the rows have to be as stored, and `then` goes on with them.
void failAtEveryAllocation(std::size_t count, const std::function<void(CursorRows&)>& action,
                           const std::function<void(CursorRows&)>& then) {
    std::size_t allocations = 0;
    for (;; ++allocations) {
        SCOPED_TRACE(std::to_string(count) + " rows, " + std::to_string(allocations) + " allocations");
        CursorRows rows = storedRows(count);
        try {
            const FailingAllocations noMemory(0, allocations);
            action(rows);
            break;
        } catch (const std::bad_alloc&) { // what is left is looked at outside
        }
        EXPECT_EQ(rows.size(), count);
        EXPECT_EQ(rows.pendingRows(), Indexes{});
        for (std::size_t row = 0; row < count; ++row) {
            EXPECT_EQ(rows.value(row, width - 1), stored(row, width - 1));
        }
        then(rows);
        if (::testing::Test::HasFailure()) {
            return;
        }
    }
    EXPECT_GT(allocations, 0U);
}

TEST(RowsWithoutMemory, HaveNoNewRowAndTakeOneLater) {
    // The first row of all, those for which the cells grow, the first one of a further block of them.
    for (const std::size_t count : {0U, 1U, 2U, 5U, 1024U}) {
        failAtEveryAllocation(
            count, [](CursorRows& rows) { rows.add(&someone); },
            [count](CursorRows& rows) {
                EXPECT_EQ(rows.add(&someone), count);
                EXPECT_EQ(rows.add(&someone), count + 1);
                rows.setValue(count, width - 1, "new");
                EXPECT_EQ(rows.pendingRows(), (Indexes{count, count + 1}));
                for (std::size_t column = 0; column < width; ++column) {
                    EXPECT_EQ(rows.value(count, column), column + 1 < width ? Value() : Value("new"));
                    EXPECT_TRUE(rows.value(count + 1, column).isNull());
                }
            });
    }
}

TEST(RowsWithoutMemory, BeginNoEditAndKeepTheStoredValuesForALaterOne) {
    failAtEveryAllocation(
        2, [](CursorRows& rows) { rows.edit(1, &someone); },
        [](CursorRows& rows) {
            EXPECT_EQ(rows.editor(1), nullptr);
            rows.edit(1, &someone);
            rows.setValue(1, 0, "new");
            rows.accept(1);
            EXPECT_EQ(rows.original(1, 0), stored(1, 0));
            EXPECT_EQ(rows.status(1), ado::adRecModified);
        });
}

} // namespace
} // namespace veldran::test
