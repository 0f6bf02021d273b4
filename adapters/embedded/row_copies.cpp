#include "adapters/embedded/row_copies.h"

#include <algorithm>
#include <new>

namespace veldran::embedded {

namespace {

// More than so many take room for nothing: one pass over both tables is as good.
constexpr std::size_t worthNoting = 500'000;

// Looking a row up costs about as much as passing over so many.
constexpr std::int64_t sparse = 8;

} // namespace

void RowCopies::made(const RowCopy& copy, std::int64_t rows, std::int64_t originalRows) {
    forget(copy.to); // counts as a change of what is answered, too
    Pair& pair = pairs_.emplace_back(Pair{copy.from, copy.to, rows, originalRows, {}});
    for (const std::string& column : copy.columns) {
        pair.changed[column];
    }
}

void RowCopies::added(const RowCopy& copy, std::int64_t rows) {
    ++state_;
    uniform_.forget(copy.to);
    std::erase_if(pairs_, [&](Pair& pair) {
        if (pair.from == copy.to) {
            return true; // it has rows now that its own copy lacks
        }
        if (pair.to != copy.to) {
            return false;
        }
        pair.rows += rows;
        std::erase_if(pair.changed, [&](const auto& column) {
            return std::find(copy.columns.begin(), copy.columns.end(), column.first) == copy.columns.end();
        });
        return pair.from != copy.from;
    });
}

void RowCopies::forget(std::string_view table) {
    ++state_;
    uniform_.forget(table);
    std::erase_if(pairs_, [&](const Pair& pair) { return pair.from == table || pair.to == table; });
}

void RowCopies::forgetAll() {
    ++state_;
    uniform_.forgetAll();
    pairs_.clear();
}

void RowCopies::filled(const std::vector<UniformColumn>& columns) {
    if (columns.empty()) {
        return;
    }
    ++state_;
    for (const UniformColumn& column : columns) {
        uniform_.add(column);
    }
}

const std::string* RowCopies::originalOf(std::string_view copy) const {
    const auto found =
        std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& pair) { return pair.to == copy; });
    return found == pairs_.end() ? nullptr : &found->from;
}

bool RowCopies::isSparse(std::string_view copy) const {
    return std::any_of(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
        return pair.to == copy && pair.rows * sparse < pair.originalRows;
    });
}

bool RowCopies::isAlike(const CopiedColumn& column) const {
    return std::any_of(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
        const auto changed = pair.changed.find(column.column);
        return pair.from == column.original && pair.to == column.copy && changed != pair.changed.end() &&
               changed->second.empty();
    });
}

// The copy is where changes are made; a write-back goes from it to what it was copied from.
RowCopies::Pair* RowCopies::find(const WriteBack& writeBack) {
    const auto found = std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
        return pair.to == writeBack.from && pair.from == writeBack.to;
    });
    return found == pairs_.end() || !found->changed.contains(writeBack.column) ? nullptr : &*found;
}

const std::vector<std::int64_t>* RowCopies::differing(const WriteBack& writeBack) {
    Pair* pair = find(writeBack);
    if (pair == nullptr) {
        return nullptr;
    }
    std::vector<std::int64_t>& rows = pair->changed[writeBack.column];
    if (rows.size() > worthNoting) {
        return nullptr;
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return &rows;
}

std::int64_t RowCopies::rows(const WriteBack& writeBack) const {
    const Pair* pair = const_cast<RowCopies*>(this)->find(writeBack);
    return pair == nullptr ? 0 : pair->rows;
}

void RowCopies::settle(const WriteBack& writeBack) {
    if (Pair* pair = find(writeBack)) {
        ++state_;
        pair->changed[writeBack.column] = {};
    }
}

RowCopies::Watch::Watch(RowCopies& copies, SqliteDatabase& database, const std::string& table,
                        const std::vector<std::string>& columns)
    : copies_(copies), database_(database), table_(table) {
    if (copies.uniform_.forget(table, columns)) {
        ++copies.state_;
    }
    for (Pair& pair : copies.pairs_) {
        if (pair.from != table && pair.to != table) {
            continue;
        }
        for (const std::string& column : columns) {
            if (const auto found = pair.changed.find(column); found != pair.changed.end()) {
                notes_.push_back(&found->second);
            }
        }
    }
    if (!notes_.empty()) {
        sqlite3_update_hook(database_.handle(), &noted, this);
    }
}

RowCopies::Watch::~Watch() {
    if (!notes_.empty()) {
        sqlite3_update_hook(database_.handle(), nullptr, nullptr);
        ++copies_.state_;
    }
    if (isLost_) {
        copies_.forget(table_);
    }
}

// Only the table of the running UPDATE changes while it runs.
void RowCopies::Watch::noted(void* watch, int, const char*, const char*, sqlite3_int64 row) {
    Watch& self = *static_cast<Watch*>(watch);
    try {
        for (std::vector<std::int64_t>* rows : self.notes_) {
            if (rows->size() <= worthNoting) {
                rows->push_back(row);
            }
        }
    } catch (const std::bad_alloc&) {
        self.isLost_ = true; // nothing may be thrown through SQLite
    }
}

} // namespace veldran::embedded
