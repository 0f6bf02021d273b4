#pragma once

#include "platform/ado/recordset.h"
#include "tests/support/failing_driver.h"
#include "tests/support/recording_driver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// One database that the contract is tried on.
class ContractDatabase {
public:
    virtual ~ContractDatabase() = default;
    /// Why the contract cannot be tried, where the database is one that not everybody has; empty when it can.
    virtual std::string whyMissing() const { return {}; }
    virtual std::shared_ptr<ado::Driver> driver() = 0;
    /// Opens a session on the database; every session sees the same permanent tables.
    virtual std::string connectionString() = 0;
    /// A connection string that names no database that could be opened.
    virtual std::string badConnectionString() = 0;
    /// Whether the database means by `error` what SQL Server reports as `number`: a server that is known to
    /// differ says so here, in one place.
    virtual bool isReportOf(const ado::Error& error, int number) const { return error.Number == number; }
    /// Whether it has procedures that are made and called in T-SQL.
    virtual bool hasProcedures() const { return true; }
    /// Whether the database tells the sizes and digits of a procedure's parameters.
    virtual bool tellsParameterSizes() { return true; }
    /// Whether the database tells the base table and the key of the columns of a result.
    virtual bool describesBaseTables() const { return true; }
};

/// A binary that links the contract's sources instantiates them for its driver:
///     INSTANTIATE_TEST_SUITE_P(Embedded, AdoContract, ::testing::Values(&makeEmbeddedDatabase));
using MakeContractDatabase = std::unique_ptr<ContractDatabase> (*)();

/// What every driver does alike: statements, parameters, types, errors, transactions, and the recordsets
/// above them. Permanent objects that a test makes begin with VLDCT_; they are dropped before and after it.
class AdoContract : public ::testing::TestWithParam<MakeContractDatabase> {
protected:
    AdoContract();
    ~AdoContract() override;
    void SetUp() override;

    /// Executes a text for its effect. \return the number of rows it reports.
    std::int64_t run(const std::string& text);
    std::shared_ptr<ado::Recordset> query(const std::string& text) { return connection->Execute(text); }
    /// The first field of the first row.
    Value scalar(const std::string& text) { return query(text)->Fields()[0].Value(); }
    /// Runs a text that must fail with SQL Server's `number`, and be listed so by the connection.
    void expectFailure(const std::string& text, int number);
    void expectReported(int number);
    std::shared_ptr<ado::Connection> secondConnection();
    std::shared_ptr<ado::Command> command(const std::string& text, bool prepared = true);

    /// #D: CAUSALE NCHAR(4), PROG DECIMAL(3), SEGNO DECIMAL(2), PERC DECIMAL(5, 2) NULL, CONTO NCHAR(6) NULL,
    /// keyed by CAUSALE and PROG, with rows 1..n of causale VEND whose CONTO is C1..Cn, and one row of
    /// causale ALTR.
    void makeDetail(int rows);
    std::shared_ptr<ado::Recordset> openDetail(ado::LockTypeEnum lock = ado::adLockBatchOptimistic);
    /// PROG and CONTO of VEND's rows as stored: "1:C1 2:C2".
    std::string stored();
    static std::string shown(ado::Recordset& recordset);
    static void put(ado::Recordset& recordset, const char* field, Value value) {
        recordset.Fields()[field].Value(std::move(value));
    }
    static Value get(ado::Recordset& recordset, const char* field) {
        return recordset.Fields()[field].Value();
    }
    static void addRow(ado::Recordset& recordset, int prog, const std::string& conto);
    /// Deletes the record at `position` and numbers the others from 1.
    static void closeGap(ado::Recordset& recordset, std::int64_t position);

    std::unique_ptr<ContractDatabase> database = GetParam()();
    std::shared_ptr<RecordingDriver> recording = std::make_shared<RecordingDriver>(database->driver());
    std::shared_ptr<FailingDriver> failing = std::make_shared<FailingDriver>(recording);
    std::shared_ptr<ado::Connection> connection = ado::Connection::create(failing);

private:
    void dropPermanentObjects();
};

} // namespace veldran::test
