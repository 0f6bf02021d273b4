#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "shell/lookup_list_service.h"
#include "tests/shell/shell_fixture.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTest>

namespace veldran::test {
namespace {

using services::LookupKind;
using services::LookupRequest;

class LookupListServiceTest : public testing::Test {
protected:
    LookupRequest request(LookupKind kind, const std::string& code, std::int32_t pdc = 101) {
        LookupRequest request;
        request.kind = kind;
        request.code = code;
        request.title = "Ricerca";
        request.connection = connection_;
        request.ditta = "1";
        request.pdc = pdc;
        if (kind != LookupKind::Causali) {
            request.structure = service_.NewCodeFormatter(connection_, pdc).Structure();
        }
        return request;
    }
    /// What the list says of its restriction, and how many rows it has.
    std::pair<QString, int> listed(const LookupRequest& request) {
        std::pair<QString, int> seen;
        EXPECT_TRUE(withModal([&] { service_.Choose(request); },
                              [&](QWidget& modal) {
                                  const auto* note = modal.findChild<QLabel*>("restrizione");
                                  seen.first = note ? note->text() : QString();
                                  seen.second = modal.findChild<QTableView*>("elenco")->model()->rowCount();
                                  QTest::keyClick(&modal, Qt::Key_Escape);
                              }));
        return seen;
    }
    /// What the user is told instead of a maintenance.
    QString told(const LookupRequest& request) {
        QString text;
        EXPECT_TRUE(withModal([&] { service_.Maintain(request); },
                              [&](QWidget& modal) {
                                  text = dynamic_cast<QMessageBox&>(modal).text();
                                  QTest::keyClick(&modal, Qt::Key_Return);
                              }));
        return text;
    }
    /// Types a description in the maintenance of the request's code and confirms it.
    void describe(const LookupRequest& request, const QString& description) {
        EXPECT_TRUE(withModal([&] { service_.Maintain(request); },
                              [&](QWidget& modal) {
                                  auto* field = modal.findChild<QLineEdit*>("descrizione");
                                  field->selectAll();
                                  QTest::keyClicks(field, description);
                                  QTest::keyClick(field, Qt::Key_Return);
                              }));
    }

    ScratchFolder folder_;
    std::shared_ptr<ado::Connection> connection_ = openDatabase(demoDatabase(folder_));
    shell::UserRights rights_;
    shell::LookupListService service_{rights_};
};

TEST_F(LookupListServiceTest, SaysTheKindsThatAListOfCostAccountsIsNarrowedTo) {
    auto wanted = request(LookupKind::ContiCoin, "");
    wanted.tipologie = 2 + 256;
    EXPECT_EQ(listed(wanted), std::pair(QString("Solo conti di tipo: transitorio, risultato."), 7));
    wanted.tipologie = 0;
    EXPECT_EQ(listed(wanted), std::pair(QString("Nessun tipo di conto è ammesso."), 0));
    wanted.tipologie = 1023;
    EXPECT_EQ(listed(wanted).first, "");
}

TEST_F(LookupListServiceTest, SaysTheFormsOwnReasonWhereItGivesOne) {
    auto wanted = request(LookupKind::ContiCoin, "");
    wanted.tipologie = 1;
    wanted.restriction = "Conti ammessi da FTAC in avere";
    EXPECT_EQ(listed(wanted).first, "Conti ammessi da FTAC in avere");
}

TEST_F(LookupListServiceTest, SaysNothingOfKindsInOtherLists) {
    auto wanted = request(LookupKind::Causali, "");
    wanted.tipologie = 0;
    EXPECT_EQ(listed(wanted).first, "");
}

TEST_F(LookupListServiceTest, TakesACostAccountByACodeTypedInLowerCaseWithSeparators) {
    std::optional<services::LookupChoice> choice;
    EXPECT_TRUE(withModal([&] { choice = service_.Choose(request(LookupKind::ContiCoin, "")); },
                          [&](QWidget& modal) {
                              auto* code = modal.findChild<QLineEdit*>("filtroCodice");
                              code->setFocus();
                              QTest::keyClicks(code, "cdc.prd.002");
                              QTest::keyClick(code, Qt::Key_Return);
                          }));
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->code, "CDCPRD0020");
    EXPECT_EQ(choice->description, "Tornitura");
}

TEST_F(LookupListServiceTest, OpensTheListAtTheCodeTypedInAnyCase) {
    std::optional<services::LookupChoice> choice;
    EXPECT_TRUE(withModal([&] { choice = service_.Choose(request(LookupKind::ContiCoin, "cdc.prd.0020")); },
                          [&](QWidget& modal) { QTest::keyClick(modal.focusWidget(), Qt::Key_Return); }));
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->code, "CDCPRD0020");
}

