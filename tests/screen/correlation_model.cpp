#include "tests/screen/correlation_model.h"

#include <algorithm>

namespace veldran::test {

void CorrelationModel::enter() {
    headers_.clear();
    for (const auto& [causale, rows] : stored_) {
        if (!rows.empty()) {
            headers_.push_back(causale);
        }
    }
    std::erase_if(stored_, [](const auto& entry) { return entry.second.empty(); });
    before_.clear();
    adding_ = headers_.empty();
    if (adding_) {
        showNone();
    } else {
        show(headers_.front());
    }
}

bool CorrelationModel::leave(Answer answer) {
    return settle(answer);
}

bool CorrelationModel::settle(Answer answer) {
    if (!isChanged()) {
        return true;
    }
    ++asked;
    if (answer == Answer::Save) {
        return save();
    }
    if (answer == Answer::Discard) {
        undo();
        return true;
    }
    return false;
}

bool CorrelationModel::newHeader(const std::string& causale, Answer answer) {
    if (!adding_ || isChanged()) {
        if (!settle(answer)) {
            return false;
        }
        before_ = current_;
    }
    adding_ = true;
    show(causale);
    return true;
}

bool CorrelationModel::goTo(const std::string& causale, Answer answer) {
    if (!adding_ && causale == current_) {
        return true;
    }
    if (!settle(answer)) {
        return false;
    }
    adding_ = false;
    show(causale);
    return true;
}

void CorrelationModel::deleteHeader() {
    const auto at = std::find(headers_.begin(), headers_.end(), current_);
    const auto place = static_cast<std::size_t>(at - headers_.begin());
    headers_.erase(at);
    stored_.erase(current_);
    adding_ = headers_.empty();
    if (adding_) {
        before_.clear();
        showNone();
    } else {
        show(headers_[std::min(place, headers_.size() - 1)]);
    }
}

bool CorrelationModel::save() {
    if (!isChanged()) {
        return true;
    }
    const bool written = deleted_ || std::any_of(lines_.begin(), lines_.end(),
                                                 [](const Line& line) { return line.isNew || line.changed; });
    if (written) {
        writtenNotStored_ = rows();
        deleted_ = false;
        for (Line& line : lines_) {
            line.isNew = false;
            line.changed = false;
        }
    }
    if (!holdsTheRules()) {
        ++refusals;
        return false;
    }
    stored_[current_] = rows();
    writtenNotStored_.reset();
    if (adding_) {
        headers_.push_back(current_);
        adding_ = false;
    }
    return true;
}

void CorrelationModel::undo() {
    if (adding_) {
        adding_ = false;
        current_ = before_;
    }
    show(current_);
}

void CorrelationModel::addRow(const Row& row) {
    lines_.push_back({row, true, false});
}

void CorrelationModel::setPercentage(std::size_t row, const std::string& percentage) {
    lines_[row].row.percentage = percentage;
    lines_[row].changed = true;
}

void CorrelationModel::setSign(std::size_t row, const std::string& sign, const std::string& account) {
    lines_[row].row.sign = sign;
    lines_[row].row.account = account;
    lines_[row].changed = true;
}

void CorrelationModel::exchange(std::size_t row) {
    std::swap(lines_[row].row, lines_[row + 1].row);
    lines_[row].changed = lines_[row + 1].changed = true;
}

void CorrelationModel::deleteRow(std::size_t row) {
    deleted_ = deleted_ || !lines_[row].isNew;
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(row));
}

bool CorrelationModel::isChanged() const {
    return (adding_ && !current_.empty()) || deleted_ || writtenNotStored_ ||
           std::any_of(lines_.begin(), lines_.end(),
                       [](const Line& line) { return line.isNew || line.changed; });
}

Rows CorrelationModel::rows() const {
    Rows all;
    for (const Line& line : lines_) {
        all.push_back(line.row);
    }
    return all;
}

Rows CorrelationModel::working(const std::string& causale) const {
    if (writtenNotStored_ && causale == current_) {
        return *writtenNotStored_;
    }
    const auto found = stored_.find(causale);
    return found == stored_.end() ? Rows{} : found->second;
}

void CorrelationModel::show(const std::string& causale) {
    current_ = causale;
    writtenNotStored_.reset();
    deleted_ = false;
    lines_.clear();
    for (const Row& row : working(causale)) {
        lines_.push_back({row, false, false});
    }
}

void CorrelationModel::showNone() {
    show("");
}

/// Percentages are whole, so that sums are exact.
bool CorrelationModel::holdsTheRules() const {
    double origins = 0;
    double block = 0;
    for (const Line& line : lines_) {
        const double share = std::stod(line.row.percentage);
        if (line.row.sign == "2") {
            origins += share;
            block = 0;
        } else {
            block += share;
        }
        if (origins > 100 || block > 100) {
            return false;
        }
    }
    return true;
}

} // namespace veldran::test
