// The two code fields of a correlation row: which accounts they offer, what their codes mean, and how they
// are prepared, maintained and released.
#include "tests/screen/correlation_areas.h"
#include "tests/screen/expected_correlation_statements.h"

namespace veldran::test {

namespace {

using controls::LookupField;

Chart withKinds(const std::string& causale, int sign, const std::string& flags) {
    return costChart().script("INSERT INTO CI11_CONTROLLOCONTI VALUES (" + literal(causale) + ", " +
                              std::to_string(sign) + ", " + flags + ")");
}

TEST(AccountKinds, AreNoneForACausaleAndSignWithoutARow) {
    CorrelationAreas work;
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("GIRO", "1"), 0);
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("ZZZZ", "2"), 0);
    EXPECT_TRUE(work.errors().empty());
}

TEST(AccountKinds, AreAllOfThemWhenEveryFlagIsSet) {
    CorrelationAreas work;
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("ACQ", "2"), 1023);
}

TEST(AccountKinds, AreTheSumOfTheFlagsThatAreSet) {
    CorrelationAreas work(withKinds("GIRO", 1, "1, 0, 0, 0, 0, 0, 0, 0, 1, 0"));
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("GIRO", "1"), 257);
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("GIRO", "2"), 0);
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("VEND", "1"), 8);
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("VEND", "2"), 1);
}

TEST(AccountKinds, GiveEachFlagABitOfItsOwn) {
    Chart chart = costChart();
    for (int bit = 0; bit < 10; ++bit) {
        std::string flags;
        for (int other = 0; other < 10; ++other) {
            flags += other == bit ? ", 1" : ", 0";
        }
        chart.script("INSERT INTO CI11_CONTROLLOCONTI VALUES ('K" + std::to_string(bit) + "', 1" + flags +
                     ")");
    }
    CorrelationAreas work(chart);
    for (int bit = 0; bit < 10; ++bit) {
        EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("K" + std::to_string(bit), "1"), 1 << bit);
    }
}

TEST(AccountKinds, AreReadByOneCommandPreparedOnce) {
    CorrelationAreas work;
    work.screen.forget();
    work.areas->campi.GetTipologiaContoIndustriale("VEND", "1");
    work.areas->campi.GetTipologiaContoIndustriale("ACQ", "2");
    const auto wanted = expected::together({expected::firstKinds("VEND", 1), expected::kinds("ACQ", 2)});
    EXPECT_EQ(work.screen.log().messages(), wanted);
}

TEST(AccountKinds, AreNoneAndReportedAfterAFailure) {
    CorrelationAreas work;
    work.screen.failures().failContaining("CI11_CONTROLLOCONTI");
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("ACQ", "1"), 0);
    EXPECT_EQ(work.labels(), Texts{"GetTipologiaContoIndustriale:"});
    EXPECT_EQ(work.areas->campi.GetTipologiaContoIndustriale("ACQ", "1"), 1023);
}

TEST(Descriptions, OfTheSameCodeAreReadOnce) {
    CorrelationAreas work;
    CampiAnalitici& fields = work.areas->campi;
    work.screen.forget();
    EXPECT_EQ(fields.DescrizioneConto("COLACQ0010"), "Costi di acquisto");
    EXPECT_EQ(fields.DescrizioneConto("COLACQ0010"), "Costi di acquisto");
    EXPECT_EQ(fields.DescrizioneVDS("MATPRI"), "Materie prime");
    EXPECT_EQ(fields.DescrizioneVDS("MATPRI"), "Materie prime");
    const std::vector<Message> wanted = {expected::accountDescription("COLACQ0010"),
                                         expected::itemDescription("MATPRI")};
    EXPECT_EQ(work.screen.log().messages(), wanted);
}

TEST(Descriptions, OfAccountsAndOfItemsAreKeptApart) {
    CorrelationAreas work;
    EXPECT_EQ(work.areas->campi.DescrizioneConto("MATPRI"), "");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("MATPRI"), "Materie prime");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("COLACQ0010"), "");
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "Costi di acquisto");
}

TEST(Descriptions, OfAnUnknownCodeAreEmptyAndNotLookedUpAgain) {
    CorrelationAreas work;
    work.screen.forget();
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(work.areas->campi.DescrizioneConto("NESSUNO"), "");
        EXPECT_EQ(work.areas->campi.DescrizioneVDS("NESSUNA"), "");
    }
    EXPECT_EQ(work.screen.sent().size(), 2U);
    EXPECT_TRUE(work.errors().empty());
}

