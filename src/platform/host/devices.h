// The driver in place.
#pragma once

#include <trevik/TrevikHost.h>

namespace trevik::host
{

const TrevikHostDriver *CurrentDriver();

} // namespace trevik::host
