#pragma once

namespace veldran::embedded {

/// One visitor made of several lambdas.
template<typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};

} // namespace veldran::embedded
