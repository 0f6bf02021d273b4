#include "adapters/embedded/plan.h"

#include "adapters/embedded/parsing.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

constexpr std::size_t maximumPlans = 256;

} // namespace

const Program& Compiled::program() const {
    if (const auto* keyUpdate = std::get_if<KeyUpdateProgram>(&translated)) {
        return keyUpdate->direct;
    }
    if (const auto* into = std::get_if<IntoProgram>(&translated)) {
        return into->fill;
    }
    return std::get<Program>(translated);
}

bool PlanCache::Key::operator==(const Key& other) const {
    return text == other.text &&
           std::equal(markers.begin(), markers.end(), other.markers.begin(), other.markers.end());
}

std::shared_ptr<Plan> PlanCache::plan(std::string_view text, std::vector<SqlType> markers) {
    if (const auto found = byKey_.find({text, markers}); found != byKey_.end()) {
        plans_.splice(plans_.begin(), plans_, found->second);
        return plans_.front();
    }
    auto fresh = std::make_shared<Plan>();
    fresh->text = text;
    fresh->batch = parseText(fresh->text);
    fresh->markers = std::move(markers);
    ++parsed_;
    plans_.push_front(fresh);
    byKey_[{fresh->text, fresh->markers}] = plans_.begin();
    if (plans_.size() > maximumPlans) {
        byKey_.erase({plans_.back()->text, plans_.back()->markers});
        plans_.pop_back();
    }
    return fresh;
}

} // namespace veldran::embedded
