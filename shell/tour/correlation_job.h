#pragma once

#include "shell/tour/tour_part.h"

#include <string>

namespace veldran::shell {

/// The correlations of one account, from the first one on, keyed as a user does it. The screen is open in
/// activation mode before and after; afterwards the account has correlations for two causali.
class CorrelationJob : private TourPart {
public:
    explicit CorrelationJob(TourGround& ground) : TourPart(ground) {}

    /// \throws TourFailure at the first step that does not show what it should
    void run();

private:
    void enter();
    void keyRows();
    void saveNew();
    void refuseAndMend();
    void moveRow();
    void chooseFromRestrictedList();
    void addSecond();
    void copyByMenu();
    void pasteByMouse();
    void showMark();

    void keyPercentage(int row, const std::string& typed);
    void expectStored(const std::string& causale, const StoredData::Rows& rows, const std::string& when);
};

} // namespace veldran::shell
