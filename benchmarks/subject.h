#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::bench {

/// Economic accounts: the nature that the benchmarks look at, because it alone has activated accounts.
inline constexpr int economic = 2;
/// Balance-sheet accounts, whose branch stays closed until an account in it is searched.
inline constexpr int balance = 1;

/// A node of the tree: a root (level 0), a grouping or an account.
struct Place {
    int nature = economic;
    int level = 0;
    std::string code;
};

/// A row of the tree as the user sees it.
struct TreeRow {
    std::string text;
    bool checked = false;

    friend bool operator==(const TreeRow&, const TreeRow&) = default;
};
using TreeRows = std::vector<TreeRow>;

/// A row of a correlation.
struct CorrelationRow {
    int sign = 0;                ///< 1 Dare, 2 Avere
    std::int64_t hundredths = 0; ///< of a percent
    std::string account;

    friend bool operator==(const CorrelationRow&, const CorrelationRow&) = default;
};
using CorrelationRows = std::vector<CorrelationRow>;

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

/// One way of doing what the screen does. The first group of members are the actions that a user waits for,
/// each on what `aim` or `choose` has pointed at; the second prepares them, the third tells what they did.
class Subject {
public:
    virtual ~Subject() = default;

    /// From the connection to the tree on all accounts.
    virtual void open() = 0;
    /// \param filter 1 all accounts, 2 the activated ones, 3 the others
    virtual void filter(int filter) = 0;
    virtual void expand() = 0;
    virtual void collapse() = 0;
    virtual void toggleCheck() = 0;
    /// Opens the tree down to an account of `balance` and selects it.
    virtual void search(const std::string& account) = 0;
    virtual void enterCorrelations() = 0;
    /// To the one chosen.
    virtual void moveToCausale() = 0;
    virtual void save() = 0;
    /// The copied correlation onto another causale of the account.
    virtual void pasteOntoCausale() = 0;
    virtual void duplicateOnto(const std::string& causale) = 0;
    virtual void leaveCorrelations() = 0;
    /// The copied correlations of an account onto the one aimed at.
    virtual void pasteOntoAccount() = 0;
    virtual void close() = 0;

    /// At a node whose parents have been expanded.
    virtual void aim(const Place& place) = 0;
    /// Looks for a causale in the list.
    virtual void choose(const std::string& causale) = 0;
    /// Keys a new correlation without confirming it.
    virtual void key(const std::string& causale, const CorrelationRows& rows) = 0;
    /// Copies one causale and selects another one in the list.
    virtual void copyCausale(const std::string& from, const std::string& onto) = 0;
    /// Copies the correlations of the account aimed at.
    virtual void copyAccount() = 0;

    virtual std::array<bool, 4> rootChecks() = 0;
    /// Of the node aimed at.
    virtual TreeRows children() = 0;
    virtual std::string selectedText() = 0;
    virtual CorrelationRows shownRows() = 0;
    virtual std::vector<std::string> listedCausali() = 0;
    virtual Sums chart() = 0;
    virtual Sums selection() = 0;
};

} // namespace veldran::bench
