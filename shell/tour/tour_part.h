#pragma once

#include "shell/tour/chart_user.h"
#include "shell/tour/correlation_user.h"
#include "shell/tour/stage.h"
#include "shell/tour/stored_data.h"

namespace veldran::shell {

/// What every part of the tour works with: the window, those who use it, and what the database then holds.
struct TourGround {
    Stage& stage;
    StoredData stored;
    ChartUser chart{stage};
    CorrelationUser correlations{stage, stored};
};

/// One part of the tour, which begins where the one before it has ended.
class TourPart {
protected:
    explicit TourPart(TourGround& ground)
        : stage_(ground.stage), chart_(ground.chart), user_(ground.correlations), stored_(ground.stored) {}
    ~TourPart() = default;

    Stage& stage_;
    ChartUser& chart_;
    CorrelationUser& user_;
    const StoredData& stored_;
};

} // namespace veldran::shell
