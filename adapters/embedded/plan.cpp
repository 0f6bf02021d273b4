#include "adapters/embedded/plan.h"

#include "adapters/embedded/parsing.h"

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

std::shared_ptr<Plan> PlanCache::plan(std::string_view text, std::vector<SqlType> markers) {
    std::string key(text);
    for (const SqlType& marker : markers) {
        key += '\0' + typeText(marker);
    }
    if (const auto found = byKey_.find(key); found != byKey_.end()) {
        plans_.splice(plans_.begin(), plans_, found->second);
        return plans_.front().second;
    }
    auto fresh = std::make_shared<Plan>();
    fresh->text = text;
    fresh->batch = parseText(fresh->text);
    fresh->markers = std::move(markers);
    ++parsed_;
    plans_.emplace_front(key, fresh);
    byKey_[key] = plans_.begin();
    if (plans_.size() > maximumPlans) {
        byKey_.erase(plans_.back().first);
        plans_.pop_back();
    }
    return fresh;
}

} // namespace veldran::embedded
