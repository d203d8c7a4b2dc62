#include "package.h"

#include "devices.h"
#include "failure.h"

#include <windows.h>

#include <mscat.h>
#include <newdev.h>
#include <setupapi.h>
#include <softpub.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>

namespace trevikv_setup
{
namespace
{

constexpr char service_name[] = "trevikv";
constexpr char catalog[] = "trevikv.cat"; // by which the system's copy of the INF is known

struct CloseService {
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using Service = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

// Empty: there is no such service.
Service OpenDriverService(DWORD access)
{
    const Service manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT));
    if (!manager)
        throw SystemFailure("Opening the service manager");
    Service service(OpenServiceA(manager.get(), service_name, access));
    if (!service && GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST)
        throw SystemFailure("Opening the service trevikv");
    return service;
}

std::filesystem::path DriverFile()
{
    std::array<char, MAX_PATH> directory{};
    GetSystemDirectoryA(directory.data(), directory.size());
    return std::filesystem::path(directory.data()) / "drivers" / "trevikv.sys";
}

bool IsOurs(const std::filesystem::path &inf)
{
    const HINF file = SetupOpenInfFileA(inf.string().c_str(), nullptr, INF_STYLE_WIN4, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    std::array<char, 64> name{};
    const bool ours =
        SetupGetLineTextA(nullptr, file, "Version", "CatalogFile", name.data(), name.size(), nullptr) &&
        _stricmp(name.data(), catalog) == 0;
    SetupCloseInfFile(file);
    return ours;
}

// The system keeps a copy of every INF under a name of its own, oemN.inf; Wine keeps the name.
bool MayBeOurs(const std::filesystem::path &file)
{
    const std::string name = file.filename().string();
    return (_strnicmp(name.c_str(), "oem", 3) == 0 && _stricmp(file.extension().string().c_str(), ".inf") == 0) ||
           _stricmp(name.c_str(), "trevikv.inf") == 0;
}

std::filesystem::path InstalledInf()
{
    std::array<char, MAX_PATH> windows{};
    GetWindowsDirectoryA(windows.data(), windows.size());
    std::error_code none;
    for (const auto &entry :
         std::filesystem::directory_iterator(std::filesystem::path(windows.data()) / "inf", none))
        if (MayBeOurs(entry.path()) && IsOurs(entry.path()))
            return entry.path();
    return {};
}

void RemoveService()
{
    const Service service = OpenDriverService(SERVICE_STOP | DELETE);
    if (!service)
        return;
    SERVICE_STATUS status{};
    ControlService(service.get(), SERVICE_CONTROL_STOP, &status); // it has stopped with its last device, as a rule
    if (!DeleteService(service.get()) && GetLastError() != ERROR_SERVICE_MARKED_FOR_DELETE)
        throw SystemFailure("Deleting the service trevikv");
}

void RemoveDriverFile()
{
    const std::string file = DriverFile().string();
    if (!DeleteFileA(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND &&
        GetLastError() != ERROR_PATH_NOT_FOUND)
        throw SystemFailure("Deleting " + file);
}

// A catalog that goes by its own name; one that belongs to an oemN.inf has gone with it.
void RemoveCatalog()
{
    GUID drivers = DRIVER_ACTION_VERIFY;
    HCATADMIN catalogs = nullptr;
    if (!CryptCATAdminAcquireContext(&catalogs, &drivers, 0))
        return;
    std::array<wchar_t, sizeof catalog> name{};
    std::copy(std::begin(catalog), std::end(catalog), name.begin());
    CryptCATAdminRemoveCatalog(catalogs, name.data(), 0);
    CryptCATAdminReleaseContext(catalogs, 0);
}

void RemoveInf()
{
    std::filesystem::path last; // one that says it is gone, and stays, ends it
    for (std::filesystem::path inf = InstalledInf(); !inf.empty() && inf != last; inf = InstalledInf()) {
        last = inf;
        if (!SetupUninstallOEMInfA(inf.filename().string().c_str(), SUOI_FORCEDELETE, nullptr))
            throw SystemFailure("Removing " + inf.string());
        DeleteFileA(inf.replace_extension(".pnf").string().c_str()); // what was made of it, if it did not go, too
    }
    RemoveCatalog();
}

} // namespace

Remains InstalledPackage()
{
    Remains remains;
    if (const Service service = OpenDriverService(SERVICE_QUERY_STATUS)) {
        SERVICE_STATUS status{};
        remains.service = true;
        remains.running = QueryServiceStatus(service.get(), &status) && status.dwCurrentState == SERVICE_RUNNING;
    }
    std::error_code none;
    remains.file = std::filesystem::exists(DriverFile(), none);
    remains.inf = InstalledInf().filename().string();
    return remains;
}

std::string InfPath()
{
    std::array<char, MAX_PATH> program{};
    GetModuleFileNameA(nullptr, program.data(), program.size());
    const std::filesystem::path folder = std::filesystem::path(program.data()).parent_path();
    for (const char *name : {"trevikv.inf", "trevikv.sys", catalog})
        if (!std::filesystem::exists(folder / name))
            throw Failure((folder / name).string() +
                          " is missing. Keep the files of the driver and this program in one folder.");
    return (folder / "trevikv.inf").string();
}

void InstallDriver(const std::string &inf, bool &restart)
{
    BOOL wanted = FALSE;
    if (!UpdateDriverForPlugAndPlayDevicesA(nullptr, hardware_id, inf.c_str(), INSTALLFLAG_FORCE, &wanted))
        throw SystemFailure("Installing " + inf);
    restart = restart || wanted != FALSE;
}

void CopyDriver(const std::string &inf)
{
    if (!SetupCopyOEMInfA(inf.c_str(), nullptr, SPOST_PATH, 0, nullptr, 0, nullptr, nullptr))
        throw SystemFailure("Copying " + inf);
}

void RemovePackage()
{
    RemoveService();
    RemoveDriverFile();
    RemoveInf();
}

} // namespace trevikv_setup
