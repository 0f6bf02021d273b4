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

    CorrelationRows shown() const;
    std::vector<std::string> listed() const;

private:
    // The screen's rows have every column of their query, and so have these.
    struct Causale {
        std::string code;
        std::string description;
    };
    struct Row {
        std::string causale;
        std::int64_t number;
        std::int64_t sign;
        std::int64_t hundredths;
        std::int64_t chart;
        std::string account;
        std::int64_t itemChart;
        std::string item;
        std::string origin;
        std::string destination;
    };
    void fill();
    void list();
    template<typename... Values>
    void run(const char* sql, const Values&... values);

    FloorTables& tables_;
    std::string account_;
    std::string current_;
    bool created_ = false;
    std::vector<Row> rows_;
    std::vector<Causale> listed_;
    std::vector<std::string> headers_;
};

} // namespace veldran::bench
