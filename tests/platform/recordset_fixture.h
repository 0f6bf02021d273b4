#pragma once

#include "platform/ado/recordset.h"
#include "tests/platform/memory_driver.h"
#include "tests/support/ado_expect.h"
#include "tests/support/failing_driver.h"
#include "tests/support/recording_driver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

inline Value percent(std::int64_t hundredths) {
    return Value(Decimal{hundredths, 2});
}
inline Value number(std::int64_t integer) {
    return Value(Decimal{integer, 0});
}

/// A connection to a table #T (CAUSALE NCHAR(4), PROG DECIMAL(3), SEGNO DECIMAL(2), PERC DECIMAL(5,2) NULL,
/// CONTO NCHAR(6) NULL), keyed by CAUSALE and PROG, whose statements are recorded and may be made to fail.
class RecordsetTest : public ::testing::Test {
protected:
    RecordsetTest() {
        memory->database().tables.push_back(
            {"#T",
             {keyColumn("CAUSALE", ado::adWChar, 4), keyColumn("PROG", ado::adNumeric, 3),
              column("SEGNO", ado::adNumeric, 2), column("PERC", ado::adNumeric, 5, 2),
              column("CONTO", ado::adWChar, 6)},
             {}});
        connection->Open("memory");
    }

    /// Rows 1..n of causale VEND with the given signs; percentage and account follow from the number.
    void fill(const std::vector<int>& signs) {
        std::int64_t prog = 0;
        for (const int sign : signs) {
            ++prog;
            rows().push_back({Value("VEND"), number(prog), number(sign), percent(prog * 1000),
                              Value("C0000" + std::to_string(prog))});
        }
    }
    std::vector<std::vector<Value>>& rows() { return memory->database().table("#T").rows; }

    std::shared_ptr<ado::Recordset> opened(ado::LockTypeEnum lock = ado::adLockBatchOptimistic) {
        auto recordset = std::make_shared<ado::Recordset>();
        recordset->Open("SELECT * FROM #T", connection, ado::adOpenStatic, lock);
        recording->log().clear();
        return recordset;
    }

    /// PROG and CONTO of the rows in the table: "1:C00001 2:C00002".
    std::string stored() {
        std::string text;
        for (const auto& row : rows()) {
            text += (text.empty() ? "" : " ") + row[1].toText() + ":" + nullSafeText(row[4]);
        }
        return text;
    }
    /// PROG and CONTO of the records that the recordset shows, in their order.
    static std::string shown(ado::Recordset& recordset) {
        const auto cursor = recordset.Clone();
        cursor->Filter(std::holds_alternative<std::string>(recordset.Filter())
                           ? std::get<std::string>(recordset.Filter())
                           : std::string());
        std::string text;
        for (; !cursor->EndOfFile(); cursor->MoveNext()) {
            text += (text.empty() ? "" : " ") + nullSafeText(cursor->Fields()["PROG"].Value()) + ":" +
                    nullSafeText(cursor->Fields()["CONTO"].Value());
        }
        return text;
    }
    static void put(ado::Recordset& recordset, const char* field, Value value) {
        recordset.Fields()[field].Value(std::move(value));
    }
    static Value get(ado::Recordset& recordset, const char* field) {
        return recordset.Fields()[field].Value();
    }
    static void addRow(ado::Recordset& recordset, std::int64_t prog, const std::string& conto) {
        recordset.AddNew();
        put(recordset, "CAUSALE", "VEND");
        put(recordset, "PROG", number(prog));
        put(recordset, "SEGNO", 1);
        put(recordset, "CONTO", conto);
        recordset.Update();
    }

    std::shared_ptr<MemoryDriver> memory = std::make_shared<MemoryDriver>();
    std::shared_ptr<RecordingDriver> recording = std::make_shared<RecordingDriver>(memory);
    std::shared_ptr<FailingDriver> failing = std::make_shared<FailingDriver>(recording);
    std::shared_ptr<ado::Connection> connection = ado::Connection::create(failing);
};

} // namespace veldran::test
