#pragma once

#include "platform/services/message_service.h"

#include <exception>
#include <string>

namespace veldran::frames {

/// What a frame asks and tells the user, built on the noun of its records with its article ("la
/// correlazione").
class FramePrompts {
public:
    enum class Leaving { Save, Discard, Stay };

    /// \param messages outlives the object
    FramePrompts(services::MessageService& messages, std::string noun);

    const std::string& noun() const { return noun_; }
    /// There are changes that were not saved. Any answer but Yes and No stays.
    Leaving askLeave();
    bool confirmDelete();
    /// What was typed into a control cannot be a value of its column.
    void tellRefusedValue(const std::string& typed, const std::string& control, const std::string& reason);
    /// A new record has a code that another one has already.
    void tellDuplicate(const std::string& code);
    void tellNotANumber(const std::string& typed, const std::string& control);
    /// A failure that nobody else tells the user.
    void tellFailure(const std::exception& failure);

private:
    services::MessageService& messages_;
    std::string noun_;
};

} // namespace veldran::frames
