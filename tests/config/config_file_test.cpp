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

std::string Word(std::uint32_t value)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i, value >>= 8)
        bytes += static_cast<char>(value);
    return bytes;
}

} // namespace

TEST_CASE_FIXTURE(StartedLibrary, "a saved file is the registers in their order, as a Windows text")
{
    const Folder folder;
    const std::string name = folder.file("Achse \xC3\xA4 1.cfg");
    // The twelve registers of the axes: bytes of each kind, 0x0A among them.
    const std::uint32_t registers[12][4] = {{1, 0x0D0A0D0A},    {2}, {3}, {4},  {5},  {6, 0, 0x1001},
                                            {7, 0, 0xFFFF0D00}, {8}, {9}, {10}, {11}, {12, 0, 0, 0x8000001A}};
    CHECK(TrevikA_backlash_comp_set(0, 2, 1, 10, 0x00C80A01) == TREVIK_OK);
    std::string bytes;
    std::uint32_t code = 0xDC;
    for (const auto &values : registers) {
        for (std::uint32_t axis = 0; axis < 4; ++axis) {
            driver.reg(axis, static_cast<Register>(code - 0x40)) = values[axis];
            bytes += Word(values[axis]);
        }
        code += code == 0xE2 ? 5 : 1;
    }
    bytes +=
        Word(1000) + Word(1000) + Word(0x00C80A01) + Word(1000) + Word(10 << 16); // the speeds, and who corrects
    driver.forget();
    CHECK(TrevikA_config_file_set(0, name.c_str()) == TREVIK_OK);

    std::string expected;
    for (const char byte : bytes)
        expected += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
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
        for (std::uint32_t any = 0xDC; any <= 0xEB; ++any)
            driver.reg(axis, static_cast<Register>(any - 0x40)) = 0x55555555;
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
    const std::string missing = folder.file("missing");
    const std::string directory = folder.path.string();
    Put(name, std::string(211, 'x'));
    for (const char *unreadable :
         {name.c_str(), missing.c_str(), directory.c_str(), static_cast<const char *>(nullptr)})
        CHECK(TrevikA_config_file_read(0, unreadable) == TREVIK_ERR_FILE);
    CHECK(driver.requests() == 0);
    CHECK((shadow(0).CorrectionSpeed == 1000 && shadow(3).BacklashEnabled == 0));
    for (const char *unwritable : {"", directory.c_str(), static_cast<const char *>(nullptr)})
        CHECK(TrevikA_config_file_set(0, unwritable) == TREVIK_ERR_FILE);
    if (std::filesystem::exists("/dev/full"))
        CHECK(TrevikA_config_file_set(0, "/dev/full") == TREVIK_ERR_FILE);
    Put(name, std::string(211, 'x') + "\r"); // its last byte is the carriage return itself
    CHECK(TrevikA_config_file_read(0, name.c_str()) == TREVIK_OK);
    CHECK(shadow(3).BacklashEnabled == 0x0D);
    Put(name, std::string(210, 'x') + "\r\n" + "x and more");
    CHECK(TrevikA_config_file_read(0, name.c_str()) == TREVIK_OK);
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
