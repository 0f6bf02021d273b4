#include "adapters/embedded/plan.h"

#include "adapters/embedded/parsing.h"

namespace veldran::embedded {

namespace {

constexpr std::size_t maximumPlans = 256;

// The number of markers, their types and the text, which so needs no end.
std::string keyOf(std::string_view text, const std::vector<SqlType>& markers) {
    std::string key;
    const auto append = [&key](std::size_t number) {
        key.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    append(markers.size());
    for (const SqlType& marker : markers) {
        append(static_cast<std::size_t>(marker.kind));
        append(static_cast<std::size_t>(marker.length));
        append(std::size_t{marker.precision} << 8U | marker.scale);
    }
    return key.append(text);
}

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
    std::string key = keyOf(text, markers);
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
