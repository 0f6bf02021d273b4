#include "shell/status_line.h"

#include "adapters/qt/eliding_label.h"
#include "adapters/qt/text.h"
#include "shell/drivers.h"
#include "shell/host.h"

#include <QLabel>
#include <QStatusBar>

namespace veldran::shell {

using qt::toQt;

StatusLine::StatusLine(QStatusBar& bar)
    : company_(addPanel(bar, "statoDitta", 1)), user_(addPanel(bar, "statoUtente", 0)),
      database_(addPanel(bar, "statoDatabase", 0)), capitals_(addPanel(bar, "statoMaiuscole", 0)),
      numbers_(addPanel(bar, "statoNumeri", 0)) {
    for (QLabel* label : {capitals_, numbers_}) {
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("MAIUS")));
        label->setAlignment(Qt::AlignCenter);
    }
}

QLabel* StatusLine::addPanel(QStatusBar& bar, const char* name, int stretch) {
    auto* label = new qt::ElidingLabel(&bar);
    label->setObjectName(QLatin1String(name));
    bar.addPermanentWidget(label, stretch);
    return label;
}

void StatusLine::show(const Host& host) {
    const Company* company = host.current();
    company_->setText(company ? QStringLiteral(" Ditta %1 - %2").arg(toQt(company->code), toQt(company->name))
                              : QStringLiteral(" Nessuna ditta aperta"));
    const std::string& user = host.file().user;
    user_->setText(user.empty() ? QString() : QStringLiteral(" Utente: %1").arg(toQt(user)));
    const QString database = toQt(databaseName(host.file().connectionString));
    database_->setText(company ? QStringLiteral(" Database: %1").arg(database) : QString());
}

void StatusLine::showLocks(bool capitals, bool numbers) {
    capitals_->setText(capitals ? QStringLiteral("MAIUS") : QString());
    capitals_->setAccessibleName(capitals ? QStringLiteral("Blocco maiuscole") : QString());
    numbers_->setText(numbers ? QStringLiteral("NUM") : QString());
    numbers_->setAccessibleName(numbers ? QStringLiteral("Blocco numeri") : QString());
}

} // namespace veldran::shell
