#include "trevik-scope/request_log.h"

#include <unistd.h>

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

} // namespace

RequestLog::RequestLog()
{
    if (const char *wanted = std::getenv(variable); wanted != nullptr && *wanted != '\0') {
        name_ = wanted;
        return;
    }
    name_ = (std::filesystem::temp_directory_path() / "trevik-scope-XXXXXX").string();
    const int file = mkstemp(name_.data());
    if (file < 0) {
        throw std::runtime_error("cannot write a temporary file like " + name_);
    }
    close(file);
    own_ = true;
    setenv(variable, name_.c_str(), 1);
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
        std::string card, number, kind, axis, which, name, equals, value;
        words >> card >> number >> kind >> axis >> which >> name >> equals >> value;
        if (kind == "write" && equals == "=") {
            writes.push_back({name, value});
        } else if (kind == "command") {
            writes.push_back({name, ""});
        }
    }
    return writes;
}

} // namespace trevik_scope
