#include "tests/screen/clipboard_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veldran::test {

ClipboardModel::ClipboardModel(std::map<std::string, Correlations> stored) : stored_(std::move(stored)) {
    for (const auto& [account, correlations] : stored_) {
        if (!correlations.empty()) {
            marked_.insert(account);
        }
    }
}

void ClipboardModel::activate(const std::string& account) {
    if (activated_.erase(account) == 0) {
        activated_.insert(account);
    }
}

void ClipboardModel::takeAccount(const std::string& account, Mode mode) {
    if (isMarked(account)) {
        tree_ = {mode, account};
    }
}

void ClipboardModel::pasteAccount(const std::string& account, bool confirmed) {
    if (tree_.mode == Mode::Empty) {
        return;
    }
    if (account != tree_.source) {
        asked += isMarked(account) ? 1 : 0;
        if (!isMarked(account) || confirmed) {
            stored_[account] = stored_[tree_.source];
            marked_.insert(account);
            if (tree_.mode == Mode::Cut) {
                stored_[tree_.source].clear();
                marked_.erase(tree_.source);
            }
        }
    }
    if (tree_.mode == Mode::Cut) {
        tree_ = {};
    }
}

void ClipboardModel::enter(const std::string& account) {
    edited_ = account;
    current_.clear();
    showAnew();
}

/// The current causale if there still is one, else the first one.
void ClipboardModel::showAnew() {
    pending_.reset();
    if (!correlations().contains(current_)) {
        current_ = correlations().empty() ? std::string() : correlations().begin()->first;
    }
}

bool ClipboardModel::settle(Answer answer) {
    if (!pending_) {
        return true;
    }
    ++asked;
    if (answer == Answer::Stay) {
        return false;
    }
    if (answer == Answer::Save) {
        save();
    }
    pending_.reset();
    return true;
}

bool ClipboardModel::leave(Answer answer) {
    if (!settle(answer)) {
        return false;
    }
    if (correlations().empty()) {
        marked_.erase(edited_);
    } else {
        marked_.insert(edited_);
    }
    edited_.clear();
    current_.clear();
    return true;
}

void ClipboardModel::put(const std::string& causale, Rows rows) {
    if (rows.empty()) {
        stored_[edited_].erase(causale);
    } else {
        stored_[edited_][causale] = std::move(rows);
    }
}

void ClipboardModel::key(const std::string& causale, const Rows& rows) {
    put(causale, rows);
    current_ = causale;
}

bool ClipboardModel::goTo(const std::string& causale, Answer answer) {
    if (causale == current_) {
        return true;
    }
    if (!settle(answer)) {
        return false;
    }
    current_ = causale;
    return true;
}

Rows ClipboardModel::rows() const {
    if (pending_) {
        return *pending_;
    }
    const auto found = correlations().find(current_);
    return found == correlations().end() ? Rows{} : found->second;
}

void ClipboardModel::change(const std::string& percentage) {
    pending_ = rows();
    pending_->front().percentage = percentage;
}

void ClipboardModel::save() {
    put(current_, *pending_);
    pending_.reset();
}

void ClipboardModel::takeCausale(Mode mode, Answer answer) {
    if (settle(answer)) {
        list_ = {mode, current_};
    }
}

void ClipboardModel::pasteCausale(Answer answer, bool confirmed) {
    if (current_ != list_.source && settle(answer)) {
        asked += list_.source.empty() ? 0 : 1;
        if (!list_.source.empty() && confirmed) {
            const auto source = correlations().find(list_.source);
            put(current_, source == correlations().end() ? Rows{} : source->second);
            if (list_.mode == Mode::Cut) {
                put(list_.source, {});
            }
        }
        showAnew();
    }
    if (list_.mode == Mode::Cut) {
        list_ = {};
    }
}

void ClipboardModel::deleteCausale(bool confirmed) {
    ++asked;
    if (!confirmed) {
        return;
    }
    const auto position = std::distance(correlations().begin(), correlations().find(current_));
    put(current_, {});
    pending_.reset();
    list_.source.clear();
    const auto last = static_cast<std::ptrdiff_t>(correlations().size()) - 1;
    current_ = last < 0 ? std::string()
                        : std::next(correlations().begin(), std::min<std::ptrdiff_t>(position, last))->first;
}

void ClipboardModel::duplicate(const std::string& causale, Answer answer) {
    if (correlations().contains(causale)) {
        ++asked;
        return;
    }
    if (settle(answer)) {
        put(causale, rows());
        showAnew();
    }
}

} // namespace veldran::test
