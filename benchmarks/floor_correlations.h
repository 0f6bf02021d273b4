#pragma once

#include "benchmarks/floor_tables.h"

#include <string>
#include <vector>

namespace veldran::bench {

/// The floor's editing of the correlations of one account.
class FloorCorrelations {
public:
    explicit FloorCorrelations(FloorTables& tables) : tables_(tables) {}

    void enter(const std::string& account);
    void moveTo(const std::string& causale);
    /// A new correlation, as keyed.
    void save(const std::string& causale, const CorrelationRows& keyed);
    void copyCausale(const std::string& from, const std::string& onto, bool replaced);
    /// Whether the account has correlations.
    bool leave();
    void copyAccount(const std::string& from, const std::string& onto);

    const CorrelationRows& shown() const { return shown_; }
    const std::vector<std::string>& listed() const { return listed_; }

private:
    void fill();
    void list();
    template<typename... Values>
    void run(const char* sql, const Values&... values);

    FloorTables& tables_;
    std::string account_;
    std::string current_;
    bool created_ = false;
    CorrelationRows shown_;
    std::vector<std::string> listed_;
    std::vector<std::string> headers_;
};

} // namespace veldran::bench