TEST(Descriptions, AreReportedAndNotKeptWhenTheStatementFails) {
    CorrelationAreas work;
    work.screen.failures().failContaining("FNPC03_ANAGPDC_COAN(101");
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "");
    work.screen.failures().failContaining("FNPC03_ANAGPDC_COAN(201");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("MATPRI"), "");
    EXPECT_EQ(work.labels(), (Texts{"DescrizioneConto:", "DescrizioneVDS:"}));
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "Costi di acquisto");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("MATPRI"), "Materie prime");
    EXPECT_EQ(work.errors().size(), 2U);
}

TEST(Descriptions, OfAccountsKeepTheMarkerOfTheCompanyForTheConnectionToResolve) {
    CorrelationAreas work(costChart(), costCompany(), Screen::Markers::Unknown);
    work.screen.forget();
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "");
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "");
    EXPECT_EQ(work.labels(), (Texts{"DescrizioneConto:", "DescrizioneConto:"}))
        << "the database knows no such marker, and what failed is asked again";
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("MATPRI"), "Materie prime")
        << "the cost item's statement names the company";
    const std::vector<Message> wanted = {expected::accountDescription("COLACQ0010"),
                                         expected::accountDescription("COLACQ0010"),
                                         expected::itemDescription("MATPRI")};
    EXPECT_EQ(work.screen.log().messages(), wanted);
}

TEST(Descriptions, AreLookedForInTheChartsThatTheHostNamesAtThatMoment) {
    CorrelationAreas work;
    work.screen.host.company.costChart = 102;
    work.screen.host.company.itemChart = 202;
    work.screen.forget();
    EXPECT_EQ(work.areas->campi.DescrizioneConto("COLACQ0010"), "");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("MATPRI"), "");
    const std::vector<Message> wanted = {expected::accountDescription("COLACQ0010", 102),
                                         expected::itemDescription("MATPRI", 202)};
    EXPECT_EQ(work.screen.log().messages(), wanted);
}

TEST(Descriptions, TakeACodeWithAQuoteAsACode) {
    CorrelationAreas work;
    EXPECT_EQ(work.areas->campi.DescrizioneConto("D'A"), "");
    EXPECT_EQ(work.areas->campi.DescrizioneVDS("D'A"), "");
    EXPECT_TRUE(work.errors().empty());
}

TEST(FieldPreparation, GivesTheFieldItsServiceItsChartItsCodesAndItsDescriptionAPlace) {
    CorrelationAreas work;
    work.screen.host.lookups.structures[101] = {10, {{0, 3}, {3, 3}, {6, 4}}, '.', false};
    work.screen.host.lookups.structures[201] = {6, {{0, 3}, {3, 3}}, '.', false};
    work.controls().TXT_CONTO.SetLookupEnabled(false);
    work.controls().TXT_VDS.SetLookupEnabled(false);
    work.areas->campi.ImpostazioneProprietaContoCOIN();
    work.areas->campi.ImpostazioneProprietaContoVDS();
    const auto expectPrepared = [&](LookupField& field, const controls::Label& description, int chart,
                                    const std::string& typed, const std::string& code) {
        EXPECT_TRUE(field.LookupEnabled());
        EXPECT_EQ(description.StandsBehind(), &field);
        field.TypeFromView(typed);
        field.LeaveFromView();
        ASSERT_FALSE(work.screen.host.lookups.decodes.empty());
        const services::LookupRequest& request = work.screen.host.lookups.decodes.back();
        EXPECT_EQ(request.code, code) << "typed forms become codes by the chart's structure";
        EXPECT_EQ(request.pdc, chart);
        EXPECT_EQ(request.connection, work.work.connection);
    };
    expectPrepared(work.controls().TXT_CONTO, work.controls().TXT_DESCRCONTO, 101, "COL.ACQ.0010",
                   "COLACQ0010");
    expectPrepared(work.controls().TXT_VDS, work.controls().TXT_DESCRVDS, 201, "MAT.PRI", "MATPRI");
    EXPECT_TRUE(work.errors().empty());
}

