#pragma once

#include "platform/services/lookup.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace veldran::shell {

/// The company of a code that is reserved to none.
constexpr const char* commonToAll = "0";

/// One code of a chart of cost accounting.
struct CostCode {
    std::string code; ///< as stored, without trailing blanks
    std::string description;
    std::int32_t kind = 0; ///< bit of the typology mask; 0 for a group and for a cost item
    bool group = false;    ///< only groups others: nothing is posted to it
    std::string company = commonToAll;

    friend bool operator==(const CostCode&, const CostCode&) = default;
};

/// The codes of one chart as they are kept for one company. Every call is one statement through the
/// connection; a failure of the database is an AdoError.
class CostCodes {
public:
    /// \param items the chart holds cost items, which have no kind
    CostCodes(std::shared_ptr<ado::Connection> connection, std::int32_t chart, std::string company,
              bool items);

    /// The description of the chart; none when there is no such chart.
    std::optional<std::string> chartName() const;
    /// Codes of other companies included: a code is taken once for all.
    std::optional<CostCode> find(const std::string& code) const;
    void insert(const CostCode& code);
    /// Writes description and kind. \return false when the code is no longer stored as `before`: nothing is
    /// written then.
    bool update(const CostCode& before, const CostCode& after);

    std::int32_t chart() const { return chart_; }
    const std::string& company() const { return company_; }
    bool items() const { return items_; }

private:
    std::shared_ptr<ado::Connection> connection_; // shared with the form, which owns it
    std::int32_t chart_;
    std::string company_;
    bool items_;
};

constexpr int costCodeSize = 15;        ///< characters of a stored code
constexpr int costDescriptionSize = 80; ///< characters of a stored description

/// What keeps a code from being saved, and where.
struct CostCodeObjection {
    enum Place { Code, Description, Kind };
    Place place = Code;
    std::string text; ///< Italian, for the user
};

/// The first objection to a code as the user filled it in; none when it may be saved.
/// \param isNew the code is still to be created; else only its description and its kind are judged
/// \throws AdoError
std::optional<CostCodeObjection> objectionTo(const CostCode& code, bool isNew, const CostCodes& codes,
                                             const services::CodeStructure& structure);

} // namespace veldran::shell
