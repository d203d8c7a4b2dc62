// The frame of every exported function: simulation mode, model check, card, axis and handle checks, operation. An
// entry is one line: it names the operation that does the work and hands its arguments on.
//
//     CardEntry(card, operation, arguments...)         calls operation(Card, arguments...)
//     AxisEntry(card, axis, operation, arguments...)   calls operation(Axis, arguments...)
//     AxisSetEntry(card, set, operation)               calls operation(Card, set)
//
//     NumberEntry(card, operation, arguments...)       calls operation(Card, arguments...), also of a card not open
//     ACCardEntry, ACAxisEntry                         the same for operations that only the AC model has
//
// The earlier names and the raw index access skip the model check: Earlier...Entry.
#pragma once

#include "api/card_manager.h"
#include "driver/simulation.h"
#include "motion/axis_set.h"
#include "motion/profile.h"

#include <concepts>
#include <cstdint>

namespace trevik
{

template <class Operation, class... Arguments>
std::uint32_t EarlierCardEntry(std::uint8_t card, Operation operation, Arguments... arguments)
{
    if (SimulationOn())
        return TREVIK_OK;
    Card checked;
    if (const Result check = manager.checked(card, checked); check != Result::Ok)
        return ToCode(check);
    return ToCode(operation(checked, arguments...));
}

template <class Operation, class... Arguments>
std::uint32_t EarlierAxisEntry(std::uint8_t card, std::uint8_t axis, Operation operation, Arguments... arguments)
{
    if (SimulationOn())
        return TREVIK_OK;
    Axis checked;
    if (const Result check = manager.checked(card, axis, checked); check != Result::Ok)
        return ToCode(check);
    return ToCode(operation(checked, arguments...));
}

// For S-curve moves that take whole ramp times and S times: the times are checked before the card is, and the
// operation gets the speeds gained in the curved sections.
template <class Times>
concept CurvedTimes = requires(const Times &times, SRangeSpeeds &ranges)
{
    {
        times.ranges(ranges)
        } -> std::same_as<bool>;
};

template <CurvedTimes Times, class Operation, class... Arguments>
std::uint32_t EarlierCardEntry(std::uint8_t card, const Times &times, Operation operation, Arguments... arguments)
{
    if (SimulationOn())
        return TREVIK_OK;
    SRangeSpeeds ranges;
    if (!times.ranges(ranges))
        return TREVIK_ERR_PARAM;
    return EarlierCardEntry(card, operation, ranges, arguments...);
}

template <CurvedTimes Times, class Operation, class... Arguments>
std::uint32_t EarlierAxisEntry(std::uint8_t card, std::uint8_t axis, const Times &times, Operation operation,
                               Arguments... arguments)
{
    if (SimulationOn())
        return TREVIK_OK;
    SRangeSpeeds ranges;
    if (!times.ranges(ranges))
        return TREVIK_ERR_PARAM;
    return EarlierAxisEntry(card, axis, operation, ranges, arguments...);
}

// For operations on a set of axes and nothing else: no such set is found out before the handle is looked at.
template <class Operation>
std::uint32_t EarlierAxisSetEntry(std::uint8_t card, const AxisSet &set, Operation operation)
{
    if (!SimulationOn() && card < card_count && set.size == 0)
        return TREVIK_ERR_PARAM;
    return EarlierCardEntry(card, operation, set);
}

template <class Operation, class... Arguments>
std::uint32_t EarlierNumberEntry(std::uint8_t card, Operation operation, Arguments... arguments)
{
    if (SimulationOn())
        return TREVIK_OK;
    Card numbered;
    if (const Result check = manager.numbered(card, numbered); check != Result::Ok)
        return ToCode(check);
    return ToCode(operation(numbered, arguments...));
}

template <class Operation, class... Arguments>
std::uint32_t NumberEntry(std::uint8_t card, Operation operation, Arguments... arguments)
{
    if (!SimulationOn() && manager.unsupported(card))
        return TREVIK_ERR_MODEL;
    return EarlierNumberEntry(card, operation, arguments...);
}

// The handle is looked at when a request is to be sent, after the arguments.
template <class Operation, class... Arguments>
std::uint32_t ACCardEntry(std::uint8_t card, Operation operation, Arguments... arguments)
{
    return NumberEntry(card, [=](const Card &numbered) {
        return numbered.state().Record.Model == CardModel::AC ? operation(numbered, arguments...) : Result::Model;
    });
}

template <class Operation, class... Arguments>
std::uint32_t ACAxisEntry(std::uint8_t card, std::uint8_t axis, Operation operation, Arguments... arguments)
{
    return NumberEntry(card, [=](const Card &numbered) {
        if (axis >= axis_count)
            return Result::Axis;
        return numbered.state().Record.Model == CardModel::AC ? operation(numbered, axis, arguments...)
                                                              : Result::Model;
    });
}

template <class Operation, class... Arguments>
std::uint32_t CardEntry(std::uint8_t card, Operation operation, Arguments... arguments)
{
    if (!SimulationOn() && manager.unsupported(card))
        return TREVIK_ERR_MODEL;
    return EarlierCardEntry(card, operation, arguments...);
}

template <class Operation>
std::uint32_t AxisSetEntry(std::uint8_t card, const AxisSet &set, Operation operation)
{
    if (!SimulationOn() && manager.unsupported(card))
        return TREVIK_ERR_MODEL;
    return EarlierAxisSetEntry(card, set, operation);
}

template <class Operation, class... Arguments>
std::uint32_t AxisEntry(std::uint8_t card, std::uint8_t axis, Operation operation, Arguments... arguments)
{
    if (!SimulationOn() && manager.unsupported(card))
        return TREVIK_ERR_MODEL;
    return EarlierAxisEntry(card, axis, operation, arguments...);
}

} // namespace trevik
