#include "benchmarks/screen_host.h"

#include "adapters/embedded/driver.h"
#include "adapters/markers/marker_resolving_driver.h"
#include "database/generator/synthetic_script.h"
#include "platform/controls/data_grid.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace veldran::bench {

namespace {

/// "*E0102030005*": the code stands between the nature's letter and the last star.
std::string codeOf(const controls::TreeNode& node) {
    const std::string key = node.Key();
    return key.size() == 13 ? key.substr(2, 10) : std::string();
}

std::string percentage(std::int64_t hundredths) {
    return std::to_string(hundredths / 100);
}

} // namespace

std::unique_ptr<test::TestHost> makeHost(const ChartFile& file) {
    test::Company context;
    context.ditta = std::to_string(company);
    context.chart = chartCode;
    context.costChart = chartgen::syntheticCostChart;
    context.costItems = false;
    auto driver = std::make_shared<MarkerResolvingDriver>(
        std::make_shared<embedded::EmbeddedDriver>(),
        std::map<std::string, std::string>{{"<DITTA>", context.ditta}});
    auto host = std::make_unique<test::TestHost>(
        std::move(driver), "Provider=VeldranEmbedded;Data Source=" + file.path, context);
    const auto describe = [&host](const std::string& code) {
        host->lookups.descriptions.emplace(code, "Causale " + code);
    };
    describe(storedCausale);
    describe(otherCausale);
    std::for_each(newCausali.begin(), newCausali.end(), describe);
    std::for_each(freeCausali.begin(), freeCausali.end(), describe);
    for (const CorrelationRow& row : sixRows()) {
        host->lookups.descriptions.emplace(row.account, "Conto " + row.account);
    }
    host->lookups.keepsRequests = false;
    host->lookups.structures[context.costChart] = {6, {{0, 3}, {3, 3}}, '.', false};
    return host;
}

void requireNoErrors(const test::TestHost& host) {
    if (!host.messages->errors.empty()) {
        throw std::runtime_error("the screen reported: " + host.messages->errors.front().routine + " " +
                                 host.messages->errors.front().error.Description);
    }
}

controls::TreeNode& nodeAt(test::TestHost& host, const Place& place) {
    requireNoErrors(host); // a screen that failed to open has no roots
    controls::TreeNode* node = host.user().tree().RootAt(place.nature);
    for (int level = 1; level <= place.level; ++level) {
        controls::TreeNode* next = nullptr;
        for (controls::TreeNode* child = node->Child(); child != nullptr && next == nullptr;
             child = child->Next()) {
            const std::string code = codeOf(*child);
            // Groups have two digits, all but the last one.
            const auto header = static_cast<std::size_t>(2 * level);
            if (code == place.code ||
                (level < place.level && !code.empty() && place.code.starts_with(code.substr(0, header)))) {
                next = child;
            }
        }
        if (next == nullptr) {
            throw std::runtime_error("the tree lacks " + place.code);
        }
        node = next;
    }
    return *node;
}

void keyRow(test::TestHost& host, const CorrelationRow& row) {
    const test::ScreenUser user = host.user();
    auto& grid = user.control<controls::DataGrid>("GRD_DETTAGLIO");
    if (grid.RowCount() > 0) {
        user.control<controls::FrameNavigator>("GNV_DETTAGLIO").PressFromView("Nuovo");
    }
    auto& sign = user.control<controls::ComboBox>("CBO_SEGNO");
    sign.SetFocus();
    sign.ChooseFromView(row.sign == 2 ? 0 : 1);
    auto& share = user.control<controls::NumericField>("TXT_PERC");
    share.SetFocus();
    share.TypeFromView(percentage(row.hundredths));
    share.LeaveFromView();
    auto& account = user.control<controls::LookupField>("TXT_CONTO");
    account.SetFocus();
    account.TypeFromView(row.account);
    account.LeaveFromView();
}

} // namespace veldran::bench
