// A read-back as text: its result, unless that is 0, and all its out-values, each with a space after it.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace trevik::test
{

template <std::size_t... G, std::size_t... O, class... P, class... S>
std::string ReadingOf(std::index_sequence<G...>, std::index_sequence<O...>,
                      std::uint32_t (*read)(std::uint8_t, P...), int card, S... selectors)
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
std::string Reading(std::uint32_t (*read)(std::uint8_t, P...), int card, S... selectors)
{
    return ReadingOf(std::index_sequence_for<S...>(), std::make_index_sequence<sizeof...(P) - sizeof...(S)>(), read,
                     card, selectors...);
}

} // namespace trevik::test
