#pragma once

#include "tests/screen/correlation_fixture.h"
#include "tests/screen/correlation_model.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace veldran::test {

/// A simple rendering of the stored correlations of some accounts and of both clipboards: maps where the
/// screen has tables, frames and statements. `asked` counts its questions and refusals.
class ClipboardModel {
public:
    using Correlations = std::map<std::string, Rows>; ///< by causale
    enum class Mode { Empty, Copy, Cut };

    explicit ClipboardModel(std::map<std::string, Correlations> stored);

    /// \name In activation mode.
    ///@{
    void activate(const std::string& account);
    void takeAccount(const std::string& account, Mode mode);
    void pasteAccount(const std::string& account, bool confirmed);
    void enter(const std::string& account);
    ///@}

    /// \name In correlation mode, on the account that was entered.
    ///@{
    bool leave(Answer answer);
    void key(const std::string& causale, const Rows& rows); ///< where the account has no correlation
    bool goTo(const std::string& causale, Answer answer);
    void change(const std::string& percentage);
    void save();
    void takeCausale(Mode mode, Answer answer);
    void pasteCausale(Answer answer, bool confirmed); ///< onto the current one
    void forgetCausale() { list_ = {}; }
    void deleteCausale(bool confirmed);
    void duplicate(const std::string& causale, Answer answer);
    ///@}

    bool isEditing() const { return !edited_.empty(); }
    /// "" while the account has no correlation.
    const std::string& current() const { return current_; }
    const Correlations& correlations() const { return stored_.at(edited_); }
    /// As the editor shows them.
    Rows rows() const;
    bool isChanged() const { return pending_.has_value(); }
    bool listHoldsSomething() const { return list_.mode != Mode::Empty; }
    bool treeHoldsSomething() const { return tree_.mode != Mode::Empty; }

    const std::map<std::string, Correlations>& stored() const { return stored_; }
    bool isMarked(const std::string& account) const { return marked_.contains(account); }
    const std::set<std::string>& activated() const { return activated_; }

    int asked = 0;

private:
    struct Held {
        Mode mode = Mode::Empty;
        std::string source;
    };

    bool settle(Answer answer);
    void showAnew();
    void put(const std::string& causale, Rows rows);

    std::map<std::string, Correlations> stored_;
    std::set<std::string> marked_;
    std::set<std::string> activated_;
    Held tree_;
    Held list_;
    std::string edited_;
    std::string current_;
    std::optional<Rows> pending_; ///< of the current causale
};

} // namespace veldran::test
