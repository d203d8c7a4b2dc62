#include "api/library.h"

#include "api/card_manager.h"
#include "driver/simulation.h"

namespace trevik
{

std::uint32_t SimulationSwitch(std::uint8_t mode)
{
    if (!SimulationOn())
        SimulationMode = mode;
    return TREVIK_OK;
}

std::uint32_t LibraryInitial(const char *trace_line)
{
    os::OutputDebugStringA(trace_line);
    return SimulationOn() ? TREVIK_OK : ToCode(manager.Initial());
}

std::uint32_t LibraryClose()
{
    if (!SimulationOn())
        manager.Close();
    return TREVIK_OK;
}

Result CardResourceWord(const Card &card, std::uint16_t *resource_word)
{
    if (resource_word == nullptr)
        return Result::Param;
    *resource_word = card.state().Record.ResourceWord;
    return Result::Ok;
}

Result CardInfo(const Card &card, std::uint8_t *model, std::uint16_t *resource_word)
{
    if (model == nullptr || resource_word == nullptr)
        return Result::Param;
    const CardModel found = card.state().Record.Model;
    *model = static_cast<std::uint8_t>(found);
    return CardResourceWord(card, resource_word);
}

} // namespace trevik
