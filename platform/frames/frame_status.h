#pragma once

#include <cstdint>

namespace veldran::frames {

/// What an editing frame is doing. 0, 1 and 2 are statuses in which it rests; 3 and 7 are passed through
/// while a record is deleted or saved.
enum FrameStatus : std::int16_t {
    statusBrowsing = 0,
    statusEditing = 1, ///< a value of the current record was changed
    statusAddingNew = 2,
    statusDeleting = 3,
    statusSaving = 7
};

/// What becomes of changes when the user moves on without confirming them.
enum class LeavePolicy {
    Ask, ///< save, discard or stay: the user says
    Save ///< they are saved
};

} // namespace veldran::frames
