// The devices of the virtual cards, which no bus brings about: they are made and removed here.
#pragma once

#include <string>
#include <vector>

namespace trevikv_setup
{

inline constexpr char hardware_id[] = "Root\\TrevikVirtual";

struct InstalledCard {
    std::string card;    // such as "5:AC"
    unsigned problem{0}; // the device manager's number; 0: it works
};

std::vector<InstalledCard> InstalledCards();

// Makes a device for a card; the driver comes to it later.
void MakeDevice(const std::string &card);

// Removes all of them and returns how many there were. `restart`: the system has to be restarted to get rid of one.
unsigned RemoveDevices(bool &restart);

} // namespace trevikv_setup