TEST_F(LookupListServiceTest, FormatsCodesAsTheirChartShowsThem) {
    EXPECT_EQ(service_.NewCodeFormatter(connection_, 101).Format("CDCPRD0020     ", true, '*'),
              "CDC.PRD.0020");
    EXPECT_EQ(service_.NewCodeFormatter(connection_, 101).Format("CDCPRD002", true, '*'), "CDC.PRD.002*");
    EXPECT_EQ(service_.NewCodeFormatter(connection_, 202).Format("ING01", true, '*'), "ING.01");
    EXPECT_EQ(service_.NewCodeFormatter(connection_, 999).Format("ING01", true, '*'), "ING01");
    EXPECT_THROW(service_.NewCodeFormatter(nullptr, 101), ado::AdoError);
}

TEST_F(LookupListServiceTest, LetsAFieldSeeAtItsNextDecodeWhatMaintenanceChanged) {
    controls::Form form("FRM_PROVA");
    controls::LookupField field(form, "TXT_CONTO");
    field.SetLookupService(&service_);
    field.SetConnection(connection_);
    field.SetChartCode("101");
    field.SetCodeStructure(service_.NewCodeFormatter(connection_, 101).Structure());
    const auto kept = field.StartDecode.subscribe([](LookupRequest& request) {
        request.kind = LookupKind::ContiCoin;
        request.ditta = "1";
    });
    field.TypeFromView("cdc.prd.0020");
    field.LeaveFromView();
    ASSERT_EQ(field.Description(), "Tornitura");
    describe(request(LookupKind::ContiCoin, field.Text()), "Tornitura fine");
    EXPECT_TRUE(field.Decode());
    EXPECT_EQ(field.Description(), "Tornitura fine");
}

TEST_F(LookupListServiceTest, DecodesAndListsACostItemThatMaintenanceCreated) {
    auto item = request(LookupKind::VociDiSpesa, "mat060", 201);
    EXPECT_EQ(service_.Decode(item), std::nullopt);
    const int before = listed(item).second;
    describe(item, "Vernici");
    EXPECT_EQ(service_.Decode(item), "Vernici");
    EXPECT_EQ(listed(item).second, before + 1);
}

TEST_F(LookupListServiceTest, KeepsToTheUsersRightsInMaintenance) {
    rights_.update = false;
    EXPECT_TRUE(withModal([&] { service_.Maintain(request(LookupKind::ContiCoin, "CDCPRD0020")); },
                          [](QWidget& modal) {
                              EXPECT_TRUE(modal.findChild<QLineEdit*>("descrizione")->isReadOnly());
                              QTest::keyClick(&modal, Qt::Key_Escape);
                          }));
}

TEST_F(LookupListServiceTest, TellsWhenThereIsNothingToMaintain) {
    EXPECT_EQ(told(request(LookupKind::Causali, "FTAC")), "Questi codici non si gestiscono da qui.");
    EXPECT_EQ(told(request(LookupKind::VociDiSpesa, "", 0)), "La ditta non ha un piano delle voci di spesa.");
    EXPECT_EQ(told(request(LookupKind::ContiCoin, "", 0)),
              "La ditta non ha un piano dei conti di contabilità analitica.");
}

TEST_F(LookupListServiceTest, LetsAFailureBeforeMaintenanceOpensThrough) {
    auto lost = request(LookupKind::ContiCoin, "CDCPRD0020");
    lost.connection->Close();
    EXPECT_THROW(service_.Maintain(lost), ado::AdoError);
    lost.connection = nullptr;
    EXPECT_THROW(service_.Maintain(lost), ado::AdoError);
}

} // namespace
} // namespace veldran::test
