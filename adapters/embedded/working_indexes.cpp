#include "adapters/embedded/working_indexes.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace veldran::embedded {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isCode(const Table& table, std::string_view name) {
    const auto column = table.indexOf(name);
    return column && table.columns[*column].type.isFixedText();
}

// One of two values and never NULL.
bool isFlag(const Table& table, const std::string& name) {
    const auto column = table.indexOf(name);
    return column && table.columns[*column].type.kind == TypeKind::Bit && !table.columns[*column].nullable;
}

/// How many columns of the index, from its first, are among those sought.
std::size_t servedColumns(const std::vector<std::string>& index, const std::vector<std::string>& sought) {
    const auto end = std::find_if(index.begin(), index.end(),
                                  [&](const std::string& column) { return !contains(sought, column); });
    return static_cast<std::size_t>(end - index.begin());
}

// SQLite goes from value to value of a column that is not sought when each stands in so many rows.
constexpr std::int64_t rowsWorthStepping = 18;

bool isSteppedOver(const TableIndex& index, std::size_t column) {
    return column < index.alike.size() && index.alike[column] >= rowsWorthStepping;
}

/// What an index is worth to a condition.
struct Service {
    std::size_t columns = 0;               ///< of the index, from its first, that the condition tests
    std::vector<std::string_view> telling; ///< those of them that have more than two values, sorted
};

Service serviceOf(const TableIndex& index, const Table& table, const std::vector<std::string>& sought) {
    Service service;
    service.columns = servedColumns(index.columns, sought);
    for (std::size_t i = 0; i < service.columns; ++i) {
        const auto column = table.indexOf(index.columns[i]);
        if (column && table.columns[*column].type.kind != TypeKind::Bit) {
            service.telling.emplace_back(index.columns[i]);
        }
    }
    std::sort(service.telling.begin(), service.telling.end());
    return service;
}

} // namespace

std::vector<TableIndex*> indexesToBuild(TableIndexes& indexes, const Table& table,
                                        const std::vector<std::string>& sought) {
    if (std::none_of(indexes.begin(), indexes.end(),
                     [](const auto& index) { return !index.second.pending.empty(); })) {
        return {};
    }
    // What tells most rows apart comes first, then the narrowest. Where no code is sought, what serves most
    // and goes on with a code: it will serve the searches that name the code too.
    using Rank = std::tuple<int, int, bool, std::size_t, int>;
    struct Candidate {
        TableIndex* index;
        Service service;
        Rank rank;
    };
    const auto code = [&](std::string_view column) { return isCode(table, column); };
    const bool namesCode = std::any_of(sought.begin(), sought.end(), code);
    std::vector<Candidate> candidates;
    std::vector<Service> present;
    for (auto& [name, index] : indexes) {
        Service service = serviceOf(index, table, sought);
        if (service.columns == 0) {
            continue;
        }
        if (index.pending.empty()) {
            present.push_back(std::move(service));
        } else if (!namesCode || std::any_of(service.telling.begin(), service.telling.end(), code)) {
            const int served = static_cast<int>(service.columns);
            const bool leadsToCode =
                namesCode || std::any_of(index.columns.begin(), index.columns.end(), code);
            const Rank rank(-static_cast<int>(service.telling.size()), namesCode ? 0 : -served, !leadsToCode,
                            index.columns.size(), -served);
            candidates.push_back({&index, std::move(service), rank});
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
    std::vector<TableIndex*> result;
    for (Candidate& candidate : candidates) {
        const std::vector<std::string_view>& telling = candidate.service.telling;
        const bool served = std::any_of(present.begin(), present.end(), [&](const Service& other) {
            return std::includes(other.telling.begin(), other.telling.end(), telling.begin(), telling.end());
        });
        if (!served) {
            result.push_back(candidate.index);
            present.push_back(std::move(candidate.service));
        }
    }
    return result;
}

std::vector<std::string> indexedColumns(const TableIndexes& indexes, const Table& table,
                                        const SearchedColumns& searched) {
    const auto codesIn = [&](const std::vector<std::string>& columns) {
        return std::count_if(columns.begin(), columns.end(),
                             [&](const std::string& column) { return isCode(table, column); });
    };
    std::vector<std::string> best;
    for (const auto& [name, index] : indexes) {
        std::vector<std::string> columns;
        for (std::size_t i = 0; i < index.columns.size(); ++i) {
            const std::string& column = index.columns[i];
            const bool equal = contains(searched.equal, column);
            if (equal || contains(searched.ranged, column)) {
                columns.push_back(column);
            }
            // Only behind one value does the order go on.
            const bool passed = isFlag(table, column) || isSteppedOver(index, i);
            if (!equal && (contains(searched.ranged, column) || !passed)) {
                break;
            }
        }
        if (std::pair(codesIn(columns), columns.size()) > std::pair(codesIn(best), best.size())) {
            best = std::move(columns);
        }
    }
    return codesIn(best) == 0 ? std::vector<std::string>() : best;
}

std::vector<std::string> flagsBetween(const TableIndexes& indexes, const Table& table,
                                      const std::vector<std::string>& columns) {
    for (const auto& [name, index] : indexes) {
        std::vector<std::string> flags;
        for (const std::string& column : index.columns) {
            if (contains(columns, column)) {
                if (isCode(table, column) && !flags.empty()) {
                    return flags;
                }
                continue;
            }
            const auto place = table.indexOf(column);
            if (!place || table.columns[*place].type.kind != TypeKind::Bit ||
                table.columns[*place].nullable) {
                break;
            }
            flags.push_back(column);
        }
    }
    return {};
}

std::vector<std::string> searchedCode(const Table& table, const SearchedColumns& searched) {
    for (const auto* columns : {&searched.equal, &searched.ranged}) {
        for (const std::string& column : *columns) {
            if (isCode(table, column)) {
                return {column};
            }
        }
    }
    return {};
}

std::optional<std::string> codeWithoutIndex(const TableIndexes& indexes, const Table& table,
                                            const std::vector<std::string>& sought) {
    std::set<std::string> found;
    for (const Key& key : table.keys) {
        std::vector<std::string> columns;
        for (const std::size_t column : key.columns) {
            columns.push_back(table.columns[column].name);
        }
        const std::size_t served = servedColumns(columns, sought);
        if (served == columns.size()) {
            return std::nullopt;
        }
        found.insert(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(served));
    }
    for (const auto& [name, index] : indexes) {
        for (std::size_t i = 0; i < index.columns.size(); ++i) {
            if (contains(sought, index.columns[i])) {
                found.insert(index.columns[i]);
            } else if (!isSteppedOver(index, i)) {
                break;
            }
        }
    }
    for (const std::string& name : sought) {
        if (isCode(table, name) && !found.contains(name)) {
            return name;
        }
    }
    return std::nullopt;
}

} // namespace veldran::embedded
