// The configuration file: its bytes, and what it does when they are not all there.
#include "support/started_library.h"

#include "platform/host/system.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace trevik;
using namespace trevik::test;

namespace
{

// A folder that goes when the test is over.
struct Folder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("trevik files " + std::to_string(host::ProcessId()));

    Folder() { std::filesystem::create_directory(path); }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string file(const char *name) const { return (path / name).string(); }
};

std::string Contents(const std::string &name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const std::string &name, const std::string &bytes)
{
    std::ofstream(name, std::ios::binary) << bytes;
}

std::string Bytes(std::initializer_list<int> bytes)
{
    std::string text;
    for (const int byte : bytes)
        text += static_cast<char>(byte);
    return text;
}

} // namespace

TEST_CASE_FIXTURE(StartedLibrary, "a saved file is the registers in their order, as a Windows text")
{
    const Folder folder;
    const std::string name = folder.file("Achse \xC3\xA4 1.cfg");
    // The twelve registers of axis 0 are 1 to 12, 0x0A among them; of the others 0 but for a byte of each kind.
    std::uint32_t value = 1;
    for (std::uint32_t code = 0xDC; code <= 0xE2; ++code)
        driver.reg(0, static_cast<Register>(code - 0x40)) = value++;
    for (std::uint32_t code = 0xE7; code <= 0xEB; ++code)
        driver.reg(0, static_cast<Register>(code - 0x40)) = value++;
    driver.reg(1, Register::SIGNAL_CONFIG1) = 0x0D0A0D0A;
    driver.reg(2, Register::VIBRATION_CONFIG) = 0xFFFF0D00;
    driver.reg(3, Register::COMPARATOR_DATA) = 0x8000001A;
    CHECK(TrevikA_backlash_comp_set(0, 2, 1, 10, 0x00C80A01) == TREVIK_OK);
    driver.reg(2, Register::MOTION_CONFIG) = 0x1001;
    driver.forget();
    CHECK(TrevikA_config_file_set(0, name.c_str()) == TREVIK_OK);

    const std::string four_zeros(4, '\0');
    const std::string eight = four_zeros + four_zeros;
    const std::string speed = Bytes({0xE8, 3, 0, 0});
    const std::string expected =
        Bytes({1, 0, 0, 0, 0x0D, 0x0A, 0x0D, 0x0D, 0x0A, 0x0D}) + eight +                     // SIGNAL_CONFIG1
        Bytes({2, 0, 0, 0}) + eight + four_zeros + Bytes({3, 0, 0, 0}) + eight + four_zeros + // and 2, HOME
        Bytes({4, 0, 0, 0}) + eight + four_zeros + Bytes({5, 0, 0, 0}) + eight +
        four_zeros +                                                                      // LIMIT, START_TRIGGER
        Bytes({6, 0, 0, 0}) + four_zeros + Bytes({0x01, 0x10, 0, 0}) + four_zeros +       // MOTION_CONFIG
        Bytes({7, 0, 0, 0}) + four_zeros + Bytes({0x00, 0x0D, 0xFF, 0xFF}) + four_zeros + // VIBRATION_CONFIG
        Bytes({8, 0, 0, 0}) + eight + four_zeros + Bytes({9, 0, 0, 0}) + eight + four_zeros + // SOFTLIMIT1, 2
        Bytes({0x0D, 0x0A, 0, 0, 0}) + eight + four_zeros +                                   // COMPARE_START_DATA
        Bytes({11, 0, 0, 0}) + eight + four_zeros +                                           // COMPARATOR_DATA_AUX
        Bytes({12, 0, 0, 0}) + eight + Bytes({0x1A, 0, 0, 0x80}) +                            // COMPARATOR_DATA
        speed + speed + Bytes({1, 0x0D, 0x0A, 0xC8, 0}) + speed + Bytes({0, 0, 0x0D, 0x0A, 0});
    CHECK(expected.size() == 212 + 5);
    CHECK(Contents(name) == expected);
    CHECK(driver.requests() == 48);

    // The byte 0x1A ends it for a reader: nothing is loaded.
    driver.forget();
    CHECK(TrevikA_config_file_read(0, name.c_str()) == TREVIK_ERR_FILE);
    CHECK(driver.requests() == 0);

    // Without it, every register and both shadows come back, in the same order.
    driver.reg(3, Register::COMPARATOR_DATA) = 0x80000019;
    TrevikA_config_file_set(0, name.c_str());
    shadow(2).start_up(2);
    driver.remember_writes();
    for (std::uint32_t axis = 0; axis < 4; ++axis)
        for (std::uint32_t code = 0xDC; code <= 0xEB; ++code)
            driver.reg(axis, static_cast<Register>(code - 0x40)) = 0x55555555;
    driver.forget();
    CHECK(TrevikA_config_file_read(0, name.c_str()) == TREVIK_OK);
    const std::string log = driver.log();
    CHECK(log.starts_with(
        "write  axis 0  SIGNAL_CONFIG1 = 0x00000001\nwrite  axis 1  SIGNAL_CONFIG1 = 0x0D0A0D0A\n"));
    CHECK(log.ends_with("write  axis 3  COMPARATOR_DATA = 2147483673\n"));
    CHECK((shadow(2).CorrectionSpeed == 0x00C80A01 && shadow(2).BacklashEnabled == 10));
    CHECK(driver.reg(0, Register::COMPARATOR_DATA) == 12);
    CHECK(driver.reg(2, Register::VIBRATION_CONFIG) == 0xFFFF0D00);
    CHECK(driver.reg(0, Register::COUNTER1) == 0x55555555); // not one of them
}

