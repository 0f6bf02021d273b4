#pragma once

#include "platform/controls/control.h"
#include "platform/services/lookup.h"

#include <exception>

namespace veldran::controls {

/// A code field served by the host: it decodes what was typed when it is left, and opens a list to pick from.
/// The form answers `StartDecode` and `StartLookup` by filling the request; the host's lookup service does
/// the rest.
class LookupField final : public Control {
public:
    using Control::Control;

    const std::string& Text() const { return text_; }
    /// By code: nothing is decoded, neither now nor when the field is left.
    void SetText(std::string text);
    /// The description of the decoded code; empty while the code is empty or unknown.
    const std::string& Description() const { return description_; }
    /// True when the text was decoded and found.
    bool IsValidItem() const { return valid_; }
    /// True when the text was decoded and not found, or is not allowed here.
    bool IsUnknownItem() const { return unknown_; }
    /// The user typed something that has not been decoded yet.
    bool HasPendingText() const { return typed_; }
    /// Shows a code in the name of the record it belongs to, with its description when `described`:
    /// `StartDecode` is then raised and the service asked, but neither `Validate` nor `Change` nor
    /// `AfterItem` is raised. \throws what the lookup service throws; the code is shown then, without its
    /// description.
    void ShowCode(std::string code, bool described);
    int MaxLength() const { return maxLength_; }
    /// Characters that the field takes: MaxLength, or what the display form of a code needs; 0 is no limit.
    int TypingLimit() const;
    void SetMaxLength(int characters);
    bool LookupEnabled() const { return lookupEnabled_; }
    void SetLookupEnabled(bool enabled);

    /// The code in the field can be maintained: the field's button menu offers it.
    bool ManagementEnabled() const { return managementEnabled_; }
    void SetManagementEnabled(bool enabled);
    /// What is typed becomes upper case.
    void SetUpperCase(bool upperCase) { upperCase_ = upperCase; }
    /// A complete code (typed to its full length, or taken from the list) that was found moves the focus on.
    void SetAutoAdvance(bool advance) { autoAdvance_ = advance; }

    /// How codes of this field are cut into groups: typed display forms ("01/02/3") become codes by it.
    void SetCodeStructure(services::CodeStructure structure);
    const services::CodeStructure& CodeStructure() const { return structure_; }
    /// The service that decodes and lists; borrowed from the host, nullptr detaches the field.
    void SetLookupService(services::LookupService* service) { service_ = service; }
    /// What requests are made through, before the form's handlers see them. Shared with the form that owns
    /// it; empty detaches the field.
    void SetConnection(std::shared_ptr<ado::Connection> connection) { connection_ = std::move(connection); }
    /// The chart that codes are looked for in; "" for none.
    void SetChartCode(std::string chart) { chart_ = std::move(chart); }
    /// From now on `code` and `description` hold what the field holds; they outlive the field or its next
    /// binding. nullptr binds nothing.
    void BindValues(std::string* code, std::string* description);

    /// What the user does, reported by the view. A failure of the lookup service is told by `Failed`; where
    /// nobody listens, the exception goes on to the caller.
    void TypeFromView(std::string text); ///< raises `Change`
    void LeaveFromView();                ///< decodes when the user changed the text since the last decode
    void LookupFromView();               ///< opens the list; a choice is typed and decoded
    /// An item of the button menu was chosen; `menuManagement` is one.
    void PressKeyButtonMenuFromView(const std::string& item);
    static constexpr const char* menuManagement = "Kgestione";

    /// Decodes the text now: it becomes the code it stands for, and `AfterItem` is raised.
    /// \return IsValidItem()
    /// \throws what the lookup service throws; the field then holds a code that is not valid.
    bool Decode();

    mutable Event<> Change;
    mutable Event<services::LookupRequest&> StartDecode;
    mutable Event<services::LookupRequest&> StartLookup;
    /// A decode has begun and the text is the code; set to true to refuse it. The text is then as it was
    /// typed, and nothing else is raised.
    mutable Event<bool&> Validate;
    mutable Event<> AfterItem; ///< a decode has ended, found or not
    mutable Event<> Completed; ///< the view moves the focus on
    mutable Event<const std::string&> KeyButtonMenuPress;
    mutable Event<const std::exception&> Failed; ///< the lookup service failed while serving the user

private:
    template<class Action>
    void serveUser(Action action);
    services::LookupRequest newRequest() const;
    void forgetItem();
    bool type(std::string text);
    bool describe(bool entered);
    bool isComplete() const;
    void changed();

    std::string text_;
    std::string description_;
    bool valid_ = false;
    bool unknown_ = false;
    bool typed_ = false; ///< by the user since the last decode
    bool lookupEnabled_ = true;
    bool managementEnabled_ = false;
    bool upperCase_ = false;
    bool autoAdvance_ = false;
    int maxLength_ = 0;
    services::CodeStructure structure_;
    services::LookupService* service_ = nullptr;
    std::shared_ptr<ado::Connection> connection_; // shared with the form, which owns it
    std::string chart_;
    std::string* boundCode_ = nullptr;
    std::string* boundDescription_ = nullptr;
};

} // namespace veldran::controls
