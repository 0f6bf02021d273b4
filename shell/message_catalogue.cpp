#include "shell/message_catalogue.h"

#include "platform/services/message_service.h"
#include "shell/numbered_key.h"

#include <array>
#include <utility>

namespace veldran::shell {
namespace {

constexpr std::array<std::pair<const char*, int>, 3> icons{{{"errore", services::styleCritical},
                                                            {"avviso", services::styleExclamation},
                                                            {"informazione", services::styleInformation}}};

int iconStyle(const DataObject& entry) {
    const auto name = entry.text("icona");
    if (!name) {
        return services::styleExclamation;
    }
    for (const auto& [known, style] : icons) {
        if (*name == known) {
            return style;
        }
    }
    entry.problem("icona", "«" + *name + "» non è tra errore, avviso, informazione.");
    return services::styleExclamation;
}

} // namespace

void MessageCatalogue::add(const std::filesystem::path& path, Problems& problems) {
    const DataObject file = DataObject::fromFile(path, problems);
    for (const std::string& key : file.keys()) {
        const auto number = numberedKey(file, key);
        const auto entry = number ? file.object(key) : std::nullopt;
        if (!entry) {
            continue;
        }
        entry->refuseKeysOtherThan({"testo", "titolo", "icona"});
        CatalogueMessage message;
        message.text = entry->text("testo").value_or("");
        message.title = entry->text("titolo").value_or("Attenzione");
        message.style = iconStyle(*entry) | services::styleOkOnly;
        if (message.text.empty()) {
            entry->problem("testo", "manca il testo del messaggio.");
        } else {
            messages_[*number] = std::move(message);
        }
    }
}

CatalogueMessage MessageCatalogue::message(std::int32_t number) const {
    const auto found = messages_.find(number);
    if (found != messages_.end()) {
        return found->second;
    }
    return {"Messaggio " + std::to_string(number) + ": il testo non è presente nel catalogo dei messaggi.",
            "Attenzione", services::styleExclamation};
}

} // namespace veldran::shell
