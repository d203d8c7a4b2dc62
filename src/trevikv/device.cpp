#include "trevikv/device.h"

#include "driver/interface_class.h"
#include "driver/request_buffer.h"
#include "trevikv/cards.h"
#include "trevikv/control.h"
#include "trevikv/floating_point.h"
#include "trevikv/irp.h"
#include "trevikv/link_event.h"

namespace trevik::kernel
{
namespace
{

struct Extension {
    DeviceKind kind; // first, as in every device of the driver
    DEVICE_OBJECT *below;
    IO_REMOVE_LOCK removal; // is waited for until no request is inside
    UNICODE_STRING link;    // of the interface, by which programs find it
    unsigned place;
};

// By place, for ShowCards.
Extension *devices[places];
FAST_MUTEX devices_guard;

Extension &ExtensionOf(DEVICE_OBJECT *device)
{
    return *static_cast<Extension *>(device->DeviceExtension);
}

// Entered for the time of a request: the device stays.
class Stay
{
  public:
    explicit Stay(Extension &device) : device_(device), status_(IoAcquireRemoveLock(&device.removal, this)) {}
    ~Stay()
    {
        if (NT_SUCCESS(status_))
            IoReleaseRemoveLock(&device_.removal, this);
    }
    Stay(const Stay &) = delete;
    Stay &operator=(const Stay &) = delete;
    NTSTATUS status() const { return status_; }

  private:
    Extension &device_;
    NTSTATUS status_;
};

// The device's own list of cards, which the setup program wrote for it: a text with its end.
NTSTATUS ReadCardText(DEVICE_OBJECT *physical, char *text, ULONG size)
{
    HANDLE key = nullptr;
    NTSTATUS status = IoOpenDeviceRegistryKey(physical, PLUGPLAY_REGKEY_DEVICE, KEY_READ, &key);
    if (!NT_SUCCESS(status))
        return status;
    struct {
        KEY_VALUE_PARTIAL_INFORMATION value;
        WCHAR more[16];
    } buffer = {};
    UNICODE_STRING name;
    RtlInitUnicodeString(&name, L"TrevikCard");
    ULONG length = 0;
    status = ZwQueryValueKey(key, &name, KeyValuePartialInformation, &buffer, sizeof buffer, &length);
    ZwClose(key);
    if (!NT_SUCCESS(status))
        return status;
    const auto *letters = reinterpret_cast<const WCHAR *>(buffer.value.Data);
    const ULONG count = buffer.value.DataLength / sizeof(WCHAR);
    if (buffer.value.Type != REG_SZ || count >= size)
        return STATUS_INVALID_PARAMETER;
    for (ULONG i = 0; i < count; ++i)
        text[i] = letters[i] < 0x80 ? static_cast<char>(letters[i]) : '?';
    text[count] = '\0';
    return STATUS_SUCCESS;
}

NTSTATUS TakePlace(DEVICE_OBJECT *physical, unsigned &place)
{
    char text[24];
    const NTSTATUS status = ReadCardText(physical, text, sizeof text);
    if (!NT_SUCCESS(status))
        return status;
    const FloatingPoint floating_point;
    if (!NT_SUCCESS(floating_point.status()))
        return floating_point.status();
    return Occupy(text, place) ? STATUS_SUCCESS : STATUS_DEVICE_CONFIGURATION_ERROR;
}

void GiveUpPlace(unsigned place)
{
    const FloatingPoint floating_point; // refused: the place stays taken until the driver is unloaded
    if (NT_SUCCESS(floating_point.status()))
        Vacate(place);
}

void Enter(Extension &device)
{
    ExAcquireFastMutex(&devices_guard);
    devices[device.place] = &device;
    ExReleaseFastMutex(&devices_guard);
}

void Leave(const Extension &device)
{
    ExAcquireFastMutex(&devices_guard);
    devices[device.place] = nullptr;
    ExReleaseFastMutex(&devices_guard);
}

bool AnyDevice()
{
    bool any = false;
    ExAcquireFastMutex(&devices_guard);
    for (const Extension *device : devices)
        any = any || device != nullptr;
    ExReleaseFastMutex(&devices_guard);
    return any;
}

// The request of the link names an event; others do not.
NTSTATUS EventOf(ULONG code, const void *in, ULONG in_size, void *&event)
{
    constexpr ULONG size = 32;
    event = nullptr;
    if (static_cast<ControlCode>(code) != ControlCode::IOCTL_IRQ_LINK || in_size != size)
        return STATUS_SUCCESS;
    KEVENT *linked = nullptr;
    const NTSTATUS status =
        ReferenceEvent(GetField<std::uint32_t>(in, 16), GetField<std::uint32_t>(in, 24), linked);
    event = linked;
    return status;
}

// The opening of a card by a file, as long as it has not been closed.
std::uint32_t OpeningOf(const FILE_OBJECT *file)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(file->FsContext));
}