TEST_CASE_FIXTURE(StartedLibrary, "files that cannot be used change nothing; refusals report the last one")
{
    const Folder folder;
    const std::string name = folder.file("card.cfg");
    Put(folder.file("short"), std::string(211, 'x'));
    Put(folder.file("folded"), std::string(211, 'x') + "\r"); // its last byte is the carriage return itself
    Put(folder.file("exact"), std::string(210, 'x') + "\r\n" + "x and more");
    driver.forget();
    CHECK(TrevikA_config_file_read(0, folder.file("missing").c_str()) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_read(0, folder.path.string().c_str()) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_read(0, folder.file("short").c_str()) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_read(0, nullptr) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_set(0, nullptr) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_set(0, folder.path.string().c_str()) == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_set(0, "") == TREVIK_ERR_FILE);
    if (std::filesystem::exists("/dev/full"))
        CHECK(TrevikA_config_file_set(0, "/dev/full") == TREVIK_ERR_FILE);
    CHECK(TrevikA_config_file_set(16, name.c_str()) == TREVIK_ERR_CARD);
    driver.forget();
    CHECK((shadow(0).CorrectionSpeed == 1000 && shadow(3).BacklashEnabled == 0));
    CHECK(TrevikA_config_file_read(0, folder.file("folded").c_str()) == TREVIK_OK);
    CHECK(shadow(3).BacklashEnabled == 0x0D);
    CHECK(TrevikA_config_file_read(0, folder.file("exact").c_str()) == TREVIK_OK);
    CHECK((shadow(2).BacklashEnabled == 0x0A && shadow(3).BacklashEnabled == 'x'));

    // Without a card there is a file of zeros, and a load that reaches the shadows alone.
    shadow(0).BacklashEnabled = std::uint8_t{0};
    shadow(1).BacklashEnabled = std::uint8_t{7};
    Axis axis;
    REQUIRE(manager.checked(0, 1, axis) == Result::Ok);
    TrevikA_close();
    CHECK(TrevikA_config_file_set(0, name.c_str()) == TREVIK_ERR_HANDLE);
    CHECK(Contents(name).substr(0, 192) == std::string(192, '\0'));
    axis.shadow().BacklashEnabled = std::uint8_t{0};
    CHECK(TrevikA_config_file_read(0, name.c_str()) == TREVIK_ERR_HANDLE);
    CHECK(axis.shadow().BacklashEnabled == 7);
}
