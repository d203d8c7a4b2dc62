// The driver of the virtual cards as any program meets it: the system's search for its interface, files, requests. Cards:
// 0 of model A, 5 of AC; test suite "no card": none.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "driver/interface_class.h"
#include "driver/mode_word.h"
#include "driver/registers.h"
#include "driver/request_buffer.h"
#include "support/reading.h"

#include <trevik/TrevikVirtual.h>

#include <windows.h>

#include <setupapi.h>

#include <array>
#include <chrono>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace trevik;
using trevik::test::Value;

namespace
{

std::vector<std::string> Paths()
{
    std::vector<std::string> paths;
    const HDEVINFO set =
        SetupDiGetClassDevsA(&card_interface_class<GUID>, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE);
    SP_DEVICE_INTERFACE_DATA data{};
    data.cbSize = sizeof data;
    for (DWORD i = 0; SetupDiEnumDeviceInterfaces(set, nullptr, &card_interface_class<GUID>, i, &data); ++i) {
        alignas(8) std::array<char, 512> buffer{};
        auto *detail = reinterpret_cast<SP_DEVICE_INTERFACE_DETAIL_DATA_A *>(buffer.data());
        detail->cbSize = sizeof *detail;
        REQUIRE(SetupDiGetDeviceInterfaceDetailA(set, &data, detail, buffer.size(), nullptr, nullptr));
        paths.emplace_back(detail->DevicePath);
    }
    SetupDiDestroyDeviceInfoList(set);
    return paths;
}

HANDLE Open(const std::string &path)
{
    return CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

struct Closer {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Closer>;

// A request's block; longer than any, for sizes that are wrong.
struct Block {
    std::array<std::uint8_t, 4096> bytes{};

    template <class T>
    Block &put(std::size_t at, T value)
    {
        PutField(bytes.data(), at, value);
        return *this;
    }
    std::uint32_t word(std::size_t at) const { return GetField<std::uint32_t>(bytes.data(), at); }
};

// The error of a request, 0: none. A reply of another size than asked for is one, too.
template <class Code>
DWORD Send(HANDLE card, Code code, Block &block, DWORD in_size, DWORD out_size)
{
    DWORD returned = 0;
    if (!DeviceIoControl(card, static_cast<DWORD>(code), block.bytes.data(), in_size, block.bytes.data(), out_size,
                         &returned, nullptr))
        return GetLastError();
    return returned == out_size ? 0 : ERROR_BAD_LENGTH;
}

DWORD Write(HANDLE card, unsigned axis, Register reg, std::uint32_t value)
{
    return Send(card, ControlCode::IOCTL_REG_WRITE,
                Block().put(0, axis).put(4, std::uint32_t{WriteCode(reg)}).put(8, value), 32, 16);
}

std::uint32_t Read(HANDLE card, unsigned axis, Register reg)
{
    Block block;
    block.put(0, axis).put(4, std::uint32_t{ReadCode(reg)});
    CHECK(Send(card, ControlCode::IOCTL_REG_READ, block, 32, 16) == 0);
    return block.word(0);
}

std::uint8_t NumberOf(HANDLE card)
{
    Block block;
    CHECK(Send(card, ControlCode::IOCTL_GET_RESOURCE, block, 32, 32) == 0);
    return block.bytes[3];
}

// What a program is told that opens a card: on Wine, with its first request.
DWORD OpeningError(const std::string &path)
{
    const Handle card(Open(path));
    Block block;
    return card.get() == INVALID_HANDLE_VALUE ? GetLastError()
                                              : Send(card.get(), ControlCode::IOCTL_GET_RESOURCE, block, 32, 32);
}

// A card by its number, opened.
Handle OpenCard(std::uint8_t number)
{
    for (const std::string &path : Paths()) {
        Handle card(Open(path));
        REQUIRE(card.get() != INVALID_HANDLE_VALUE);
        if (NumberOf(card.get()) == number)
            return card;
    }
    FAIL("no card ", int{number});
    return nullptr;
}

// A request of this process's interrupts: which event, or whether they are signalled.
DWORD Ask(HANDLE card, ControlCode code, HANDLE event, bool on)
{
    const std::uint32_t number = HandleToULong(event);
    Block block;
    block.put(16, std::uint32_t{GetCurrentProcessId()}).put(20, static_cast<std::uint8_t>(on));
    return Send(card, code, block.put(24, number).put(28, number), 32, 0);
}
DWORD Link(HANDLE card, HANDLE event)
{
    return Ask(card, ControlCode::IOCTL_IRQ_LINK, event, false);
}
DWORD Enable(HANDLE card)
{
    return Ask(card, ControlCode::IOCTL_IRQ_ENABLE, nullptr, true);
}

// A move of an axis that ends with an event.
void Move(HANDLE card, unsigned axis, std::uint32_t pulses, std::uint32_t pps)
{
    const std::pair<Register, std::uint32_t> values[] = {
        {Register::EVENT_ENABLE, 1},
        {Register::MULTIPLIER, 299}, // a speed register of 1 is 1 pulse/s
        {Register::START_SPEED, 1},
        {Register::MAX_SPEED, pps},
        {Register::MODE, static_cast<std::uint32_t>(OperationCode::Positioning)},
        {Register::DISTANCE, pulses}};
    for (const auto &[reg, value] : values)
        CHECK(Write(card, axis, reg, value) == 0);
    const auto command =
        static_cast<std::uint16_t>(1u << (8 + axis) | static_cast<unsigned>(Command::CMD_START_HIGH));
    CHECK(Send(card, ControlCode::IOCTL_PORT_WRITE, Block().put(2, std::uint8_t{1}).put(20, command), 32, 0) == 0);
}

bool Signalled(HANDLE event, DWORD milliseconds)
{
    return WaitForSingleObject(event, milliseconds) == WAIT_OBJECT_0;
}

// This program again, as the one that holds a card; it tells by the event that it does, and stays until it is ended.
int HoldCard(const char *path, const char *event_name)
{
    const HANDLE card = Open(path);
    const HANDLE link = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const HANDLE ready = OpenEventA(EVENT_ALL_ACCESS, FALSE, event_name);
    if (card == INVALID_HANDLE_VALUE || ready == nullptr || Link(card, link) != 0 || Enable(card) != 0)
        return 1;
    SetEvent(ready);
    Sleep(INFINITE);
    return 0;
}

// Starts this program again, with these arguments.
Handle OtherProcess(const std::string &arguments)
{
    std::array<char, MAX_PATH> program{};
    GetModuleFileNameA(nullptr, program.data(), program.size());
    std::string line = "\"" + std::string(program.data()) + "\" " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    REQUIRE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

} // namespace

TEST_CASE("bad requests are refused as the library's own virtual cards refuse them, and harm nothing")
{
    const Handle card = OpenCard(0);
    CHECK(Write(card.get(), 2, Register::SOFTLIMIT1, 0x12345678) == 0);

    struct Case {
        DWORD code;
        std::size_t at;
        std::uint32_t value;
        DWORD in_size, out_size, error;
    };
    constexpr Case cases[] = {
        {0x222004, 0, 0, 32, 32, ERROR_INVALID_FUNCTION},      {0x22205D, 0, 0, 32, 16, ERROR_INVALID_FUNCTION},
        {0x22205F, 0, 0, 32, 16, ERROR_INVALID_FUNCTION},      {0x2223C0, 0, 0, 288, 288, ERROR_INVALID_FUNCTION},
        {0x22205C, 0, 0, 33, 16, ERROR_INVALID_PARAMETER},     {0x22205C, 0, 0, 0, 0, ERROR_INVALID_PARAMETER},
        {0x22205C, 0, 0, 4096, 4096, ERROR_INVALID_PARAMETER}, {0x22205C, 0, 4, 32, 16, ERROR_INVALID_PARAMETER},
        {0x2220C4, 0, 0, 1, 84, ERROR_INVALID_PARAMETER},      {0x2220C0, 24, 0x7770, 32, 0, ERROR_INVALID_HANDLE},
        {0x2220C0, 0, 0, 28, 0, ERROR_INVALID_PARAMETER},
    };
    for (const Case &c : cases) {
        INFO(c.code << ", " << c.value << ", " << c.in_size << " bytes");
        Block block;
        block.put(16, std::uint32_t{GetCurrentProcessId()}).put(c.at, c.value);
        CHECK(Send(card.get(), c.code, block, c.in_size, c.out_size) == c.error);
    }

    const Handle mutex(CreateMutexA(nullptr, FALSE, nullptr)); // only an event can be linked
    CHECK(Link(card.get(), mutex.get()) == ERROR_INVALID_HANDLE);
    CHECK(Link(card.get(), card.get()) == ERROR_INVALID_HANDLE);

    std::mt19937 random(20240611); // anything at all
    for (int i = 0; i < 3000; ++i) {
        Block block;
        for (std::size_t at = 0; at < 32; at += 4)
            block.put(at, std::uint32_t{random()});
        const DWORD code = 0x222000 + random() % 0x400;
        if ((code & ~DWORD{3}) != static_cast<DWORD>(ControlCode::IOCTL_PORT_WRITE) &&
            code != static_cast<DWORD>(ControlCode::IOCTL_REG_WRITE)) // well-formed ones would change the card
            Send(card.get(), code, block, random() % 3 == 0 ? 32 : random() % 4096, random() % 4096);
    }
    CHECK(Read(card.get(), 2, Register::SOFTLIMIT1) == 0x12345678);
}

TEST_CASE("the error that TrevikVirtual_refuse chooses arrives")
{
    const Handle card = OpenCard(5);
    for (const std::uint32_t error : {1u, 5u, 21u, 31u, 87u, 1167u}) {
        CHECK(TrevikVirtual_refuse(5, 1, 1, error) == TREVIK_OK);
        CHECK(Write(card.get(), 0, Register::MAX_SPEED, 1) == 0);
        CHECK(Write(card.get(), 0, Register::MAX_SPEED, 2) == error);
        CHECK(Read(card.get(), 0, Register::MAX_SPEED) == 1);
    }
}

TEST_CASE("an axis moves in real time, and its end signals the linked event, once, while a program waits")
{
    const Handle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    {
        const Handle card = OpenCard(5);
        CHECK(Link(card.get(), event.get()) == 0);
        CHECK(Enable(card.get()) == 0);
        const auto begin = std::chrono::steady_clock::now();
        Move(card.get(), 1, 1000, 5000); // 0.2 s
        CHECK(Signalled(event.get(), 5000));
        CHECK(std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(190));
        CHECK(Read(card.get(), 1, Register::COUNTER1) == 1000);
        Block snapshot;
        CHECK(Send(card.get(), ControlCode::IOCTL_IRQ_STATUS, snapshot, 0, 84) == 0);
        CHECK((snapshot.bytes[1] == 1 << 2 && snapshot.word(24) == 1));
        CHECK_FALSE(Signalled(event.get(), 100));

        CHECK(Link(card.get(), nullptr) == 0);
        Move(card.get(), 1, 10, 5000);
        CHECK_FALSE(Signalled(event.get(), 100));
        CHECK(Link(card.get(), event.get()) == 0);
        Move(card.get(), 1, 1000, 5000);
    }
    CHECK_FALSE(Signalled(event.get(), 400)); // closed meanwhile
}

TEST_CASE("a process that ends lets its card go")
{
    const Handle ready(CreateEventA(nullptr, FALSE, FALSE, "trevikv driver test"));
    for (const std::string &path : Paths()) {
        const Handle other = OtherProcess("hold " + path + " \"trevikv driver test\"");
        REQUIRE(Signalled(ready.get(), 20000));
        CHECK(OpeningError(path) == ERROR_SHARING_VIOLATION);
        TerminateProcess(other.get(), 3); // as if it had crashed
        CHECK(Signalled(other.get(), 5000));
        for (int i = 0; i < 500 && OpeningError(path) != 0; ++i) // the system closes what the process left
            Sleep(10);
        const Handle card(Open(path));
        Move(card.get(), 0, 10, 5000); // nobody waits for its end any more
        Sleep(50);
        CHECK(Read(card.get(), 0, Register::EVENT_ENABLE) == 1);
    }
}

TEST_CASE("what stands around a card is set beside the program that holds it")
{
    const Handle card = OpenCard(0);
    CHECK(TrevikVirtual_handwheel_turn(0, 3, 500, 0) == TREVIK_OK);
    CHECK(TrevikVirtual_counter_set(0, 3, 2, -7) == TREVIK_OK);
    CHECK((Read(card.get(), 3, Register::COUNTER4) == 500 && Value(TrevikVirtual_counter_read, 0, 3, 2) == -7));
    CHECK(TrevikVirtual_position_set(0, 2, 1234) == TREVIK_OK);
    CHECK(Value(TrevikVirtual_position_read, 0, 2) == 1234);
    CHECK(TrevikVirtual_switch_set(0, 2, TREVIK_VIRTUAL_HOME, 1200, INT32_MAX) == TREVIK_OK);
    CHECK(Value(TrevikVirtual_input_read, 0, 2, TREVIK_VIRTUAL_HOME) == 1);
    CHECK(TrevikVirtual_switch_clear(0, 2, TREVIK_VIRTUAL_HOME) == TREVIK_OK);
    CHECK(Value(TrevikVirtual_input_read, 0, 2, TREVIK_VIRTUAL_HOME) == 0);
    CHECK(TrevikVirtual_index_set(0, 2, 1234, 100) == TREVIK_OK);
    CHECK(Value(TrevikVirtual_input_read, 0, 2, TREVIK_VIRTUAL_INDEX) == 1);
    Move(card.get(), 0, 100000, 5000);
    CHECK(Value(TrevikVirtual_speed_read, 0, 0) == 5000.0);
    CHECK(TrevikVirtual_position_set(0, 0, 1) == TREVIK_ERR_BUSY);
    CHECK(TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT, 1) == TREVIK_OK);
    CHECK(Value(TrevikVirtual_speed_read, 0, 0) == 0.0);
    CHECK(TrevikVirtual_encoder_status_set(0, 0, 1) == TREVIK_ERR_MODEL);
}

TEST_CASE("the cards of the devices may be others, while programs run")
{
    const Handle old = OpenCard(5);
    CHECK(TrevikVirtual_cards_set("0:A,1:A,2:A") == TREVIK_ERR_PARAM); // more than there are devices
    CHECK(Write(old.get(), 0, Register::MAX_SPEED, 77) == 0);

    CHECK(TrevikVirtual_cards_set("") == TREVIK_OK);
    CHECK(Paths().empty());
    CHECK(Write(old.get(), 0, Register::MAX_SPEED, 77) == ERROR_DEVICE_NOT_CONNECTED);
    CHECK(TrevikVirtual_cards_set("9:AC") == TREVIK_OK);
    CHECK(Paths().size() == 1);
    CHECK(NumberOf(OpenCard(9).get()) == 9);
    CHECK(TrevikVirtual_cards_set("0:A,5:AC") == TREVIK_OK);
    CHECK(Read(OpenCard(5).get(), 0, Register::MAX_SPEED) == 0);
}

TEST_CASE("no card: nothing is found, and nothing stands around it" * doctest::skip() *
          doctest::test_suite("no card"))
{
    CHECK(Paths().empty());
    std::int32_t value = 0;
    CHECK(TrevikVirtual_counter_read(0, 0, 1, &value) == TREVIK_ERR_HANDLE);
}

int main(int count, char **arguments)
{
    if (count == 4 && std::strcmp(arguments[1], "hold") == 0)
        return HoldCard(arguments[2], arguments[3]);
    return doctest::Context(count, arguments).run();
}
