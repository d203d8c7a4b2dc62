// Any file as a card's configuration: it loads whole or not at all, comes back from the card as it was loaded, and the
// card stays one that can be moved and stopped.
#include "fuzz/bytes.h"

#include "api/card_manager.h"
#include "virtual/bus.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace trevik::fuzz
{
namespace
{

constexpr std::size_t file_size = 212;
constexpr Register saved[] = {
    Register::SIGNAL_CONFIG1,     Register::SIGNAL_CONFIG2,      Register::HOME_CONFIG,
    Register::LIMIT_CONFIG,       Register::START_TRIGGER_ENV,   Register::MOTION_CONFIG,
    Register::VIBRATION_CONFIG,   Register::SOFTLIMIT1,          Register::SOFTLIMIT2,
    Register::COMPARE_START_DATA, Register::COMPARATOR_DATA_AUX, Register::COMPARATOR_DATA,
};

// A file in memory, by a name that can be opened.
class MemoryFile
{
  public:
    MemoryFile() : number_(memfd_create("configuration", 0)), name_("/proc/self/fd/" + std::to_string(number_)) {}
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { close(number_); }
    const char *name() const { return name_.c_str(); }
    void fill(std::span<const std::uint8_t> text)
    {
        Require(write(number_, text.data(), text.size()) == static_cast<ssize_t>(text.size()), "cannot write");
    }
    std::vector<std::uint8_t> content() const
    {
        std::vector<std::uint8_t> bytes(2 * file_size);
        bytes.resize(static_cast<std::size_t>(pread(number_, bytes.data(), bytes.size(), 0)));
        return bytes;
    }

  private:
    int number_;
    std::string name_;
};

// What Windows reads from such a text; short when it ends early.
std::string AsText(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size() && bytes[i] != 0x1A && text.size() < file_size; ++i)
        if (bytes[i] != 0x0D || i + 1 == bytes.size() || bytes[i + 1] != 0x0A)
            text += static_cast<char>(bytes[i]);
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

void Load(std::span<const std::uint8_t> file)
{
    const std::string text = AsText(file);
    const std::string before = OfCard();
    MemoryFile in;
    in.fill(file);
    const std::uint32_t result = TrevikA_config_file_read(0, in.name());
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
    const MemoryFile file;
    Require(TrevikA_config_file_set(0, file.name()) == TREVIK_OK, "cannot save");
    const std::vector<std::uint8_t> saved_bytes = file.content();
    Require(AsText(saved_bytes).size() == file_size ||
                std::count(saved_bytes.begin(), saved_bytes.end(), 0x1A) != 0,
            "the saved file is too short");
    Load(saved_bytes);
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

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TrevikHost_clock_manual(1);
    return std::freopen("/dev/null", "w", stdout) != nullptr ? 0 : 1; // TrevikA_initial prints
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trevik::fuzz;
    TrevikVirtual_cards_set("0:A");
    TrevikA_initial();
    Load({data, size});
    SaveAndLoad();
    Move();
    trevik::manager.StopPulserTicks(); // each start-up adds one
    return 0;
}
