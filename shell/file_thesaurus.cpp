#include "shell/file_thesaurus.h"

#include "shell/numbered_key.h"

#include <algorithm>

namespace veldran::shell {
namespace {

std::string captionKey(const std::string& form, const std::string& control) {
    std::string key = form + "/" + control;
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return key;
}

} // namespace

void FileThesaurus::add(const std::filesystem::path& path, Problems& problems) {
    const DataObject file = DataObject::fromFile(path, problems);
    file.refuseKeysOtherThan({"voci", "didascalie"});
    if (const auto entries = file.object("voci")) {
        for (const std::string& key : entries->keys()) {
            if (const auto number = numberedKey(*entries, key)) {
                if (const auto text = entries->text(key)) {
                    entries_[*number] = *text;
                }
            }
        }
    }
    if (const auto forms = file.object("didascalie")) {
        for (const std::string& form : forms->keys()) {
            if (const auto controls = forms->object(form)) {
                for (const std::string& control : controls->keys()) {
                    if (const auto text = controls->text(control)) {
                        captions_[captionKey(form, control)] = *text;
                    }
                }
            }
        }
    }
}

std::optional<std::string> FileThesaurus::Entry(std::int32_t number) const {
    const auto found = entries_.find(number);
    return found == entries_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> FileThesaurus::ControlCaption(const std::string& form,
                                                         const std::string& control) const {
    const auto found = captions_.find(captionKey(form, control));
    return found == captions_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace veldran::shell
