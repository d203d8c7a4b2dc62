// The functions of TrevikVirtual.h.
#include <trevik/TrevikVirtual.h>

#include "virtual/bus.h"

using namespace trevik::virtual_card;

namespace
{

// Calls an operation on a card that it holds, or tells why not.
template <class Operation>
uint32_t OnCard(uint8_t number, bool arguments_valid, Operation operation)
{
    const Bus::Hold card = TheBus().hold(number);
    if (!card)
        return TREVIK_ERR_HANDLE;
    if (!arguments_valid)
        return TREVIK_ERR_PARAM;
    card->pass(card.now_ns());
    return operation(*card.operator->(), card.now_ns());
}

template <class Operation>
uint32_t OnAxis(uint8_t number, uint8_t axis, bool arguments_valid, Operation operation)
{
    if (axis < chip_axes)
        return OnCard(number, arguments_valid, operation);
    return TheBus().hold(number) ? TREVIK_ERR_AXIS : TREVIK_ERR_HANDLE;
}

bool IsCounter(uint8_t counter)
{
    return counter >= 1 && counter <= 4;
}

} // namespace

uint32_t TrevikVirtual_cards_set(const char *cards)
{
    const auto list = cards != nullptr ? ParseCards(cards) : std::nullopt;
    if (!list)
        return TREVIK_ERR_PARAM;
    TheBus().place(*list);
    return TREVIK_OK;
}

uint32_t TrevikVirtual_counter_read(uint8_t card, uint8_t axis, uint8_t counter, int32_t *value)
{
    return OnAxis(card, axis, IsCounter(counter) && value != nullptr, [=](Card &c, std::int64_t now_ns) {
        *value = c.counter(axis, counter, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_counter_set(uint8_t card, uint8_t axis, uint8_t counter, int32_t value)
{
    return OnAxis(card, axis, IsCounter(counter), [=](Card &c, std::int64_t now_ns) {
        c.set_counter(axis, counter, value, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_position_read(uint8_t card, uint8_t axis, int32_t *pulses)
{
    return OnAxis(card, axis, pulses != nullptr, [=](Card &c, std::int64_t now_ns) {
        *pulses = c.chip().position(axis, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_position_set(uint8_t card, uint8_t axis, int32_t pulses)
{
    return OnAxis(card, axis, true, [=](Card &c, std::int64_t now_ns) {
        return c.chip().move_by_hand(axis, pulses, now_ns) ? TREVIK_OK : TREVIK_ERR_BUSY;
    });
}

uint32_t TrevikVirtual_speed_read(uint8_t card, uint8_t axis, double *pulses_per_s)
{
    return OnAxis(card, axis, pulses_per_s != nullptr, [=](Card &c, std::int64_t now_ns) {
        *pulses_per_s = c.chip().speed(axis, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_input_read(uint8_t card, uint8_t axis, uint8_t input, uint8_t *active)
{
    return OnAxis(card, axis, input < TREVIK_VIRTUAL_INPUT_COUNT && active != nullptr,
                  [=](Card &c, std::int64_t now_ns) {
                      *active = c.chip().input(axis, static_cast<Input>(input), now_ns);
                      return TREVIK_OK;
                  });
}

uint32_t TrevikVirtual_input_set(uint8_t card, uint8_t axis, uint8_t input, uint8_t active)
{
    const bool valid = input < TREVIK_VIRTUAL_INPUT_COUNT && active <= 1;
    return OnAxis(card, axis, valid, [=](Card &c, std::int64_t now_ns) {
        c.chip().set_input(axis, static_cast<Input>(input), active != 0, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_output_read(uint8_t card, uint8_t axis, uint8_t output, uint8_t *on)
{
    return OnAxis(card, axis, output < TREVIK_VIRTUAL_OUTPUT_COUNT && on != nullptr,
                  [=](Card &c, std::int64_t now_ns) {
                      *on = c.chip().output(axis, static_cast<Output>(output), now_ns);
                      return TREVIK_OK;
                  });
}

uint32_t TrevikVirtual_switch_set(uint8_t card, uint8_t axis, uint8_t input, int32_t first, int32_t last)
{
    const bool valid = input < TREVIK_VIRTUAL_INPUT_COUNT && first <= last;
    return OnAxis(card, axis, valid, [=](Card &c, std::int64_t now_ns) {
        c.chip().rebuild(axis, now_ns, [=](Surroundings &around) {
            around.place_switch(static_cast<Input>(input), first, last);
        });
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_switch_clear(uint8_t card, uint8_t axis, uint8_t input)
{
    return OnAxis(card, axis, input < TREVIK_VIRTUAL_INPUT_COUNT, [=](Card &c, std::int64_t now_ns) {
        c.chip().rebuild(axis, now_ns,
                         [=](Surroundings &around) { around.remove_switch(static_cast<Input>(input)); });
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_index_set(uint8_t card, uint8_t axis, int32_t first, uint32_t period)
{
    return OnAxis(card, axis, true, [=](Card &c, std::int64_t now_ns) {
        c.chip().rebuild(axis, now_ns, [=](Surroundings &around) { around.place_index(first, period); });
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_handwheel_turn(uint8_t card, uint8_t axis, int32_t counts, double seconds)
{
    const bool valid = seconds >= 0 && seconds < never;
    return OnAxis(card, axis, valid, [=](Card &c, std::int64_t now_ns) {
        c.chip().turn_handwheel(axis, counts, seconds, now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_analog_output_read(uint8_t card, uint8_t axis, int32_t *value)
{
    return OnAxis(card, axis, value != nullptr, [=](Card &c, std::int64_t now_ns) {
        const AcModel *ac = c.ac_model();
        if (ac == nullptr)
            return TREVIK_ERR_MODEL;
        *value = ac->output(axis, c.chip(), now_ns);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_encoder_status_set(uint8_t card, uint8_t axis, uint16_t status)
{
    return OnAxis(card, axis, true, [=](Card &c, std::int64_t) {
        AcModel *ac = c.ac_model();
        if (ac == nullptr)
            return TREVIK_ERR_MODEL;
        ac->set_encoder_status(axis, status);
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_next_event_read(uint8_t card, double *seconds)
{
    return OnCard(card, seconds != nullptr, [=](Card &c, std::int64_t now_ns) {
        const std::int64_t event_ns = c.next_event(now_ns);
        *seconds = event_ns == never_ns ? never : static_cast<double>(event_ns - now_ns) * 1e-9;
        return TREVIK_OK;
    });
}

uint32_t TrevikVirtual_refuse(uint8_t card, uint32_t skip, uint32_t count, uint32_t error)
{
    return OnCard(card, count == 0 || error != 0, [=](Card &c, std::int64_t) {
        c.refuse(skip, count, error);
        return TREVIK_OK;
    });
}
