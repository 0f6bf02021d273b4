#include "adapters/embedded/plan.h"

#include "adapters/embedded/parsing.h"
#include "adapters/embedded/text_shape.h"

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
    return isShape == other.isShape && text == other.text &&
           std::equal(markers.begin(), markers.end(), other.markers.begin(), other.markers.end());
}

PlanCache::Key PlanCache::keyOf(const Plan& plan) {
    return plan.shape.empty() ? Key{plan.text, plan.markers, false} : Key{plan.shape, {}, true};
}

std::shared_ptr<Plan> PlanCache::find(const Key& key) {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        return nullptr;
    }
    plans_.splice(plans_.begin(), plans_, found->second);
    return plans_.front();
}

std::shared_ptr<Plan> PlanCache::parse(std::string_view text) {
    auto fresh = std::make_shared<Plan>();
    fresh->text = text;
    fresh->batch = parseText(fresh->text);
    ++parsed_;
    return fresh;
}

void PlanCache::keep(const std::shared_ptr<Plan>& fresh) {
    plans_.push_front(fresh);
    byKey_[keyOf(*fresh)] = plans_.begin();
    if (plans_.size() > maximumPlans) {
        byKey_.erase(keyOf(*plans_.back()));
        plans_.pop_back();
    }
}

std::shared_ptr<Plan> PlanCache::plan(std::string_view text, std::vector<SqlType> markers) {
    std::shared_ptr<Plan> plan = find({text, markers});
    if (!plan) {
        plan = parse(text);
        plan->markers = std::move(markers);
        keep(plan);
    }
    return plan;
}

std::shared_ptr<Plan> PlanCache::sharedPlan(std::string_view text, std::vector<Stored>& values) {
    if (auto known = find({text, {}})) {
        return known;
    }
    TextShape shape = shapeOf(text);
    std::shared_ptr<Plan> plan = find({shape.text, {}, true});
    if (!plan) {
        plan = parse(text);
        plan->markers = takeOutLiterals(plan->batch, shape);
        if (!plan->markers.empty()) {
            plan->shape = std::move(shape.text);
        }
        keep(plan);
    }
    if (!plan->shape.empty()) {
        for (const TextShape::Literal& literal : shape.literals) {
            values.emplace_back(std::string(literal.value));
        }
    }
    return plan;
}

} // namespace veldran::embedded
