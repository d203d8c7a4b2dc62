// The functions of TrevikVirtual.h for a program beside the driver's cards.
#include <trevik/TrevikVirtual.h>

#include "trevikv/machine_call.h"

#include <windows.h>

#include <atomic>
#include <cstring>

using trevik::kernel::MachineCall;
using Function = trevik::kernel::MachineFunction;

namespace
{

// The driver's device, opened when it is first needed and kept. A thread that comes second takes the first's.
HANDLE Driver()
{
    static std::atomic<HANDLE> driver{INVALID_HANDLE_VALUE};
    HANDLE handle = driver;
    if (handle != INVALID_HANDLE_VALUE)
        return handle;
    HANDLE opened = CreateFileA(R"(\\.\trevikv)", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    if (driver.compare_exchange_strong(handle, opened))
        return opened;
    CloseHandle(opened);
    return handle;
}

// Without the driver there is no card.
uint32_t Make(MachineCall &call, Function function)
{
    call.function = function;
    DWORD returned = 0;
    const BOOL made = DeviceIoControl(Driver(), trevik::kernel::machine_request, &call, sizeof call, &call,
                                      sizeof call, &returned, nullptr);
    return made && returned == sizeof call ? call.result : TREVIK_ERR_HANDLE;
}

template <class Field, class T>
uint32_t Read(MachineCall call, Function function, Field MachineCall::*field, T *value)
{
    call.null = value == nullptr;
    const uint32_t result = Make(call, function);
    if (result == TREVIK_OK && value != nullptr)
        *value = static_cast<T>(call.*field);
    return result;
}

MachineCall On(uint8_t card, uint8_t axis = 0, uint8_t which = 0, int32_t whole = 0, int32_t whole2 = 0)
{
    MachineCall call{};
    call.card = card;
    call.axis = axis;
    call.which = which;
    call.whole = whole;
    call.whole2 = whole2;
    return call;
}

uint32_t Set(MachineCall call, Function function)
{
    return Make(call, function);
}

} // namespace

uint32_t TrevikVirtual_cards_set(const char *cards)
{
    MachineCall call{};
    call.null = cards == nullptr;
    const char *const text = cards != nullptr ? cards : "";
    const std::size_t length = std::strlen(text);
    if (length >= sizeof call.text)
        return TREVIK_ERR_PARAM;
    std::memcpy(call.text, text, length);
    return Make(call, Function::cards_set);
}

uint32_t TrevikVirtual_counter_read(uint8_t card, uint8_t axis, uint8_t counter, int32_t *value)
{
    return Read(On(card, axis, counter), Function::counter_read, &MachineCall::whole, value);
}

uint32_t TrevikVirtual_counter_set(uint8_t card, uint8_t axis, uint8_t counter, int32_t value)
{
    return Set(On(card, axis, counter, value), Function::counter_set);
}

uint32_t TrevikVirtual_position_read(uint8_t card, uint8_t axis, int32_t *pulses)
{
    return Read(On(card, axis), Function::position_read, &MachineCall::whole, pulses);
}

uint32_t TrevikVirtual_position_set(uint8_t card, uint8_t axis, int32_t pulses)
{
    return Set(On(card, axis, 0, pulses), Function::position_set);
}

uint32_t TrevikVirtual_speed_read(uint8_t card, uint8_t axis, double *pulses_per_s)
{
    return Read(On(card, axis), Function::speed_read, &MachineCall::real, pulses_per_s);
}

uint32_t TrevikVirtual_input_read(uint8_t card, uint8_t axis, uint8_t input, uint8_t *active)
{
    return Read(On(card, axis, input), Function::input_read, &MachineCall::whole, active);
}

uint32_t TrevikVirtual_input_set(uint8_t card, uint8_t axis, uint8_t input, uint8_t active)
{
    return Set(On(card, axis, input, active), Function::input_set);
}

uint32_t TrevikVirtual_output_read(uint8_t card, uint8_t axis, uint8_t output, uint8_t *on)
{
    return Read(On(card, axis, output), Function::output_read, &MachineCall::whole, on);
}

uint32_t TrevikVirtual_switch_set(uint8_t card, uint8_t axis, uint8_t input, int32_t first, int32_t last)
{
    return Set(On(card, axis, input, first, last), Function::switch_set);
}

uint32_t TrevikVirtual_switch_clear(uint8_t card, uint8_t axis, uint8_t input)
{
    return Set(On(card, axis, input), Function::switch_clear);
}

uint32_t TrevikVirtual_index_set(uint8_t card, uint8_t axis, int32_t first, uint32_t period)
{
    return Set(On(card, axis, 0, first, static_cast<int32_t>(period)), Function::index_set);
}

uint32_t TrevikVirtual_handwheel_turn(uint8_t card, uint8_t axis, int32_t counts, double seconds)
{
    MachineCall call = On(card, axis, 0, counts);
    call.real = seconds;
    return Make(call, Function::handwheel_turn);
}

uint32_t TrevikVirtual_analog_output_read(uint8_t card, uint8_t axis, int32_t *value)
{
    return Read(On(card, axis), Function::analog_output_read, &MachineCall::whole, value);
}

uint32_t TrevikVirtual_encoder_status_set(uint8_t card, uint8_t axis, uint16_t status)
{
    return Set(On(card, axis, 0, status), Function::encoder_status_set);
}

uint32_t TrevikVirtual_next_event_read(uint8_t card, double *seconds)
{
    return Read(On(card), Function::next_event_read, &MachineCall::real, seconds);
}

uint32_t TrevikVirtual_refuse(uint8_t card, uint32_t skip, uint32_t count, uint32_t error)
{
    MachineCall call = On(card, 0, 0, static_cast<int32_t>(skip), static_cast<int32_t>(count));
    call.error = error;
    return Make(call, Function::refuse);
}
