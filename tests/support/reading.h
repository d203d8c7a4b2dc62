// Read-backs as text: the result, unless that is 0, and all out-values, each with a space after it; and as a value.
#pragma once

#include "support/system.h"

#include <trevik/TrevikA.h>

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace trevik::test
{

template <std::size_t... G, std::size_t... O, class... P, class... S>
std::string ReadingOf(std::index_sequence<G...>, std::index_sequence<O...>,
                      std::uint32_t(TREVIK_CALL *read)(std::uint8_t, P...), int card, S... selectors)
{
    using All = std::tuple<P...>;
    std::tuple<std::remove_pointer_t<std::tuple_element_t<sizeof...(G) + O, All>>...> outs;
    ((std::get<O>(outs) = 77), ...);
    const std::uint32_t result =
        read(static_cast<std::uint8_t>(card), static_cast<std::tuple_element_t<G, All>>(selectors)...,
             &std::get<O>(outs)...);
    std::string text = result != 0 ? "result " + std::to_string(result) + " " : "";
    ((text += std::to_string(std::get<O>(outs)) + " "), ...);
    return text;
}

// Calls read(card, selectors..., outs...), the outs holding 77 before.
template <class... P, class... S>
std::string Reading(std::uint32_t(TREVIK_CALL *read)(std::uint8_t, P...), int card, S... selectors)
{
    return ReadingOf(std::index_sequence_for<S...>(), std::make_index_sequence<sizeof...(P) - sizeof...(S)>(), read,
                     card, selectors...);
}

// What read(arguments..., out) gives out.
template <class Function, class... A>
auto Value(Function read, A... arguments)
{
    using All = typename Signature<Function>::Parameters;
    std::remove_pointer_t<std::tuple_element_t<sizeof...(A), All>> value{};
    const auto call = [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return read(static_cast<std::tuple_element_t<I, All>>(arguments)..., &value);
    };
    CHECK(call(std::index_sequence_for<A...>()) == TREVIK_OK);
    return value;
}

} // namespace trevik::test
