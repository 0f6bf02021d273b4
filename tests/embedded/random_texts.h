#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace veldran::embedded::test {

/// What random statements are put together from; the same for the same seed.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : random_(seed) {}

    int among(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    std::string number(int count) { return std::to_string(among(count)); }
    std::string of(const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(among(static_cast<int>(texts.size())))];
    }
    void shuffle(std::vector<std::string>& texts) { std::shuffle(texts.begin(), texts.end(), random_); }

private:
    std::mt19937 random_;
};

} // namespace veldran::embedded::test
