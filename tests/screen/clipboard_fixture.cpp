#include "tests/screen/clipboard_fixture.h"

namespace veldran::test {

Chart storedChart() {
    Chart chart = costChart();
    store(chart, a, "ACQ", two);
    store(chart, a, "VEND", one);
    store(chart, b, "GIRO", one);
    return chart;
}

void Clipboard::openOver(const Chart& chart) {
    menu.release();
    locks.release();
    open(chart);
    menu = screen->host.form().PopupRequested.subscribe(
        [this](controls::PopupMenu& opened, const controls::PopupPlace& place) {
            shownMenu = &opened;
            shownAt = place;
        });
    locks = screen->host.form().RedrawLocked.subscribe([this](bool locked) { locked_.push_back(locked); });
}

void Clipboard::select(const std::string& account) {
    user().search(account);
    user().click(node(account));
}

void Clipboard::treeKey(const std::string& account, int key) {
    select(account);
    user().key(key, controls::shiftCtrl);
}

void Clipboard::listKey(const std::string& causale, int key) {
    e().clickCausale(causale);
    listKey(key);
}

void Clipboard::choose(const std::string& key) {
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    ASSERT_NE(shownMenu, nullptr);
    shownMenu->ClickFromView(key);
}

Texts Clipboard::menuTexts() const {
    Texts texts;
    for (const controls::PopupItem& item : shownMenu->Items()) {
        texts.push_back(item.key + ": " + item.caption + (item.disabled ? " (no)" : ""));
    }
    return texts;
}

std::string Clipboard::highlighted() {
    return e().list().SelectedItem() ? e().list().SelectedItem()->Text() : std::string();
}

void Clipboard::change(std::size_t row, const std::string& percentage) {
    e().changePercentage(row, percentage);
    e().list().SetFocus();
}

std::vector<Texts> Clipboard::selectionMarks() {
    return screen->query("SELECT S.CONTO, S.CORRELATO, T.CORRELATO FROM #CG24_TABPDC_SELECTED AS S INNER "
                         "JOIN #CG24_TABPDC AS T ON S.INDICE = T.INDICE WHERE S.CONTO IN ('" +
                         a + "', '" + b + "', '" + c + "') ORDER BY S.CONTO");
}

Duplication::Duplication() {
    e().enter(a);
    e().clickCausale("ACQ");
}

void Duplication::confirm(const std::string& causale) {
    screen->host.windows->whileModal = [causale, this](controls::Form& dialog) {
        caption = dialog.Caption();
        auto& field = in<controls::LookupField>(dialog, "TXT_CAUSALE");
        field.TypeFromView(causale);
        field.LeaveFromView();
        in<controls::Button>(dialog, "CMD_CONFERMA").ClickFromView();
        stillOpen = dialog.IsLoaded();
        dialog.Unload();
    };
    choose("ListDuplica");
}

} // namespace veldran::test
