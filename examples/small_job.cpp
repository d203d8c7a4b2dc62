// A small job: a line and a quarter of a circle, each waited for by interrupt; then where the axes stand. The same in
// C, Python and C# beside this file. Without a card in the machine this is a virtual card.
#include <array>
#include <iostream>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <trevik/TrevikA.h>

namespace
{

constexpr std::uint32_t move_ended = 0x1; // virtual cards: the operation of the axis ended as planned

std::binary_semaphore ended{0};

// Runs on a thread of the library and wakes the main thread.
void TREVIK_CALL OnInterrupt(std::uint32_t card)
{
    std::uint32_t events = 0;
    TrevikA_event_flag_read(static_cast<std::uint8_t>(card), 0, &events); // and clears them
    if ((events & move_ended) != 0)
        ended.release();
}

std::string ResultName(std::uint32_t result)
{
    switch (result) {
    case TREVIK_ERR_OPEN:
        return "TREVIK_ERR_OPEN";
    case TREVIK_ERR_AXIS:
        return "TREVIK_ERR_AXIS";
    case TREVIK_ERR_PARAM:
        return "TREVIK_ERR_PARAM";
    case TREVIK_ERR_BUSY:
        return "TREVIK_ERR_BUSY";
    default:
        return "see TrevikA.h";
    }
}

void Check(std::uint32_t result)
{
    if (result != TREVIK_OK)
        throw std::runtime_error("result " + std::to_string(result) + ": " + ResultName(result));
}

void PrintPositions()
{
    std::array<std::uint32_t, 2> positions{}; // signed numbers in unsigned ones
    for (std::uint8_t axis = 0; axis < positions.size(); ++axis)
        Check(TrevikA_current_position_read(0, axis, &positions[axis]));
    std::cout << "the axes stand at " << static_cast<std::int32_t>(positions[0]) << ", "
              << static_cast<std::int32_t>(positions[1]) << '\n';
}

void Run()
{
    constexpr std::array<std::uint8_t, 4> relative{};
    Check(TrevikA_initial());
    Check(TrevikA_init_card(0));
    Check(TrevikA_event_factor_set(0, 0, move_ended));
    Check(TrevikA_IRQ_mask_set(0, 0, 1)); // axis 0 may interrupt
    Check(TrevikA_IRQ_enable(0));
    Check(TrevikA_IRQ_process_link(0, OnInterrupt));

    Check(TrevikA_T_LINE2_move(0, 0, -30000, 40000, relative.data(), 500, 200000, 20, 20, 0));
    ended.acquire();
    PrintPositions();
    // Clockwise about a center 20000 to the right, from its left to its top.
    Check(TrevikA_T_ARC_center_move(0, 0, 20000, 0, 20000, 20000, relative.data(), 500, 200000, 20, 0, 0));
    ended.acquire();
    PrintPositions();

    const std::uint32_t refused = TrevikA_T_position_move(0, 4, 1, 0, 500, 50000, 20, 20, 0);
    std::cout << "a move of axis 4: " << ResultName(refused) << '\n';
}

} // namespace

int main()
{
    int status = 0;
    try {
        Run();
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        status = 1;
    }
    TrevikA_close();
    return status;
}
