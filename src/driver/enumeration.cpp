#include "driver/enumeration.h"

#include "driver/interface_class.h"
#include "driver/requests.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace trevik
{
namespace
{

constexpr std::size_t longest_held_path = 1024;

// Device path of each held handle, empty where none is held. A path too long to be kept is not remembered.
std::array<std::array<char, longest_held_path>, card_count> held_paths;

// The information set, destroyed at the end of the enumeration whatever its outcome.
class DeviceInfoSet
{
  public:
    explicit DeviceInfoSet(os::HDEVINFO set) : set_(set) {}
    ~DeviceInfoSet() { os::SetupDiDestroyDeviceInfoList(set_); }
    DeviceInfoSet(const DeviceInfoSet &) = delete;
    DeviceInfoSet &operator=(const DeviceInfoSet &) = delete;

    bool interface(os::DWORD index, os::SP_DEVICE_INTERFACE_DATA &data) const
    {
        data = {};
        data.cbSize = sizeof data;
        return os::SetupDiEnumDeviceInterfaces(set_, nullptr, &card_interface_class<os::GUID>, index, &data) != 0;
    }

    os::DWORD count() const
    {
        os::SP_DEVICE_INTERFACE_DATA data{};
        os::DWORD number = 0;
        while (interface(number, data))
            ++number;
        return number;
    }

    os::HDEVINFO get() const { return set_; }

  private:
    os::HDEVINFO set_;
};

// The detail record of one interface; its device path follows the fixed part.
class InterfaceDetail
{
  public:
    // Prints what failed and returns false.
    bool get(const DeviceInfoSet &set, os::SP_DEVICE_INTERFACE_DATA &data)
    {
        os::DWORD size = 0;
        if (os::SetupDiGetDeviceInterfaceDetailA(set.get(), &data, nullptr, 0, &size, nullptr) ||
            os::GetLastError() != os::ErrorInsufficientBuffer)
            return failed();
        buffer_.reset(static_cast<char *>(std::malloc(size)));
        if (!buffer_) {
            std::printf("Insufficient memory.\n");
            return false;
        }
        record()->cbSize = sizeof(os::SP_DEVICE_INTERFACE_DETAIL_DATA_A);
        os::SP_DEVINFO_DATA device{};
        device.cbSize = sizeof device;
        return os::SetupDiGetDeviceInterfaceDetailA(set.get(), &data, record(), size, nullptr, &device) || failed();
    }

    const char *path() const { return record()->DevicePath; }

  private:
    os::SP_DEVICE_INTERFACE_DETAIL_DATA_A *record() const
    {
        return reinterpret_cast<os::SP_DEVICE_INTERFACE_DETAIL_DATA_A *>(buffer_.get());
    }

    static bool failed()
    {
        std::printf("SetupDiGetDeviceInterfaceDetail failed, Error: %d", static_cast<int>(os::GetLastError()));
        return false;
    }

    // By the C library's allocation, which cannot throw: nothing of exceptions comes into the library.
    struct Free {
        void operator()(char *memory) const { std::free(memory); }
    };
    std::unique_ptr<char, Free> buffer_;
};

void CloseHeld(CardTable &cards, const char *path)
{
    for (unsigned card = 0; card < card_count; ++card)
        if (cards[card].DriverHandle.open() && std::strcmp(held_paths[card].data(), path) == 0)
            CloseCard(cards[card]);
}

void RememberPath(unsigned card, const char *path)
{
    auto &held = held_paths[card];
    const std::size_t size = std::strlen(path) + 1;
    held[0] = '\0';
    if (size <= held.size())
        std::memcpy(held.data(), path, size);
}

CardModel QueryModel(os::HANDLE handle)
{
    std::uint16_t word = 0;
    if (IndexRead(handle, 0, model_index, word) != Result::Ok)
        return CardModel::Unsupported;
    if (word == model_word_A)
        return CardModel::A;
    return word == model_word_AC ? CardModel::AC : CardModel::Unsupported;
}

// Enters the card behind a freshly opened handle. False: it is not one that can be entered.
bool EnterCard(CardTable &cards, os::HANDLE handle, const char *path)
{
    ResourceReply resource{};
    if (const Result result = ResourceRequest(handle, resource); result != Result::Ok) {
        std::printf("get resource failed, Error: %d", static_cast<int>(result));
        return false;
    }
    if (resource.card >= card_count)
        return false;
    CardState &card = cards[resource.card];
    CloseCard(card);
    card.Record.CardNumber = resource.card;
    card.Record.ResourceValue = resource.value;
    card.Record.ResourceWord = resource.word;
    card.DriverHandle.set(handle);
    RememberPath(resource.card, path);
    card.Record.Model = QueryModel(handle);
    return true;
}

os::HANDLE Open(const char *path)
{
    const os::HANDLE handle =
        os::CreateFileA(path, os::GenericReadWrite, 0, nullptr, os::OpenExisting, os::FileAttributeNormal, nullptr);
    if (handle == os::InvalidHandle())
        std::printf("CreateFile failed.  Error:%d", static_cast<int>(os::GetLastError()));
    return handle;
}

} // namespace

void CloseCard(CardState &card)
{
    if (!card.DriverHandle.open())
        return;
    os::CloseHandle(card.DriverHandle.get());
    card.DriverHandle.set(os::InvalidHandle());
}

os::HANDLE EnumerateCards(CardTable &cards)
{
    const os::HDEVINFO devices =
        os::SetupDiGetClassDevsA(&card_interface_class<os::GUID>, nullptr, nullptr, os::PresentDeviceInterfaces);
    if (devices == os::InvalidHandle()) {
        std::printf("No AMCC devices are present and enabled in the system\n");
        return os::InvalidHandle();
    }
    const DeviceInfoSet set(devices);
    const os::DWORD count = set.count();
    std::printf("counter=%d\n", static_cast<int>(count));
    if (count == 0)
        std::printf("No AMCC devices are present and enabled in the system.\n");

    os::HANDLE last = os::InvalidHandle();
    for (os::DWORD index = 0; index < count; ++index) {
        os::SP_DEVICE_INTERFACE_DATA data{};
        if (!set.interface(index, data)) {
            std::printf("SetupDiEnumDeviceInterfaces failed, Error: %d", static_cast<int>(os::GetLastError()));
            return os::InvalidHandle();
        }
        InterfaceDetail detail;
        if (!detail.get(set, data))
            return os::InvalidHandle();
        CloseHeld(cards, detail.path());
        last = Open(detail.path());
        // A failed open goes on like any other: its resource request is refused and says so.
        if (!EnterCard(cards, last, detail.path()) && last != os::InvalidHandle())
            os::CloseHandle(last);
    }
    return last;
}

} // namespace trevik
