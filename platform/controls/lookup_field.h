#pragma once

#include "platform/controls/control.h"
#include "platform/services/lookup.h"

namespace veldran::controls {

/// A code field served by the host: it decodes what was typed when it is left, and opens a list to pick from.
/// The form answers `StartDecode` and `StartLookup` by filling the request; the host's lookup service does
/// the rest.
class LookupField final : public Control {
public:
    using Control::Control;

    const std::string& Text() const { return text_; }
    void SetText(std::string text); ///< by code: nothing is decoded
    /// The description of the decoded code; empty while the code is empty or unknown.
    const std::string& Description() const { return description_; }
    /// True when the text was decoded and found.
    bool IsValidItem() const { return valid_; }
    int MaxLength() const { return maxLength_; }
    void SetMaxLength(int characters);
    bool LookupEnabled() const { return lookupEnabled_; }
    void SetLookupEnabled(bool enabled);

    /// How codes of this field are cut into groups: typed display forms ("01/02/3") become codes by it.
    void SetCodeStructure(services::CodeStructure structure);
    const services::CodeStructure& CodeStructure() const { return structure_; }
    /// The service that decodes and lists; borrowed from the host, nullptr detaches the field.
    void SetLookupService(services::LookupService* service) { service_ = service; }

    /// What the user does, reported by the view.
    void TypeFromView(std::string text); ///< raises `Change`
    void LeaveFromView();                ///< decodes when the text changed since the last decode
    void LookupFromView();               ///< opens the list; a choice is typed and decoded

    /// Decodes the text now. \return IsValidItem()
    bool Decode();

    mutable Event<> Change;
    mutable Event<services::LookupRequest&> StartDecode;
    mutable Event<services::LookupRequest&> StartLookup;
    mutable Event<> AfterItem; ///< a decode has ended, found or not

private:
    std::string text_;
    std::string decodedText_;
    std::string description_;
    bool valid_ = false;
    bool lookupEnabled_ = true;
    int maxLength_ = 0;
    services::CodeStructure structure_;
    services::LookupService* service_ = nullptr;
};

} // namespace veldran::controls
