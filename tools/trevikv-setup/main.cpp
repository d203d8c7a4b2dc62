// trevikv-setup: installs the virtual cards of trevikv.sys, and removes them.
#include "devices.h"
#include "failure.h"
#include "package.h"
#include "virtual/card_list.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <exception>

using namespace trevikv_setup;
using trevik::virtual_card::CardList;

namespace
{

enum Exit { done = 0, failed = 1, misused = 2, not_installed = 3 };

constexpr char usage[] = R"(Virtual cards behind the driver interface of the real ones.

  trevikv-setup install [--cards LIST]  installs these cards, and removes those that were there
  trevikv-setup uninstall               removes cards, driver and everything that belongs to them
  trevikv-setup status                  tells what is installed

LIST is written as NUMBER:MODEL,... with numbers 0 to 15 and model A or AC: "0:A,5:AC". Without it: "0:A".
An empty list installs the driver without a card.

Exit: 0 done (status: installed), 1 failed, 2 wrong arguments, 3 status: not installed.
)";

CardList ReadCards(const char *list)
{
    const auto cards = trevik::virtual_card::ParseCards(list);
    if (!cards)
        throw Failure("\"" + std::string(list) +
                      "\" is not a list of cards. Write it as 0:A,5:AC, numbers 0 to 15, " +
                      "each once, model A or AC.");
    return *cards;
}

// A driver serves the system that it was made for.
void CheckSystem()
{
    BOOL on_64_bits = FALSE;
    if (IsWow64Process(GetCurrentProcess(), &on_64_bits) && on_64_bits)
        throw Failure("This is a 64-bit Windows; trevikv.sys is a driver for a 32-bit one. "
                      "Here virtual\\TrevikA.dll has the virtual cards.");
}

void TellRestart(bool restart)
{
    if (restart)
        std::printf("Restart the computer: a device was in use, or Windows wants it so.\n");
}

void CheckDevices()
{
    for (const InstalledCard &card : InstalledCards())
        if (card.problem != 0)
            throw Failure("The device of card " + card.card + " does not work (problem " +
                          std::to_string(card.problem) + " of the device manager).");
}

int Install(const char *list)
{
    CheckSystem();
    const CardList cards = ReadCards(list);
    const std::string inf = InfPath();
    bool restart = false;
    RemoveDevices(restart);
    unsigned count = 0;
    for (unsigned number = 0; number < cards.size(); ++number) {
        if (!cards[number])
            continue;
        MakeDevice(std::to_string(number) + (*cards[number] == trevik::virtual_card::Model::AC ? ":AC" : ":A"));
        ++count;
    }
    if (count != 0)
        InstallDriver(inf, restart);
    else
        CopyDriver(inf);
    CheckDevices();
    std::printf("Installed trevikv with %u card%s.\n", count, count == 1 ? "" : "s");
    TellRestart(restart);
    return done;
}

bool Nothing(const Remains &remains)
{
    return !remains.service && !remains.file && remains.inf.empty();
}

int Uninstall()
{
    CheckSystem();
    bool restart = false;
    const unsigned count = RemoveDevices(restart);
    if (count == 0 && Nothing(InstalledPackage())) {
        std::printf("trevikv was not installed.\n");
        return done;
    }
    RemovePackage();
    std::printf("Removed trevikv and %u card%s.\n", count, count == 1 ? "" : "s");
    TellRestart(restart);
    return done;
}

int Status()
{
    const Remains remains = InstalledPackage();
    const auto cards = InstalledCards();
    if (cards.empty() && Nothing(remains)) {
        std::printf("trevikv is not installed.\n");
        return not_installed;
    }
    for (const InstalledCard &card : cards)
        if (card.problem == 0)
            std::printf("card %s\n", card.card.c_str());
        else
            std::printf("card %s does not work (problem %u of the device manager)\n", card.card.c_str(),
                        card.problem);
    if (cards.empty())
        std::printf("no card\n");
    std::printf("service %s, driver file %s, installation data %s\n",
                remains.running   ? "running"
                : remains.service ? "installed"
                                  : "missing",
                remains.file ? "in place" : "missing", remains.inf.empty() ? "missing" : remains.inf.c_str());
    return done;
}

int Run(int count, char **arguments)
{
    const auto is = [&](int index, const char *word) {
        return index < count && std::strcmp(arguments[index], word) == 0;
    };
    if (is(1, "install") && count == 2)
        return Install("0:A");
    if (is(1, "install") && is(2, "--cards") && count == 4)
        return Install(arguments[3]);
    if (is(1, "uninstall") && count == 2)
        return Uninstall();
    if (is(1, "status") && count == 2)
        return Status();
    const bool asked = is(1, "--help");
    std::fputs(usage, asked ? stdout : stderr);
    return asked ? done : misused;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        return Run(count, arguments);
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "trevikv-setup: %s\n", failure.what());
        return failed;
    }
}