void SetOpening(FILE_OBJECT *file, std::uint32_t opening)
{
    file->FsContext = reinterpret_cast<void *>(std::uintptr_t{opening}); // NOLINT(performance-no-int-to-ptr)
}

NTSTATUS Open(unsigned place, std::uint32_t &opening)
{
    const FloatingPoint floating_point;
    if (!NT_SUCCESS(floating_point.status()))
        return floating_point.status();
    return StatusOf(OpenCard(place, opening));
}

void Close(unsigned place, std::uint32_t opening)
{
    const FloatingPoint floating_point; // refused: the card stays open until its device goes
    if (NT_SUCCESS(floating_point.status()))
        CloseCard(place, opening);
}

NTSTATUS Control(unsigned place, std::uint32_t opening, CardRequest &request, std::uint32_t &returned)
{
    const FloatingPoint floating_point;
    if (!NT_SUCCESS(floating_point.status()))
        return floating_point.status();
    return StatusOf(ControlCard(place, opening, request, returned));
}

// Input and reply share the system's buffer, for requests of the buffered method, which all of the card's are: the
// input is set aside, and the reply's bytes that nobody names are 0.
NTSTATUS Answer(unsigned place, IRP *irp, std::uint32_t &returned)
{
    constexpr ULONG longest = 32;
    const IO_STACK_LOCATION *stack = IoGetCurrentIrpStackLocation(irp);
    const auto &parameters = stack->Parameters.DeviceIoControl;
    if (METHOD_FROM_CTL_CODE(parameters.IoControlCode) != METHOD_BUFFERED)
        return STATUS_INVALID_DEVICE_REQUEST;
    void *buffer = irp->AssociatedIrp.SystemBuffer;
    std::uint8_t in[longest] = {};
    if (parameters.InputBufferLength <= longest)
        memcpy(in, buffer, parameters.InputBufferLength);
    memset(buffer, 0, parameters.OutputBufferLength);
    CardRequest request = {parameters.IoControlCode,      in,     parameters.InputBufferLength, buffer,
                           parameters.OutputBufferLength, nullptr};
    NTSTATUS status = EventOf(request.code, in, request.in_size, request.event);
    if (NT_SUCCESS(status))
        status = Control(place, OpeningOf(stack->FileObject), request, returned);
    if (request.event != nullptr)
        ObDereferenceObject(request.event);
    return status;
}

// Programs find the device as long as there is a card for it.
NTSTATUS ShowCard(Extension &card)
{
    bool has_card = false;
    {
        const FloatingPoint floating_point;
        if (!NT_SUCCESS(floating_point.status()))
            return floating_point.status();
        has_card = HasCard(card.place);
    }
    return IoSetDeviceInterfaceState(&card.link, has_card);
}

NTSTATUS Start(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    NTSTATUS status = PassOnAndWait(card.below, irp);
    if (NT_SUCCESS(status))
        status = ShowCard(card);
    return Complete(irp, status);
}

NTSTATUS Remove(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    IoReleaseRemoveLockAndWait(&card.removal, irp);
    Leave(card);
    IoSetDeviceInterfaceState(&card.link, FALSE);
    irp->IoStatus.Status = STATUS_SUCCESS;
    const NTSTATUS status = PassOn(card.below, irp);
    IoDetachDevice(card.below);
    GiveUpPlace(card.place);
    RtlFreeUnicodeString(&card.link);
    IoDeleteDevice(device);
    if (!AnyDevice())
        RemoveControlDevice();
    return status;
}

// What the device agrees to before it is passed on.
NTSTATUS PassPnp(const Extension &card, UCHAR minor, IRP *irp)
{
    switch (minor) {
    case IRP_MN_QUERY_STOP_DEVICE:
    case IRP_MN_CANCEL_STOP_DEVICE:
    case IRP_MN_STOP_DEVICE:
    case IRP_MN_QUERY_REMOVE_DEVICE:
    case IRP_MN_CANCEL_REMOVE_DEVICE:
    case IRP_MN_SURPRISE_REMOVAL:
        irp->IoStatus.Status = STATUS_SUCCESS;
        break;
    default:
        break;
    }
    return PassOn(card.below, irp);
}

