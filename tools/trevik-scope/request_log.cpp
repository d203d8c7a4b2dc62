#include "trevik-scope/request_log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <stdexcept>

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
    static const std::regex write(R"(card \d+  write  axis \d+  (.+) = (\S+).*)");
    static const std::regex command(R"(card \d+  command axes \S+  (\S+).*)");
    std::vector<Write> writes;
    std::ifstream log(name_);
    log.seekg(read_to_);
    std::string line;
    std::smatch part;
    while (std::getline(log, line)) {
        read_to_ += static_cast<long>(line.size()) + 1;
        if (std::regex_match(line, part, write)) {
            writes.push_back({part[1], part[2]});
        } else if (std::regex_match(line, part, command)) {
            writes.push_back({part[1], ""});
        }
    }
    return writes;
}

} // namespace trevik_scope
