#include "devices.h"

#include "failure.h"

#include <windows.h>

#include <cfgmgr32.h>
#include <setupapi.h>

#include <array>
#include <cstring>

namespace trevikv_setup
{
namespace
{

// System devices.
constexpr GUID system_class = {0x4D36E97D, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

// By which the driver reads the card of a device.
constexpr char card_value[] = "TrevikCard";

class DeviceSet
{
  public:
    DeviceSet(HDEVINFO set, const char *what) : set_(set)
    {
        if (set == INVALID_HANDLE_VALUE)
            throw SystemFailure(what);
    }
    ~DeviceSet() { SetupDiDestroyDeviceInfoList(set_); }
    DeviceSet(const DeviceSet &) = delete;
    DeviceSet &operator=(const DeviceSet &) = delete;
    HDEVINFO get() const { return set_; }

  private:
    HDEVINFO set_;
};

bool IsOurs(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    std::array<char, 256> ids{}; // texts one behind the other; the first is enough
    return SetupDiGetDeviceRegistryPropertyA(set, &device, SPDRP_HARDWAREID, nullptr,
                                             reinterpret_cast<BYTE *>(ids.data()), ids.size() - 1, nullptr) &&
           _stricmp(ids.data(), hardware_id) == 0;
}

// Calls a function with every device of ours, present or not.
template <class Function>
void EachDevice(Function function)
{
    const DeviceSet set(SetupDiGetClassDevsA(&system_class, nullptr, nullptr, 0), "Listing the system's devices");
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD index = 0; SetupDiEnumDeviceInfo(set.get(), index, &device); ++index)
        if (IsOurs(set.get(), device))
            function(set.get(), device);
}

std::string CardOf(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    std::array<char, 32> text{};
    DWORD size = text.size() - 1;
    HKEY key = SetupDiOpenDevRegKey(set, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
    if (key == INVALID_HANDLE_VALUE)
        return "?";
    const LSTATUS status =
        RegQueryValueExA(key, card_value, nullptr, nullptr, reinterpret_cast<BYTE *>(text.data()), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? text.data() : "?";
}

unsigned ProblemOf(const SP_DEVINFO_DATA &device)
{
    ULONG status = 0;
    ULONG problem = 0;
    if (CM_Get_DevNode_Status(&status, &problem, device.DevInst, 0) != CR_SUCCESS)
        return 0;
    return problem;
}

void SetHardwareId(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    std::array<char, sizeof hardware_id + 1> ids{}; // a list ends with an empty text
    std::memcpy(ids.data(), hardware_id, sizeof hardware_id);
    if (!SetupDiSetDeviceRegistryPropertyA(set, &device, SPDRP_HARDWAREID,
                                           reinterpret_cast<const BYTE *>(ids.data()), ids.size()))
        throw SystemFailure("Naming the device of a card");
}

void SetCard(HDEVINFO set, SP_DEVINFO_DATA &device, const std::string &card)
{
    HKEY key = SetupDiCreateDevRegKeyA(set, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, nullptr, nullptr);
    if (key == INVALID_HANDLE_VALUE)
        throw SystemFailure("Making the registry key of card " + card);
    const auto size = static_cast<DWORD>(card.size()) + 1;
    const LSTATUS status =
        RegSetValueExA(key, card_value, 0, REG_SZ, reinterpret_cast<const BYTE *>(card.c_str()), size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS)
        throw SystemFailure("Writing card " + card + " into the registry", static_cast<unsigned long>(status));
}

bool WantsRestart(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    SP_DEVINSTALL_PARAMS_A parameters{};
    parameters.cbSize = sizeof parameters;
    return SetupDiGetDeviceInstallParamsA(set, &device, &parameters) &&
           (parameters.Flags & (DI_NEEDRESTART | DI_NEEDREBOOT)) != 0;
}

} // namespace

std::vector<InstalledCard> InstalledCards()
{
    std::vector<InstalledCard> cards;
    EachDevice([&](HDEVINFO set, SP_DEVINFO_DATA &device) {
        cards.push_back({CardOf(set, device), ProblemOf(device)});
    });
    return cards;
}

void MakeDevice(const std::string &card)
{
    const DeviceSet set(SetupDiCreateDeviceInfoList(&system_class, nullptr), "Making a device list");
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    if (!SetupDiCreateDeviceInfoA(set.get(), "TrevikVirtual", &system_class, "TrevikA virtual card", nullptr,
                                  DICD_GENERATE_ID, &device))
        throw SystemFailure("Making the device of card " + card);
    SetHardwareId(set.get(), device);
    if (!SetupDiCallClassInstaller(DIF_REGISTERDEVICE, set.get(), &device))
        throw SystemFailure("Registering the device of card " + card);
    SetCard(set.get(), device, card);
}

unsigned RemoveDevices(bool &restart)
{
    unsigned count = 0;
    EachDevice([&](HDEVINFO set, SP_DEVINFO_DATA &device) {
        if (!SetupDiCallClassInstaller(DIF_REMOVE, set, &device))
            throw SystemFailure("Removing the device of card " + CardOf(set, device));
        restart = restart || WantsRestart(set, device);
        ++count;
    });
    return count;
}

} // namespace trevikv_setup
