// The driver itself: its service, its file, its installation data.
#pragma once

#include <string>

namespace trevikv_setup
{

struct Remains {
    bool service = false;
    bool running = false;
    bool file = false;
    std::string inf; // name of the system's copy; empty: none
};

Remains InstalledPackage();

// Path of trevikv.inf, beside this program with the other files of the driver.
std::string InfPath();

// Installs the driver for the devices that were made.
void InstallDriver(const std::string &inf, bool &restart);
// Only makes it known, where there is no device.
void CopyDriver(const std::string &inf);

// Removes all of it; says nothing where there is nothing.
void RemovePackage();

} // namespace trevikv_setup
