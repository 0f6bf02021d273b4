#pragma once

#include "shell/options.h"
#include "shell/places.h"

namespace veldran::shell {

/// Drives the real window through the whole job by mouse and keys, checks at each step that the screen shows
/// what it should, and leaves a picture with a caption for each step in the folder `options.tour`.
/// Works on a demo database made for the tour, unless the options name a database or a company that has
/// another. \return 0 when every step showed what it should
int runTour(const Places& places, const Options& options);

} // namespace veldran::shell
