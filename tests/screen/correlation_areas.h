#pragma once

#include "host/aree_correlazioni.h"
#include "tests/screen/correlation_fixture.h"
#include "tests/support/work_areas.h"

#include <memory>
#include <string>

namespace veldran::test {

/// The work areas of correlation mode on the form's own controls, without the form that connects their
/// events: routines can be called one by one, over a real database whose messages are recorded.
class CorrelationAreas {
public:
    explicit CorrelationAreas(const Chart& chart = costChart(), Company company = costCompany(),
                              Screen::Markers markers = Screen::Markers::Resolved);
    ~CorrelationAreas();
    CorrelationAreas(const CorrelationAreas&) = delete;
    CorrelationAreas& operator=(const CorrelationAreas&) = delete;

    /// Working tables, frames and list of an account, as entering correlation mode leaves them.
    void enter(const std::string& account = editedAccount);
    ControlliFormPrincipale& controls() { return work.controls; }
    std::vector<ShownError>& errors() const { return work.messages->errors; }
    std::vector<std::string> labels() const { return work.labels(); }

    Screen screen; ///< the host's edge; its own form stays closed
    WorkAreas work;
    int scriptsBuilt = 0;
    std::unique_ptr<AreeCorrelazioni> areas;
};

} // namespace veldran::test
