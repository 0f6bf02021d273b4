#include "platform/frames/frame_prompts.h"

#include <utility>

namespace veldran::frames {

namespace {
const std::string title = "Attenzione";
}

FramePrompts::FramePrompts(services::MessageService& messages, std::string noun)
    : messages_(messages), noun_(std::move(noun)) {}

FramePrompts::Leaving FramePrompts::askLeave() {
    const auto answer =
        messages_.ShowBox("Ci sono modifiche non salvate.\r\nSalvare " + noun_ + " prima di proseguire?",
                          services::styleYesNoCancel | services::styleExclamation, title);
    return answer == services::answerYes  ? Leaving::Save
           : answer == services::answerNo ? Leaving::Discard
                                          : Leaving::Stay;
}

bool FramePrompts::confirmDelete() {
    return messages_.ShowBox("Eliminare " + noun_ + "?", services::styleYesNo | services::styleExclamation,
                             title) == services::answerYes;
}

void FramePrompts::tellRefusedValue(const std::string& typed, const std::string& control,
                                    const std::string& reason) {
    messages_.ShowBox("Il valore «" + typed + "» non è ammesso nel campo «" + control + "».\r\n" + reason,
                      services::styleExclamation, title);
}

void FramePrompts::tellDuplicate(const std::string& code) {
    messages_.ShowBox("Non è possibile salvare " + noun_ + ": ne esiste già una con il codice «" + code +
                          "».",
                      services::styleExclamation, title);
}

void FramePrompts::tellNotANumber(const std::string& typed, const std::string& control) {
    messages_.ShowBox("«" + typed + "» non è un numero: correggere il campo «" + control + "».",
                      services::styleExclamation, title);
}

void FramePrompts::tellFailure(const std::exception& failure) {
    messages_.ShowBox("Operazione non riuscita per " + noun_ + ".\r\n" + failure.what(),
                      services::styleCritical, title);
}

} // namespace veldran::frames
