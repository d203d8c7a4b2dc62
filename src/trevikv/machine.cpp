#include "trevikv/machine.h"

#include "trevikv/cards.h"
#include "trevikv/machine_call.h"
#include "virtual/card_list.h"

#include <trevik/TrevikVirtual.h>

namespace trevik::kernel
{
namespace
{

// Where the function puts what it reads: null when the caller's own pointer is.
template <class T>
T *Target(const MachineCall &call, T &place)
{
    return call.null != 0 ? nullptr : &place;
}

std::uint32_t SetCards(MachineCall &call)
{
    call.text[sizeof call.text - 1] = '\0';
    const char *text = Target(call, call.text[0]);
    const auto cards = text != nullptr ? virtual_card::ParseCards(text) : std::nullopt;
    unsigned count = 0;
    for (unsigned number = 0; cards && number < places; ++number)
        count += (*cards)[number] ? 1 : 0;
    return count <= PlacesOccupied() ? TrevikVirtual_cards_set(text) : TREVIK_ERR_PARAM;
}

std::uint32_t ReadLevel(MachineCall &c, std::uint32_t (*read)(uint8_t, uint8_t, uint8_t, uint8_t *))
{
    std::uint8_t level = 0;
    const std::uint32_t result = read(c.card, c.axis, c.which, Target(c, level));
    c.whole = level;
    return result;
}

using Call = std::uint32_t (*)(MachineCall &c);

// In the order of MachineFunction.
constexpr Call calls[] = {
    SetCards,
    [](MachineCall &c) { return TrevikVirtual_counter_read(c.card, c.axis, c.which, Target(c, c.whole)); },
    [](MachineCall &c) { return TrevikVirtual_counter_set(c.card, c.axis, c.which, c.whole); },
    [](MachineCall &c) { return TrevikVirtual_position_read(c.card, c.axis, Target(c, c.whole)); },
    [](MachineCall &c) { return TrevikVirtual_position_set(c.card, c.axis, c.whole); },
    [](MachineCall &c) { return TrevikVirtual_speed_read(c.card, c.axis, Target(c, c.real)); },
    [](MachineCall &c) { return ReadLevel(c, TrevikVirtual_input_read); },
    [](MachineCall &c) {
        return TrevikVirtual_input_set(c.card, c.axis, c.which, static_cast<std::uint8_t>(c.whole));
    },
    [](MachineCall &c) { return ReadLevel(c, TrevikVirtual_output_read); },
    [](MachineCall &c) { return TrevikVirtual_switch_set(c.card, c.axis, c.which, c.whole, c.whole2); },
    [](MachineCall &c) { return TrevikVirtual_switch_clear(c.card, c.axis, c.which); },
    [](MachineCall &c) {
        return TrevikVirtual_index_set(c.card, c.axis, c.whole, static_cast<std::uint32_t>(c.whole2));
    },
    [](MachineCall &c) { return TrevikVirtual_handwheel_turn(c.card, c.axis, c.whole, c.real); },
    [](MachineCall &c) { return TrevikVirtual_analog_output_read(c.card, c.axis, Target(c, c.whole)); },
    [](MachineCall &c) {
        return TrevikVirtual_encoder_status_set(c.card, c.axis, static_cast<std::uint16_t>(c.whole));
    },
    [](MachineCall &c) { return TrevikVirtual_next_event_read(c.card, Target(c, c.real)); },
    [](MachineCall &c) {
        return TrevikVirtual_refuse(c.card, static_cast<std::uint32_t>(c.whole),
                                    static_cast<std::uint32_t>(c.whole2), c.error);
    },
};
static_assert(sizeof calls / sizeof *calls == static_cast<unsigned>(MachineFunction::count));

} // namespace

bool MakeCall(MachineCall &call)
{
    if (call.function >= MachineFunction::count)
        return false;
    call.result = calls[static_cast<unsigned>(call.function)](call);
    return true;
}

} // namespace trevik::kernel
