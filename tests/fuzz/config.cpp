// Any file as a card's configuration: it loads whole or not at all, comes back from the card as it was loaded, and the
// card stays one that can be moved and stopped.
#include "fuzz/bytes.h"

#include "api/card_manager.h"
#include "virtual/bus.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace trevik::fuzz
{
namespace
{

constexpr std::size_t file_size = 212;
using enum Register;
constexpr Register saved[] = {SIGNAL_CONFIG1,    SIGNAL_CONFIG2,     HOME_CONFIG,         LIMIT_CONFIG,
                              START_TRIGGER_ENV, MOTION_CONFIG,      VIBRATION_CONFIG,    SOFTLIMIT1,
                              SOFTLIMIT2,        COMPARE_START_DATA, COMPARATOR_DATA_AUX, COMPARATOR_DATA};

// What Windows reads from such a text; short when it ends early.
std::string AsText(std::string_view bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size() && bytes[i] != 0x1A && text.size() < file_size; ++i)
        if (bytes[i] != 0x0D || i + 1 == bytes.size() || bytes[i + 1] != 0x0A)
            text += bytes[i];
    return text;
}

// The saved registers of card 0 as the file has them.
std::string OfCard()
{
    const auto card = virtual_card::TheBus().hold(0);
    std::string text;
    for (const Register reg : saved)
        for (unsigned axis = 0; axis < 4; ++axis)
            for (unsigned shift = 0; shift < 32; shift += 8)
                text += static_cast<char>(card->chip().setting(axis, reg) >> shift);
    return text;
}

void Load(std::string_view file)
{
    const std::string text = AsText(file);
    const std::string before = OfCard();
    std::ofstream(scratch_file, std::ios::binary) << file;
    const std::uint32_t result = TrevikA_config_file_read(0, scratch_file.c_str());
    const bool loads = text.size() == file_size;
    Require(result == (loads ? TREVIK_OK : TREVIK_ERR_FILE), "%zu bytes of text: result %u", text.size(), result);
    const std::string &expected = loads ? text : before;
    const std::string after = OfCard();
    Require(expected.compare(0, after.size(), after) == 0, "the registers are not those expected");
}

// What is saved loads, unless it holds the byte that ends a text.
void SaveAndLoad()
{
    const std::string before = OfCard();
    Require(TrevikA_config_file_set(0, scratch_file.c_str()) == TREVIK_OK, "cannot save");
    std::ifstream file(scratch_file, std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(file), {});
    Require(AsText(content).size() == file_size || content.find(0x1A) != content.npos,
            "the saved file is too short");
    Load(content);
    Require(OfCard() == before, "saving and loading changes the registers");
}

void Move()
{
    for (std::uint8_t axis = 0; axis < 4; ++axis) {
        TrevikA_T_position_move(0, axis, 1000, 0, 500, 20000, 10, 10, 0);
        TrevikVirtual_input_set(0, axis, axis, 1);
    }
    TrevikHost_advance(0.01);
    TrevikA_home_start(0, 0, 500, 5000, 10, 1);
    TrevikHost_advance(1);
    TrevikA_stop_emg(0);
    std::uint8_t idle = 0;
    for (std::uint8_t axis = 0; axis < 4; ++axis)
        Require(TrevikA_motion_status_read(0, axis, 0, &idle) == TREVIK_OK && idle == 1, "axis %d is not idle",
                axis);
}

} // namespace
} // namespace trevik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trevik::fuzz;
    TrevikVirtual_cards_set("0:A");
    TrevikA_initial();
    Load({reinterpret_cast<const char *>(data), size});
    SaveAndLoad();
    Move();
    trevik::manager.StopPulserTicks(); // each start-up adds one
    return 0;
}