TEST(FieldPreparation, IsReportedUnderTheFieldItConcerns) {
    CorrelationAreas work;
    work.screen.host.lookups.failure = simulatedFailure("struttura non disponibile");
    work.areas->campi.ImpostazioneProprietaContoCOIN();
    work.areas->campi.ImpostazioneProprietaContoVDS();
    EXPECT_EQ(work.labels(), (Texts{"ImpostazioneProprietaContoCOIN:", "ImpostazioneProprietaContoVDS:"}));
}

class AnalyticFields : public EditorTest {
protected:
    /// Stored rows of VEND, which allows centres of cost (8) in Dare and connections (1) in Avere.
    void enterSales() {
        enter(withStored({{"2", "100.00", "COLACQ0010", "NULL"}, {"1", "100.00", "CDCPRO0010", "MATPRI"}},
                         "VEND"));
        forgetRequests();
    }
    void forgetRequests() {
        lookups().decodes.clear();
        lookups().lists.clear();
    }
    /// Requests of one kind among those that were decoded.
    std::vector<services::LookupRequest> decoded(services::LookupKind kind) {
        std::vector<services::LookupRequest> found;
        std::copy_if(lookups().decodes.begin(), lookups().decodes.end(), std::back_inserter(found),
                     [kind](const services::LookupRequest& request) { return request.kind == kind; });
        return found;
    }
    void expectOfTheForm(const services::LookupRequest& request) {
        EXPECT_EQ(request.connection.get(), &screen->host.connection());
        EXPECT_EQ(request.connectionString, screen->database.connectionString());
        EXPECT_EQ(request.ditta, "1");
    }
};

TEST_F(AnalyticFields, OfferOnlyAccountsThatCausaleAndSignAllowAndSayWhy) {
    enterSales();
    e().clickRow(1);
    e().account().LookupFromView();
    ASSERT_EQ(lookups().lists.size(), 1U);
    const services::LookupRequest& list = lookups().lists[0];
    EXPECT_EQ(list.kind, services::LookupKind::ContiCoin);
    EXPECT_EQ(list.pdc, 101);
    EXPECT_EQ(list.code, "CDCPRO0010");
    EXPECT_EQ(list.title, "Conti di contabilità analitica");
    EXPECT_EQ(list.tipologie, 8);
    EXPECT_EQ(list.restriction, "Solo i conti delle tipologie ammesse per la causale VEND e il segno Dare.");
    expectOfTheForm(list);
    e().clickRow(0);
    e().account().LookupFromView();
    ASSERT_EQ(lookups().lists.size(), 2U);
    EXPECT_EQ(lookups().lists[1].tipologie, 1);
    EXPECT_EQ(lookups().lists[1].restriction,
              "Solo i conti delle tipologie ammesse per la causale VEND e il segno Avere.");
}

TEST_F(AnalyticFields, SayNothingWhereEveryAccountIsAllowed) {
    enter(withStored());
    e().account().LookupFromView();
    ASSERT_EQ(lookups().lists.size(), 1U);
    EXPECT_EQ(lookups().lists[0].tipologie, 1023);
    EXPECT_EQ(lookups().lists[0].restriction, "");
}

TEST_F(AnalyticFields, RestrictWhatIsTypedButNotWhatIsStored) {
    enterSales();
    e().clickRow(1);
    const auto shown = decoded(services::LookupKind::ContiCoin);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_FALSE(shown[0].entered);
    EXPECT_EQ(shown[0].tipologie, std::nullopt);
    EXPECT_EQ(shown[0].restriction, "");
    forgetRequests();
    keyInto(e().account(), "cdcpro0020");
    const auto typed = decoded(services::LookupKind::ContiCoin);
    ASSERT_FALSE(typed.empty());
    EXPECT_TRUE(typed.back().entered);
    EXPECT_EQ(typed.back().tipologie, 8);
    EXPECT_EQ(typed.back().restriction,
              "Solo i conti delle tipologie ammesse per la causale VEND e il segno Dare.");
    expectOfTheForm(typed.back());
}

