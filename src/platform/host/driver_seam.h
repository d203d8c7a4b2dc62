// Where the virtual cards meet the host layer.
#pragma once

#include <trevik/TrevikHost.h>

namespace trevik::host
{

// The virtual cards. Asked for when a driver is first needed and none was set.
const TrevikHostDriver *BuiltInDriver();

// `driver` itself, or, when a request log is switched on, a driver that writes each request down and passes it on.
// Both live for ever.
const TrevikHostDriver *WithRequestLog(const TrevikHostDriver *driver);

} // namespace trevik::host
