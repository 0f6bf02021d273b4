#pragma once

#include "benchmarks/chart_file.h"
#include "benchmarks/sqlite_text.h"

#include <map>
#include <memory>
#include <string>

namespace veldran::bench {

/// A row of a child query, as plain data.
struct ChartRow {
    std::string code;
    std::string display;
    std::string description;
    bool analytic = false;
    bool active = false;
    bool correlated = false;
    int level = 0;
};

/// The floor's connection and its two working tables of the chart.
class FloorTables {
public:
    explicit FloorTables(const ChartFile& file);

    Database& database() { return database_; }
    /// Prepared the first time, reset and without values afterwards. The text must outlive this object.
    Statement& prepared(const char* sql);

    void buildChart();
    /// \param filter 1 all accounts, 2 the activated ones, 3 the others
    void select(int filter);
    bool allActive(int nature);
    std::vector<ChartRow> children(const Place& place);
    /// From the top to the parent of an account of the selection; empty when it is not there.
    std::vector<Place> pathTo(const std::string& account);
    /// Activates or deactivates the accounts of a branch, in the file and in the working tables.
    void activate(const Place& place, bool on);
    void markCorrelated(const std::string& account, bool on);
    std::string headerOf(const Place& place) const;
    Sums sums(const char* table);

private:
    void fillChart();

    ChartFile file_;
    Database database_;
    std::map<const char*, std::unique_ptr<Statement>> prepared_;
};

} // namespace veldran::bench