TEST_F(AnalyticFields, OfCostItemsAreNotRestricted) {
    enterSales();
    e().clickRow(1);
    screen->forget();
    e().item().LookupFromView();
    keyInto(e().item(), "SERTRA");
    ASSERT_EQ(lookups().lists.size(), 1U);
    EXPECT_EQ(lookups().lists[0].kind, services::LookupKind::VociDiSpesa);
    EXPECT_EQ(lookups().lists[0].pdc, 201);
    EXPECT_EQ(lookups().lists[0].title, "Voci di spesa");
    EXPECT_EQ(lookups().lists[0].tipologie, std::nullopt);
    expectOfTheForm(lookups().lists[0]);
    ASSERT_FALSE(decoded(services::LookupKind::VociDiSpesa).empty());
    EXPECT_EQ(decoded(services::LookupKind::VociDiSpesa).back().tipologie, std::nullopt);
    EXPECT_TRUE(screen->log().containing("CI11_CONTROLLOCONTI").empty());
    EXPECT_EQ(e().control<controls::Label>("TXT_DESCRVDS").Caption(), "Trasporti");
}

TEST_F(AnalyticFields, TakeOverWhatTheUserPicksFromTheList) {
    enterSales();
    e().clickRow(1);
    lookups().choice = services::LookupChoice{"CDCPRO0020", "Reparto verniciatura"};
    e().account().LookupFromView();
    EXPECT_EQ(e().account().Text(), "CDCPRO0020");
    EXPECT_EQ(e().control<controls::Label>("TXT_DESCRCONTO").Caption(), "Reparto verniciatura");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("VEND")[1].account, "CDCPRO0020");
}

TEST_F(AnalyticFields, OpenTheMaintenanceOfTheirCodeAndRebuildTheScriptAfterwards) {
    enterSales();
    e().clickRow(1);
    screen->host.navigator->SetScript(nullptr);
    const std::size_t built = screen->host.scripts.builtFor.size();
    e().account().PressKeyButtonMenuFromView("Kgestione");
    ASSERT_EQ(lookups().maintained.size(), 1U);
    EXPECT_EQ(lookups().maintained[0].kind, services::LookupKind::ContiCoin);
    EXPECT_EQ(lookups().maintained[0].code, "CDCPRO0010");
    EXPECT_EQ(lookups().maintained[0].pdc, 101);
    expectOfTheForm(lookups().maintained[0]);
    EXPECT_EQ(screen->host.scripts.builtFor.size(), built + 1);
    e().item().PressKeyButtonMenuFromView("Kgestione");
    ASSERT_EQ(lookups().maintained.size(), 2U);
    EXPECT_EQ(lookups().maintained[1].kind, services::LookupKind::VociDiSpesa);
    EXPECT_EQ(lookups().maintained[1].code, "MATPRI");
    EXPECT_EQ(lookups().maintained[1].pdc, 201);
}

