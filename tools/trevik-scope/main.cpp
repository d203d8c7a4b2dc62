// trevik-scope: makes one move on a virtual card and draws it.
#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>

#include "shared/file.h"
#include "trevik-scope/drawing.h"
#include "trevik-scope/options.h"
#include "trevik-scope/ramps.h"
#include "trevik-scope/summary.h"

namespace trevik_scope
{
namespace
{

enum ExitStatus : std::uint8_t { done = 0, failed = 1 };

int Complain(const std::string &what)
{
    fmt::print(stderr, "trevik-scope: {}\n", what);
    return failed;
}

bool WriteFile(const std::string &name, const std::string &text)
{
    const trevik_tools::File file(std::fopen(name.c_str(), "wb"));
    return file && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
           std::fflush(file.get()) == 0;
}

std::string CsvText(const Recording &recording)
{
    std::string text = "time_s,position_pulses,speed_pps\n";
    for (const Sample &sample : recording.samples) {
        text += fmt::format("{:.9f},{:.0f},{:.3f}\n", sample.time_s, sample.position, sample.speed_pps);
    }
    return text;
}

int Run(const Options &options)
{
    RequestLog log;
    const Recording recording = Record(options.motion, log);
    if (!recording.failed_call.empty()) {
        return Complain(FailureText(recording));
    }
    const std::vector<RegisterGroup> registers = RegisterTable(recording);
    if (!WriteFile(options.svg, DrawSvg(options.motion, recording, registers))) {
        return Complain(fmt::format("cannot write {}: {}", options.svg, std::strerror(errno)));
    }
    if (!options.csv.empty() && !WriteFile(options.csv, CsvText(recording))) {
        return Complain(fmt::format("cannot write {}: {}", options.csv, std::strerror(errno)));
    }
    fmt::print("{}drawn in {}\n", SummaryText(options.motion, recording, registers), options.svg);
    return done;
}

} // namespace
} // namespace trevik_scope

int main(int argc, char **argv)
{
    trevik_scope::Options options;
    int status = 0;
    try {
        if (!trevik_scope::ParseOptions(argc, argv, options, status)) {
            return status;
        }
        return trevik_scope::Run(options);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trevik-scope: %s\n", error.what());
        return trevik_scope::failed;
    }
}
