#pragma once

#include "tests/support/recording_driver.h"

#include <string>
#include <vector>

/// The messages of correlation mode as the database contract words them, written out here once more and on
/// purpose: a text, a parameter or a time-out that changes in the screen has to be changed by hand here too.
/// Company "1" and chart 1 unless they are named.
namespace veldran::test::expected {

struct Owner {
    std::string ditta = "1";
    int chart = 1;
};

// Entering, leaving.
ExpectedMessage correlatedCausali(const std::string& account, const Owner& owner = {});
std::string correlationCountText(const Owner& owner = {});
std::vector<Message> correlationCount(const std::string& account, const Owner& owner = {});
/// The same with the preparation of its command.
std::vector<Message> firstCorrelationCount(const std::string& account, const Owner& owner = {});
/// The working tables are filled from what is stored: created on the way the first time, emptied before each
/// further time.
std::string headerFillText(const Owner& owner = {});
std::string detailFillText(const Owner& owner = {});
std::vector<Message> tablesCreated(const std::string& account, const Owner& owner = {});
std::vector<Message> tablesRefilled(const std::string& account, const Owner& owner = {});
ExpectedMessage markCorrelation(bool correlated, const std::string& account);
/// What the frames are opened from.
ExpectedMessage headers();
ExpectedMessage noRows();
ExpectedMessage rowsOf(const std::string& paddedCausale);

// The rows of one causale, permanent and working.
std::string deleteCorrelationText(const std::string& causale, const std::string& account,
                                  const Owner& owner = {});
std::string insertCorrelationText(const std::string& causale, const std::string& account,
                                  const Owner& owner = {});
/// Both of them in their transaction.
std::vector<Message> savedCorrelation(const std::string& causale, const std::string& account,
                                      const Owner& owner = {});
ExpectedMessage deletedWorkingRows(const std::string& causale);
std::vector<Message> inTransaction(const std::vector<Message>& messages);

// Cost-accounting accounts and cost items.
std::string kindsText();
std::vector<Message> kinds(const std::string& causale, int sign);
/// The same with the preparation of its command.
std::vector<Message> firstKinds(const std::string& causale, int sign);
/// As the screen sends it: with the marker of the company.
ExpectedMessage accountDescription(const std::string& account, int chart = 101);
ExpectedMessage itemDescription(const std::string& item, int chart = 201, const std::string& ditta = "1");

/// One list after the other.
std::vector<Message> together(const std::vector<std::vector<Message>>& lists);

} // namespace veldran::test::expected
