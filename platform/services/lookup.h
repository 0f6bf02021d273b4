#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldran::ado {
class Connection;
}

namespace veldran::services {

/// How a code is cut into groups: each group is a run of the code's characters, 0-based.
struct CodeStructure {
    struct Group {
        int start = 0;
        int length = 0;
    };
    int codeLength = 0; ///< characters; 0: codes have no structure and are taken as typed
    std::vector<Group> groups;
    char separator = '/';
    bool filledWithZeros = true; ///< every code has the full length; else a short code ends with its group

    /// The groups of `code` joined by the separator. Where codes are not filled with zeros, what goes beyond
    /// the last group follows as one more.
    std::string display(std::string_view code) const;
    /// The code that `typed` stands for, trimmed. Where codes are filled with zeros, a display form has each
    /// group filled on its left and a run of digits is filled on its right. Where they are not, a display
    /// form loses its separators.
    std::string codeOf(std::string_view typed) const;
    /// No display form of a code of full length has more characters; 0 where codes have no structure.
    int displayLength() const;
};

/// Writes the codes of one chart as users read them.
class CodeFormatter {
public:
    explicit CodeFormatter(CodeStructure structure) : structure_(std::move(structure)) {}

    /// `code` cut into the chart's groups, with the chart's separator between them when `separated`. A group
    /// that the code begins and does not end is completed with `filler`; groups that it lacks are left out.
    std::string Format(std::string_view code, bool separated, char filler) const;
    /// By which a field understands what users type.
    const CodeStructure& Structure() const { return structure_; }

private:
    CodeStructure structure_;
};

/// The lists a code can come from.
enum class LookupKind { ContiCoge, Causali, ContiCoin, VociDiSpesa };

/// What a code field asks: filled by the form in its `StartDecode` and `StartLookup` handlers.
struct LookupRequest {
    LookupKind kind = LookupKind::ContiCoge;
    std::string code;                            ///< as typed; for a list, where it opens
    bool entered = false;                        ///< by the user now; false when a record is shown
    std::string title;                           ///< of the list
    std::shared_ptr<ado::Connection> connection; ///< the form's own; the service reads through it
    std::string connectionString;
    std::string ditta;    ///< company code
    std::int32_t pdc = 0; ///< chart the codes belong to
    CodeStructure structure;
    std::optional<std::int32_t> tipologie; ///< bitmask of allowed account kinds; none: no restriction
    std::string restriction;               ///< said in the list: why it does not show everything
};

struct LookupChoice {
    std::string code;
    std::string description;
};

/// The host's lookup-and-decode service. Every call runs on the caller's thread; a database failure is an
/// AdoError.
class LookupService {
public:
    virtual ~LookupService() = default;
    /// The description of `request.code`; none when the code is unknown, only groups others, is reserved to
    /// another company, or is of a kind that `tipologie` does not allow.
    virtual std::optional<std::string> Decode(const LookupRequest& request) = 0;
    /// Shows the list; none when the user leaves it without choosing.
    virtual std::optional<LookupChoice> Choose(const LookupRequest& request) = 0;
    /// Opens the host's maintenance of `request.code`; returns when the user has left it.
    virtual void Maintain(const LookupRequest& request) = 0;
    /// For a chart of cost accounting, read through `connection`.
    virtual CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>& connection,
                                           std::int32_t pdc) = 0;
};

} // namespace veldran::services
