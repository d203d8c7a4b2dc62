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

Result CardInfo(const Card &card, std::uint8_t *model, std::uint16_t *resource_word)
{
    if (model == nullptr || resource_word == nullptr)
        return Result::Param;
    const CardRecord &record = card.state().Record;
    *resource_word = record.ResourceWord;
    *model = static_cast<std::uint8_t>(record.Model.operator CardModel());
    return Result::Ok;
}

} // namespace trevik
