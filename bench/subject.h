#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veldran::bench {

/// A generated company: its file, and what the working tables must hold once the screen is open on it.
struct ChartFile {
    std::string path;
    int levels = 0;
    std::int64_t accounts = 0;
    std::int64_t activated = 0;
    std::int64_t correlated = 0;
    // Of the economic accounts, which alone are activated:
    std::int64_t roots = 0; ///< accounts of level 1
    std::string root;       ///< the first of them
    std::int64_t below = 0; ///< analytic accounts below it
    std::int64_t activatedBelow = 0;
    std::string parent;        ///< the account with the most analytic accounts right below it
    std::int64_t children = 0; ///< how many these are
    std::string analytic;      ///< an activated account in the middle of the chart
};

/// What a working table holds, in numbers that differ when a row or a flag does.
struct Sums {
    std::int64_t rows = 0;
    std::int64_t active = 0;
    std::int64_t correlated = 0;
    std::int64_t levels = 0;    ///< NRLIVELLO added up
    std::int64_t parents = 0;   ///< rows with a PARENT
    std::int64_t ancestors = 0; ///< distinct LIVELLO2

    friend bool operator==(const Sums&, const Sums&) = default;
};

/// Economic accounts: the nature that the benchmarks look at.
inline constexpr int nature = 2;

/// One way of doing what the screen does with the database. Each member is one step that a user waits for.
class Subject {
public:
    virtual ~Subject() = default;

    virtual void buildChart() = 0;
    virtual void indexChart() = 0;
    virtual void markActive() = 0;
    virtual void markCorrelated() = 0;
    /// \param filter 1 all accounts, 2 the activated ones
    virtual void select(int filter) = 0;
    /// Adds the ancestors that a filter has left out.
    virtual void complete() = 0;
    virtual void indexSelection() = 0;

    /// Number of rows that were read.
    virtual std::int64_t expandRoot() = 0;
    virtual std::int64_t expandChildren(const std::string& parent) = 0;
    virtual std::int64_t lookup(const std::string& account) = 0;
    /// Activates or deactivates the economic accounts whose codes begin with `header`, those of a whole
    /// branch or one alone, in the file and in the working tables.
    virtual void activate(const std::string& header, bool on) = 0;

    virtual Sums chart() = 0;
    virtual Sums selection() = 0;
};

} // namespace veldran::bench
