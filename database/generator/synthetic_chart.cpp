#include "database/generator/synthetic_chart.h"

#include "database/generator/account_code.h"
#include "database/generator/random.h"
#include "database/generator/source_error.h"
#include "database/generator/synthetic_terms.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veldran::chartgen {
namespace {

constexpr int ordine = 0;
constexpr int patrimoniale = 1;
constexpr int economico = 2;
constexpr int daNonStampare = 3;

class Generator {
public:
    Generator(const SyntheticOptions& options, const std::function<void(const SyntheticAccount&)>& take)
        : options_(options), take_(take), random_(options.seed) {}

    void run() {
        check();
        const std::int64_t reserved = options_.wide > 0 ? options_.levels - 1 + options_.wide : 0;
        const std::int64_t rest = options_.accounts - reserved;
        const std::int64_t mastersWanted =
            childCount(0, rest, groupCapacity(options_.levels, 1) - (reserved > 0 ? 1 : 0));
        const std::vector<std::int64_t> shares = share(0, rest, mastersWanted);

        int number = 0;
        bool widePending = reserved > 0;
        for (std::size_t index = 0; index < shares.size(); ++index) {
            const int nature = natureOf(index, shares.size());
            if (widePending && nature == economico) {
                widePending = false;
                branch(++number, reserved, nature, true);
            }
            branch(++number, shares[index], nature, false);
        }
    }

private:
    void check() const {
        const std::int64_t widest = groupCapacity(options_.levels, options_.levels);
        if (options_.wide < 0 || options_.wide > widest)
            throw SourceError("with " + std::to_string(options_.levels) + " levels an account has at most " +
                              std::to_string(widest) + " analytic accounts below it");
        const std::int64_t reserved = options_.wide > 0 ? options_.levels - 1 + options_.wide : 0;
        const std::int64_t least = 4 * options_.levels + reserved;
        const std::int64_t masters = groupCapacity(options_.levels, 1) - (reserved > 0 ? 1 : 0);
        const std::int64_t most = masters * (1 + capacityBelow(1)) + reserved;
        if (options_.accounts < least || options_.accounts > most)
            throw SourceError("such a chart of " + std::to_string(options_.levels) + " levels has from " +
                              std::to_string(least) + " to " + std::to_string(most) + " accounts");
    }

    // Most accounts that fit below one account of that level.
    std::int64_t capacityBelow(int level) const {
        return level == options_.levels
                   ? 0
                   : groupCapacity(options_.levels, level + 1) * (1 + capacityBelow(level + 1));
    }

    // An account of level `level` + 1 with everything below it: one account a level at least, so that no
    // grouping stays empty.
    std::int64_t leastShare(int level) const { return options_.levels - level; }
    std::int64_t mostShare(int level) const { return 1 + capacityBelow(level + 1); }

    // How many children share `below` accounts under an account of that level: about as many at each level.
    std::int64_t childCount(int level, std::int64_t below, std::int64_t capacity) const {
        const double depth = options_.levels - level;
        const auto even =
            static_cast<std::int64_t>(std::llround(std::pow(static_cast<double>(below), 1.0 / depth)));
        const std::int64_t least =
            std::max<std::int64_t>(level == 0 ? 4 : 1, (below + mostShare(level) - 1) / mostShare(level));
        return std::clamp(even, least, std::max(least, std::min(capacity, below / leastShare(level))));
    }

    std::vector<std::int64_t> share(int level, std::int64_t below, std::int64_t children) {
        const std::int64_t extra = mostShare(level) - leastShare(level);
        std::int64_t left = below - children * leastShare(level);
        std::vector<std::int64_t> shares;
        for (std::int64_t after = children - 1; after >= 0; --after) {
            const std::int64_t lowest = std::max<std::int64_t>(0, left - after * extra);
            const std::int64_t highest = std::min(left, extra);
            const std::int64_t mean = left / (after + 1);
            const std::int64_t given =
                after == 0 ? left : std::clamp(random_.between(mean / 2, mean + mean / 2), lowest, highest);
            shares.push_back(leastShare(level) + given);
            left -= given;
        }
        return shares;
    }

    // Level-1 accounts in the order of a balance: assets and liabilities, profit and loss, memorandum,
    // hidden.
    static int natureOf(std::size_t index, std::size_t count) {
        const std::size_t hidden = std::max<std::size_t>(1, count / 12);
        const std::size_t memorandum = std::max<std::size_t>(1, count / 8);
        const std::size_t balance = (count - hidden - memorandum) / 2;
        if (index < balance)
            return patrimoniale;
        if (index < count - hidden - memorandum)
            return economico;
        return index < count - hidden ? ordine : daNonStampare;
    }

    void branch(int number, std::int64_t accounts, int nature, bool wide) {
        nature_ = nature;
        wide_ = wide;
        groups_.push_back(number);
        emit(masterTurn_, number - 1);
        below(accounts - 1);
        groups_.pop_back();
    }

    // The accounts below the current one.
    void below(std::int64_t accounts) {
        const int level = static_cast<int>(groups_.size());
        if (level == options_.levels)
            return;
        const bool analytic = level + 1 == options_.levels;
        const std::int64_t turn = random_.between(0, 1'000'000);
        const std::int64_t children =
            analytic ? accounts
            : wide_  ? 1
                     : childCount(level, accounts, groupCapacity(options_.levels, level + 1));
        const std::vector<std::int64_t> shares =
            analytic ? std::vector<std::int64_t>(static_cast<std::size_t>(children), 1)
                     : share(level, accounts, children);
        for (std::int64_t place = 0; place < children; ++place) {
            groups_.push_back(static_cast<int>(place) + 1);
            emit(turn, place);
            below(shares[static_cast<std::size_t>(place)] - 1);
            groups_.pop_back();
        }
    }

    void emit(std::int64_t turn, std::int64_t place) {
        const int levelsBelow = options_.levels - static_cast<int>(groups_.size());
        const bool analytic = levelsBelow == 0;
        const bool economic = nature_ == economico;
        const bool activated = analytic && economic && random_.chance(options_.activatedPercent);
        const bool correlated =
            analytic && (economic || nature_ == patrimoniale) && random_.chance(options_.correlatedPercent);
        take_({composeCode(options_.levels, groups_), describeAccount(nature_, levelsBelow, turn, place),
               nature_, analytic, activated, correlated});
    }

    const SyntheticOptions& options_;
    const std::function<void(const SyntheticAccount&)>& take_;
    Random random_;
    std::int64_t masterTurn_ = random_.between(0, 1'000'000);
    std::vector<int> groups_;
    int nature_ = ordine;
    bool wide_ = false;
};

} // namespace

void generateChart(const SyntheticOptions& options,
                   const std::function<void(const SyntheticAccount&)>& take) {
    Generator(options, take).run();
}

} // namespace veldran::chartgen
