#pragma once

#include "platform/event.h"

#include <cstdint>
#include <exception>

namespace veldran::frames {

/// What an editing frame tells. A "Before" handler sets its argument to refuse, and does nothing when it is
/// set already. An "After" handler acts only on success.
struct FrameEvents {
    mutable Event<bool&> BeforeUpdate, BeforeDelete, BeforeAddNew, BeforeUndo;
    mutable Event<bool> AfterUpdate, AfterDelete, AfterAddNew, AfterUndo;
    /// The frame has come to rest: new status (0, 1 or 2), and the one it came from. Raised for every record
    /// that is shown, 0 after 0 included.
    mutable Event<std::int16_t, std::int16_t> ChangeStatus;
    mutable Event<bool&> RecordChanged;  ///< is it? handlers add the changes that the frame does not see
    mutable Event<bool&> UpdateBatchAll; ///< write all rows; set to true when they were written
    mutable Event<const std::exception&> Failed; ///< raised while the exception is being handled
    mutable Event<> StateChanged;                ///< what the frame answers about itself may have changed
};

} // namespace veldran::frames
