// What a node of the tree costs in memory, with every account of a chart shown.
#include "benchmarks/clock.h"
#include "benchmarks/screen_host.h"

#include <malloc.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <vector>

namespace veldran::bench {

namespace {

/// Bytes in use, those of the database left out.
std::int64_t bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd) - sqlite3_memory_used();
}

std::int64_t expandAll(controls::TreeView& tree) {
    std::int64_t nodes = 0;
    std::vector<controls::TreeNode*> open;
    for (int i = 0; i < tree.RootCount(); ++i) {
        open.push_back(tree.RootAt(i));
    }
    while (!open.empty()) {
        controls::TreeNode* node = open.back();
        open.pop_back();
        ++nodes;
        if (node->Children() == 0) {
            continue;
        }
        tree.SetExpanded(*node, true);
        for (controls::TreeNode* child = node->Child(); child != nullptr; child = child->Next()) {
            open.push_back(child);
        }
    }
    return nodes;
}

void measure(std::int64_t accounts) {
    const ChartFile& file = chartFile({accounts, 5, 0});
    const auto host = makeHost(file);
    host->open();
    controls::TreeView& tree = host->user().tree();
    const std::int64_t before = bytesInUse();
    std::int64_t nodes = 0;
    const Cost cost = costOf([&] { nodes = expandAll(tree); });
    const std::int64_t after = bytesInUse();
    requireNoErrors(*host);
    if (nodes != accounts + 4) {
        throw std::runtime_error("not every account is shown: " + std::to_string(nodes));
    }
    std::printf("\nThe tree with all %lld accounts shown: %.0f bytes a node, %.1f MB; expanded in %.1f s\n",
                static_cast<long long>(accounts),
                static_cast<double>(after - before) / static_cast<double>(nodes),
                static_cast<double>(after - before) / 1e6, cost.processor / 1e3);
}

} // namespace

} // namespace veldran::bench

int main(int argc, char** argv) {
    try {
        veldran::bench::measure(argc > 1 ? std::atoll(argv[1]) : 1'000'000);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
