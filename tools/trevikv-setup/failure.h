// What went wrong, and what to do about it.
#pragma once

#include <stdexcept>
#include <string>

namespace trevikv_setup
{

class Failure : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

// "Installing trevikv.inf failed: access is denied (error 5). Run ..." with the system's last error.
Failure SystemFailure(const std::string &what);

// The same for an error number at hand.
Failure SystemFailure(const std::string &what, unsigned long error);

} // namespace trevikv_setup