TEST_F(AnalyticFields, DoNothingForOtherItemsOfTheirMenu) {
    enterSales();
    screen->host.navigator->SetScript(nullptr);
    const std::size_t built = screen->host.scripts.builtFor.size();
    for (LookupField* field : {&e().account(), &e().item()}) {
        field->PressKeyButtonMenuFromView("Kricerca");
        field->PressKeyButtonMenuFromView("");
    }
    EXPECT_TRUE(lookups().maintained.empty());
    EXPECT_EQ(screen->host.scripts.builtFor.size(), built);
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(AnalyticFields, RebuildTheScriptAlsoAfterAMaintenanceThatFailed) {
    enterSales();
    screen->host.navigator->SetScript(nullptr);
    const std::size_t built = screen->host.scripts.builtFor.size();
    lookups().failure = simulatedFailure("gestione non disponibile");
    e().account().PressKeyButtonMenuFromView("Kgestione");
    lookups().failure.reset();
    ASSERT_EQ(messages().errors.size(), 1U);
    EXPECT_EQ(messages().errors[0].routine, "GestioneConto:");
    EXPECT_EQ(screen->host.scripts.builtFor.size(), built + 1);
}

TEST_F(AnalyticFields, ReportAFailureOfTheLookupServiceUnderTheEventThatAsked) {
    enterSales();
    e().clickRow(1);
    const auto labelAfter = [&](const auto& action) {
        messages().clear();
        lookups().failure = simulatedFailure("elenco non disponibile");
        action();
        lookups().failure.reset();
        return messages().errors.size() == 1 ? messages().errors[0].routine : std::string("not one report");
    };
    e().account().SetFocus();
    EXPECT_EQ(labelAfter([&] { e().account().LookupFromView(); }), "TXT_CONTO_StartLookup");
    EXPECT_EQ(labelAfter([&] {
                  e().account().TypeFromView("CDC");
                  e().account().LeaveFromView();
              }),
              "TXT_CONTO_StartDecode");
    EXPECT_EQ(labelAfter([&] { e().item().LookupFromView(); }), "TXT_VDS_StartLookup");
    EXPECT_EQ(labelAfter([&] {
                  e().item().TypeFromView("SER");
                  e().item().LeaveFromView();
              }),
              "TXT_VDS_StartDecode");
}

TEST_F(AnalyticFields, AreReleasedWhenTheFormUnloads) {
    enterSales();
    const auto form = screen->host.windows->forms().back();
    EXPECT_TRUE(form->Unload());
    screen->host.windows->DoEvents();
    forgetRequests();
    for (const char* name : {"TXT_CONTO", "TXT_VDS", "TXT_CAUSALE"}) {
        auto& field = dynamic_cast<LookupField&>(*form->FindControl(name));
        field.TypeFromView("COLACQ0010");
        field.LeaveFromView();
        field.LookupFromView();
        EXPECT_EQ(field.CodeStructure().codeLength, 0) << name;
        EXPECT_FALSE(field.IsValidItem()) << name;
    }
    EXPECT_TRUE(lookups().decodes.empty());
    EXPECT_TRUE(lookups().lists.empty());
    EXPECT_EQ(screen->database.openSessions(), 0) << "no field keeps the connection";
}

TEST_F(AnalyticFields, LeaveTheCostItemUnpreparedWhereTheCompanyManagesNone) {
    Company company = costCompany();
    company.costItems = false;
    enter(withStored(), company);
    EXPECT_EQ(e().account().CodeStructure().codeLength, 10);
    EXPECT_EQ(e().item().CodeStructure().codeLength, 0);
}

TEST_F(AnalyticFields, RefuseARowWhoseAccountWasLookedUpInVain) {
    enter(withStored());
    e().clickCausale("ACQ");
    e().clickRow(1);
    keyInto(e().account(), "ZZZ");
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text,
              "Il conto indicato non esiste o non è ammesso per la causale e il segno della riga.");
    EXPECT_EQ(messages().boxes[0].title, "Attenzione");
    EXPECT_EQ(messages().boxes[0].style, services::styleExclamation);
    EXPECT_EQ(e().focus(), "TXT_CONTO");
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    EXPECT_EQ(e().account().Text(), "ZZZ") << "what was keyed is there to be corrected";
    e().account().TypeFromView("CDCPRO0020");
    e().account().LeaveFromView();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ")[1].account, "CDCPRO0020");
    EXPECT_EQ(messages().boxes.size(), 1U);
}

TEST_F(AnalyticFields, RefuseARowWhoseCostItemWasLookedUpInVain) {
    enter(withStored());
    e().clickCausale("ACQ");
    e().clickRow(1);
    keyInto(e().item(), "ZZZ");
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "La voce di spesa indicata non esiste.");
    EXPECT_EQ(e().focus(), "TXT_VDS");
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(AnalyticFields, LeaveAStoredAccountThatHasGoneToTheRowsThatHaveIt) {
    enter(withStored({{"2", "100.00", "GONE"}, {"1", "100.00", "CDCPRO0010"}}));
    e().clickCausale("ACQ");
    e().clickRow(0);
    keyInto(e().account(), "GONE");
    EXPECT_TRUE(e().account().IsUnknownItem());
    keyInto(e().percentage(), "90");
    EXPECT_TRUE(e().save());
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(e().stored("ACQ")[0].percentage, "90.00");
}

TEST_F(AnalyticFields, LeaveAStoredAccountThatHasGoneToTheRowThatItsRowWasMovedTo) {
    enter(withStored({{"2", "100.00", "GONE"}, {"1", "100.00", "CDCPRO0010"}}));
    e().clickCausale("ACQ");
    e().clickRow(0);
    e().down().ClickFromView();
    keyInto(e().percentage(), "90");
    EXPECT_TRUE(e().save());
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(e().stored("ACQ"), (Rows{{"1", "100.00", "CDCPRO0010"}, {"2", "90.00", "GONE"}}));
}

} // namespace

} // namespace veldran::test
