#pragma once

#include "database/generator/source_text.h"

#include <string>
#include <vector>

namespace veldran::chartgen {

/// An account of a chart. `nature` is the value of CG24_INDTIPOCONTO; `path` the descriptions from level 1
/// down to the account itself, by which other tables name it.
struct ChartAccount {
    std::string code;
    std::vector<std::string> path;
    int nature;

    const std::string& description() const { return path.back(); }
};

/// A chart of accounts in code order.
struct Chart {
    int levels = 0;
    std::vector<ChartAccount> accounts;

    bool isAnalytic(const ChartAccount& account) const {
        return account.path.size() == static_cast<std::size_t>(levels);
    }
};

/// Builds a chart from its outline, one account a line, indented by level:
///
///     lista REPARTI = Tornitura; Fresatura        a list, named in the lines below as {REPARTI}
///     natura economico                            nature of the level-1 accounts that follow
///     70 Costi per il personale                   level 1: its number and its description
///       Salari                                    lower levels are numbered in order
///         Operai {REPARTI}; Apprendisti           ";" separates siblings, a list gives one account for each
///         entry
///
/// The children of a line with several accounts are repeated under each of them. Groups are numbered by fives
/// where they fit, the accounts of the last level by ones. \throws SourceError naming the place: unknown
/// nature or list, a level skipped or too deep, a grouping without analytic accounts below it, two siblings
/// with one description, numbers out of order or too many siblings.
Chart buildChart(const SourceText& outline, int levels);

/// Accounts named by a path written as descriptions joined by " / ": those whose own path ends with it. A
/// last part
/// "*" stands for every analytic account below.
std::vector<const ChartAccount*> findByPath(const Chart& chart, const std::string& path);

} // namespace veldran::chartgen
