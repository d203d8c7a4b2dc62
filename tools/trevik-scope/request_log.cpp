#include "trevik-scope/request_log.h"

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace trevik_scope
{
namespace
{

constexpr const char *variable = "TREVIK_REQUEST_LOG";

// An empty file that is no other program's.
std::string NewFile()
{
    std::string name = (std::filesystem::temp_directory_path() / "trevik-scope-XXXXXX").string();
#ifdef _WIN32
    name.replace(name.size() - 6, 6, std::to_string(_getpid())); // the folder is this user's own
    const bool made = std::ofstream(name).good();
#else
    const int file = mkstemp(name.data());
    const bool made = file >= 0;
    close(file);
#endif
    if (!made) {
        throw std::runtime_error("cannot write a temporary file like " + name);
    }
    return name;
}

void SetVariable(const std::string &value)
{
#ifdef _WIN32
    _putenv_s(variable, value.c_str());
#else
    setenv(variable, value.c_str(), 1);
#endif
}

} // namespace

RequestLog::RequestLog()
{
    if (const char *wanted = std::getenv(variable); wanted != nullptr && *wanted != '\0') {
        name_ = wanted;
        return;
    }
    name_ = NewFile();
    own_ = true;
    SetVariable(name_);
}

RequestLog::~RequestLog()
{
    if (own_) {
        std::error_code ignored;
        std::filesystem::remove(name_, ignored);
    }
}

std::vector<Write> RequestLog::Take()
{
    std::vector<Write> writes;
    std::ifstream log(name_);
    log.seekg(read_to_);
    std::string line;
    while (std::getline(log, line)) {
        read_to_ += static_cast<long>(line.size()) + 1;
        std::istringstream words(line);
        std::string of_card, number, kind, of_axis, which, name, equals, value;
        words >> of_card >> number >> kind >> of_axis >> which >> name >> equals >> value;
        if (kind == "write" && equals == "=") {
            writes.push_back({name, value});
        } else if (kind == "command") {
            writes.push_back({name, ""});
        }
    }
    return writes;
}

} // namespace trevik_scope
