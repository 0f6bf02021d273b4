#pragma once

#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// What the screen asked of its host and of its database, in the order in which it happened.
/// Shared: fakes that a component keeps alive may outlive the host that created them.
using Journal = std::vector<std::string>;
using SharedJournal = std::shared_ptr<Journal>;

} // namespace veldran::test
