#pragma once

#include "platform/controls/container.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/tree_view.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veldran::qt {

/// Decodes two accounts and answers lists as the test says.
class AccountLookup : public services::LookupService {
public:
    std::optional<std::string> Decode(const services::LookupRequest& request) override {
        decoded.push_back(request.code);
        const auto found = texts.find(request.code);
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<services::LookupChoice> Choose(const services::LookupRequest& request) override {
        listed.push_back(request.code);
        return choice;
    }
    void Maintain(const services::LookupRequest& request) override { maintained.push_back(request.code); }
    services::CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>&, std::int32_t) override {
        return services::CodeFormatter({});
    }

    std::map<std::string, std::string> texts{{"0102030005", "Cassa contanti"},
                                             {"0102030006", "Cassa valori"}};
    std::optional<services::LookupChoice> choice;
    std::vector<std::string> decoded;
    std::vector<std::string> listed;
    std::vector<std::string> maintained;
};

/// The controls of the screen's activation mode, and two that no layout knows.
struct FieldForm : controls::Form {
    FieldForm() : Form("FRM_FIELDS") {
        filters.AddTab("Tutti", "Tutti i conti");
        filters.AddTab("Att.", "Conti attivati");
        filters.AddTab("Non att.", "Conti non attivati");
        filters.Select(1);
        filter.SetCaption(" Tutti i conti");
        caption.SetCaption("Con&to");
        search.SetCaption("&Ricerca");
        correlations.SetCaption("&Correlazioni");
        mode.SetCaption("&Attivazioni / correlazioni");
        mode.SetVisible(false);
        code.SetLookupService(&lookup);
        code.SetCodeStructure({10, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}});
        hidden.SetVisible(false);
        tree.Add(nullptr, "root", "Conti patrimoniali", 1, 1);
    }

    AccountLookup lookup;
    controls::ResizeControl resize{*this, "QRV_RESIZEFORM"};
    controls::Button mode{*this, "CMD_ATTIVAZIONI"};
    controls::Layout area{*this, "LAY_ATTIVAZIONE"};
    controls::TabStrip filters{area, "STR_FILTRI"};
    controls::Label filter{area, "LBL_FILTRO_CORRENTE"};
    controls::Label caption{area, "LBL_CONTORICERCA"};
    controls::LookupField code{area, "TXT_CONTORICERCA"};
    controls::Label description{area, "LBB_DESCRCONTORICERCA"};
    controls::Button search{area, "BUT_RICERCA"};
    controls::TreeView tree{area, "TRW_CONTI"};
    controls::Button correlations{area, "BUT_CORRELAZIONI"};
    controls::Layout hidden{*this, "LAY_CORRELAZIONI"};
    controls::ComboBox sign{hidden, "CBO_SEGNO"};
    controls::Label unknown{*this, "LBL_DI_UN_CLIENTE"};
};

} // namespace veldran::qt
