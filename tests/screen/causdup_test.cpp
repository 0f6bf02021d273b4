// The dialog that asks for the destination of a duplication, by its own properties and events.
#include "causali/frmci_causdup.h"
#include "tests/support/host_fakes.h"
#include "tests/support/screen_user.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace veldran::test {

namespace {

class DestinationDialog : public ::testing::Test {
protected:
    DestinationDialog() {
        decode.descriptions = {{"GIRO", "Giroconto   "}};
        dialog->Connessione(connection);
        dialog->LookupCOIN(&lookup);
        dialog->DecodeCOIN(&decode);
        dialog->StringaDiConnessione("Data Source=prova");
        dialog->CodiceDitta("7");
        dialog->Load();
    }
    void type(const std::string& code) { keyInto(dialog->TXT_CAUSALE, code); }
    void expectNothingConfirmed() {
        EXPECT_FALSE(dialog->IsValid());
        EXPECT_EQ(dialog->Causale(), "");
        EXPECT_EQ(dialog->DescrizioneCausale(), "");
    }

    LookupFake lookup;
    LookupFake decode;
    std::shared_ptr<ado::Connection> connection = ado::Connection::create(nullptr);
    std::shared_ptr<FRMCI_CAUSDUP> dialog = std::make_shared<FRMCI_CAUSDUP>();
};

TEST_F(DestinationDialog, SaysWhatItIsAndHasNothingConfirmedYet) {
    EXPECT_EQ(dialog->Name(), "FRMCI_CAUSDUP");
    EXPECT_EQ(dialog->Caption(), "Causale di destinazione");
    EXPECT_EQ(dialog->TXT_CAUSALE.Caption(), "Causale");
    EXPECT_EQ(dialog->CMD_CONFERMA.Caption(), "&Conferma");
    EXPECT_EQ(dialog->CMD_ANNULLA.Caption(), "&Annulla");
    EXPECT_TRUE(dialog->QRV_RESIZEFORM.Started());
    bool allowed = false;
    dialog->QRV_RESIZEFORM.QueryResize.raise(allowed);
    EXPECT_TRUE(allowed);
    expectNothingConfirmed();
}

TEST_F(DestinationDialog, KeepsWhatWasConfirmedReadableAfterItHasClosed) {
    type("giro  ");
    EXPECT_EQ(dialog->TXT_DESCRCAUSALE.Caption(), "Giroconto   ");
    dialog->CMD_CONFERMA.ClickFromView();
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_TRUE(dialog->IsValid());
    EXPECT_EQ(dialog->Causale(), "GIRO");
    EXPECT_EQ(dialog->DescrizioneCausale(), "Giroconto") << "without trailing blanks";
}

TEST_F(DestinationDialog, AsksOneObjectForDescriptionsAndTheOtherForTheList) {
    type("GIRO");
    lookup.choice = services::LookupChoice{"GIRO", "Giroconto"};
    dialog->TXT_CAUSALE.LookupFromView();
    ASSERT_FALSE(decode.decodes.empty());
    EXPECT_TRUE(decode.lists.empty());
    ASSERT_EQ(lookup.lists.size(), 1U);
    for (const services::LookupRequest& request : {decode.decodes[0], lookup.lists[0]}) {
        EXPECT_EQ(request.kind, services::LookupKind::Causali);
        EXPECT_EQ(request.code, "GIRO");
        EXPECT_EQ(request.connection, connection);
        EXPECT_EQ(request.connectionString, "Data Source=prova");
        EXPECT_EQ(request.ditta, "7");
    }
    EXPECT_EQ(lookup.lists[0].title, "Causale correlata");
    EXPECT_EQ(dialog->TXT_DESCRCAUSALE.Caption(), "Giroconto   ");
}

TEST_F(DestinationDialog, TakesNoCodeThatWasNotDecoded) {
    for (const char* code : {"ZZZ", "", "   "}) {
        type(code);
        dialog->CMD_CONFERMA.ClickFromView();
        EXPECT_TRUE(dialog->IsLoaded()) << code;
        expectNothingConfirmed();
    }
    type("GIRO");
    dialog->TXT_CAUSALE.TypeFromView("GIR"); // not left yet: nobody has looked it up
    dialog->CMD_CONFERMA.ClickFromView();
    EXPECT_TRUE(dialog->IsLoaded());
    expectNothingConfirmed();
}

TEST_F(DestinationDialog, ConfirmsNothingWhenItIsCancelled) {
    type("GIRO");
    dialog->CMD_ANNULLA.ClickFromView();
    EXPECT_FALSE(dialog->IsLoaded());
    expectNothingConfirmed();
}

TEST_F(DestinationDialog, LeavesOtherKeysToItsControls) {
    EXPECT_FALSE(dialog->FormKeyDownFromView(controls::keyF4, controls::shiftNone));
    EXPECT_FALSE(dialog->FormKeyDownFromView(controls::keyF4, controls::shiftShift));
    EXPECT_FALSE(dialog->FormKeyDownFromView(controls::keyReturn, controls::shiftNone));
    EXPECT_TRUE(dialog->IsLoaded());
    EXPECT_TRUE(dialog->FormKeyDownFromView(controls::keyEscape, controls::shiftNone)) << "swallowed";
    EXPECT_FALSE(dialog->IsLoaded());
}

TEST_F(DestinationDialog, LetsGoOfWhatItWasGivenWhenItCloses) {
    const std::weak_ptr<ado::Connection> given = connection;
    connection.reset();
    EXPECT_FALSE(given.expired());
    dialog->Unload();
    EXPECT_TRUE(given.expired());
    type("GIRO");
    EXPECT_TRUE(decode.decodes.empty());
}

TEST_F(DestinationDialog, LetsAFailureThroughWhereNobodyReportsIt) {
    decode.failure = ado::Error{1, "test", "guasto", "", 1};
    EXPECT_THROW(type("GIRO"), ado::AdoError);
}

} // namespace

} // namespace veldran::test
