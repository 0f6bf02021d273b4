#pragma once

#include "tests/screen/correlation_fixture.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veldran::test {

/// What the user says when he is asked about his changes.
enum class Answer { Save, Discard, Stay };

/// A simple rendering of the correlation editor of one account: lists of rows where the screen has working
/// tables, frames and statements. Each operation answers as the screen does; `asked` counts its questions and
/// `refusals` the messages by which it says no.
class CorrelationModel {
public:
    explicit CorrelationModel(std::map<std::string, Rows> stored) : stored_(std::move(stored)) {}

    void enter();
    bool leave(Answer answer);

    /// \param causale one that has no correlation yet.
    bool newHeader(const std::string& causale, Answer answer);
    bool goTo(const std::string& causale, Answer answer);
    void deleteHeader();
    bool save();
    void undo();

    void addRow(const Row& row);
    void setPercentage(std::size_t row, const std::string& percentage);
    void setSign(std::size_t row, const std::string& sign, const std::string& account);
    /// Exchanges a row with the one behind it.
    void exchange(std::size_t row);
    void deleteRow(std::size_t row);

    bool isChanged() const;
    bool isAdding() const { return adding_; }
    /// "" while no header has a causale.
    const std::string& current() const { return current_; }
    Rows rows() const;
    const std::vector<std::string>& headers() const { return headers_; }
    const std::map<std::string, Rows>& stored() const { return stored_; }
    /// Rows of #DETTAGLIO.
    Rows working(const std::string& causale) const;

    int asked = 0;
    int refusals = 0;

private:
    struct Line {
        Row row;
        bool isNew = false;
        bool changed = false;
    };

    void show(const std::string& causale);
    void showNone();
    bool settle(Answer answer);
    bool holdsTheRules() const;

    std::map<std::string, Rows> stored_;
    std::vector<std::string> headers_; ///< in the order of the header frame
    std::string current_;
    std::string before_; ///< the header that a new one goes back to
    bool adding_ = false;
    std::vector<Line> lines_;
    bool deleted_ = false;                 ///< some row that was written before
    std::optional<Rows> writtenNotStored_; ///< by a save that was refused
};

} // namespace veldran::test