NTSTATUS Attach(DEVICE_OBJECT *device, DEVICE_OBJECT *physical)
{
    Extension &card = ExtensionOf(device);
    IoInitializeRemoveLock(&card.removal, pool_tag, 0, 0);
    const NTSTATUS status = IoRegisterDeviceInterface(physical, &card_interface_class<GUID>, nullptr, &card.link);
    if (!NT_SUCCESS(status))
        return status;
    card.below = IoAttachDeviceToDeviceStack(device, physical);
    if (card.below != nullptr)
        return STATUS_SUCCESS;
    RtlFreeUnicodeString(&card.link);
    return STATUS_NO_SUCH_DEVICE;
}

} // namespace

void SetUpDevices()
{
    ExInitializeFastMutex(&devices_guard);
}

NTSTATUS NTAPI AddDevice(DRIVER_OBJECT *driver, DEVICE_OBJECT *physical)
{
    unsigned place = 0;
    NTSTATUS status = TakePlace(physical, place);
    if (!NT_SUCCESS(status))
        return status;
    DEVICE_OBJECT *device = nullptr;
    status = IoCreateDevice(driver, sizeof(Extension), nullptr, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN, FALSE,
                            &device);
    if (NT_SUCCESS(status)) {
        ExtensionOf(device).kind = DeviceKind::Card;
        ExtensionOf(device).place = place;
        status = Attach(device, physical);
        if (!NT_SUCCESS(status))
            IoDeleteDevice(device);
    }
    if (!NT_SUCCESS(status)) {
        GiveUpPlace(place);
        return status;
    }
    Enter(ExtensionOf(device));
    AddControlDevice(driver);
    device->Flags |= ExtensionOf(device).below->Flags & DO_POWER_PAGABLE;
    device->Flags &= ~static_cast<ULONG>(DO_DEVICE_INITIALIZING);
    return STATUS_SUCCESS;
}

NTSTATUS DeviceCreate(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    const Stay stay(card);
    if (!NT_SUCCESS(stay.status()))
        return Complete(irp, stay.status());
    std::uint32_t opening = no_opening;
    const NTSTATUS status = Open(card.place, opening);
    SetOpening(IoGetCurrentIrpStackLocation(irp)->FileObject, opening);
    return Complete(irp, status);
}

// When the last handle is gone, also because its process has ended.
NTSTATUS DeviceCleanup(DEVICE_OBJECT *device, IRP *irp)
{
    FILE_OBJECT *file = IoGetCurrentIrpStackLocation(irp)->FileObject;
    Close(ExtensionOf(device).place, OpeningOf(file));
    SetOpening(file, no_opening);
    return Complete(irp, STATUS_SUCCESS);
}

NTSTATUS DeviceControl(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    const Stay stay(card);
    if (!NT_SUCCESS(stay.status()))
        return Complete(irp, stay.status());
    std::uint32_t returned = 0;
    const NTSTATUS status = Answer(card.place, irp, returned);
    return Complete(irp, status, returned);
}

NTSTATUS DevicePnp(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    const NTSTATUS status = IoAcquireRemoveLock(&card.removal, irp);
    if (!NT_SUCCESS(status))
        return Complete(irp, status);
    const UCHAR minor = IoGetCurrentIrpStackLocation(irp)->MinorFunction;
    if (minor == IRP_MN_REMOVE_DEVICE)
        return Remove(device, irp); // releases it, too
    NTSTATUS result = STATUS_SUCCESS;
    if (minor == IRP_MN_START_DEVICE)
        result = Start(device, irp);
    else
        result = PassPnp(card, minor, irp);
    IoReleaseRemoveLock(&card.removal, irp);
    return result;
}

NTSTATUS DevicePower(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    const Stay stay(card);
    PoStartNextPowerIrp(irp);
    if (!NT_SUCCESS(stay.status()))
        return Complete(irp, stay.status());
    IoSkipCurrentIrpStackLocation(irp);
    return PoCallDriver(card.below, irp);
}

NTSTATUS DeviceSystemControl(DEVICE_OBJECT *device, IRP *irp)
{
    Extension &card = ExtensionOf(device);
    const Stay stay(card);
    return NT_SUCCESS(stay.status()) ? PassOn(card.below, irp) : Complete(irp, stay.status());
}

// The state is changed while no guard is held: it calls back into the system.
void ShowCards()
{
    for (unsigned place = 0; place < places; ++place) {
        ExAcquireFastMutex(&devices_guard);
        Extension *card = devices[place];
        const bool here = card != nullptr && NT_SUCCESS(IoAcquireRemoveLock(&card->removal, card));
        ExReleaseFastMutex(&devices_guard);
        if (!here)
            continue;
        ShowCard(*card);
        IoReleaseRemoveLock(&card->removal, card);
    }
}

} // namespace trevik::kernel
