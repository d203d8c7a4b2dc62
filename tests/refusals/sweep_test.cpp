// Every exported function, and each of its requests refused in turn: what it returns, sends, writes and remembers then.
//
// A refused write, command or port changes nothing but the result. A refused read is as good as one that is answered
// with the value that counts instead (0, unless the letter of the request says otherwise), but for what the letter
// adds. The table says which letter; the rules stand in `expect`.
#include "refusals/table.h"
#include "support/captured_output.h"
#include "support/started_library.h"

#include "driver/patience.h"
#include "platform/host/handles.h"
#include "platform/host/system.h"
#include "status/interrupts.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace trevik::test
{

// 0: saved to, 1: loaded from.
const char *FileOf(double number)
{
    static const std::string stem = std::filesystem::temp_directory_path().string() + "/trevik sweep " +
                                    std::to_string(host::ProcessId()) + " ";
    static const std::array<std::string, 2> names{stem + "0", stem + "1"};
    return names[static_cast<std::size_t>(number)].c_str();
}

void TREVIK_CALL NoCallback(std::uint32_t) {}

} // namespace trevik::test

using namespace trevik;
using namespace trevik::test;

namespace
{

constexpr std::uint32_t error = 31;
constexpr std::uint32_t target_before = 1000; // of every axis
constexpr std::uint32_t position = 990;
constexpr std::int32_t base_before = 5;

// clang-format off
#define TREVIK_SHADOW_FIELDS(X)                                                                                    \
    X(FixedMultiplier)                                                                                             \
    X(RangeFixed)                                                                                                  \
    X(ModeWord)                                                                                                    \
    X(ContinuousFlag)                                                                                              \
    X(LastTarget)                                                                                                  \
    X(BacklashEnabled) X(CorrectionSpeed) X(MoveIssued) X(ShortfallPending) X(LastMoveWasArc) X(ArcShortfall)      \
        X(IrqSourceShadow) X(PulserEnabled) X(PulserRatio) X(PulserMap) X(PulserBase) X(PulserDirection)           \
            X(PulserHistory[0]) X(PulserHistory[1]) X(PulserHistory[4]) X(PulserTarget) X(PulserLastSpeed)         \
                X(PulserUnsettled)
// clang-format on

// What came of a call.
struct Outcome {
    std::map<std::string, std::int64_t> values; // the result, what was handed out, what the library remembers
    std::vector<RawRequest> trace;
    std::string file;
    std::string log;

    std::int64_t &operator[](const std::string &name) { return values[name]; }
    std::int64_t &of(std::uint32_t axis, const char *field)
    {
        return values["axis " + std::to_string(axis) + " " + field];
    }
};

constexpr const char *handles_left = "handles left open";

std::string OutValue(int number)
{
    return "out-value " + std::to_string(number);
}

ControlCode CodeOf(const RawRequest &request)
{
    return static_cast<ControlCode>(request.code);
}
std::uint32_t WordOf(const RawRequest &request, std::size_t offset)
{
    return GetField<std::uint32_t>(request.in.data(), offset);
}

bool IsRead(const RawRequest &request)
{
    const ControlCode code = CodeOf(request);
    return code == ControlCode::IOCTL_REG_READ || code == ControlCode::IOCTL_PORT_READ ||
           code == ControlCode::IOCTL_INDEX_READ || code == ControlCode::IOCTL_IRQ_STATUS;
}
// Registers and index registers report, ports, commands and interrupt requests do not.
bool Reports(const RawRequest &request)
{
    const ControlCode code = CodeOf(request);
    return code == ControlCode::IOCTL_REG_READ || code == ControlCode::IOCTL_REG_WRITE ||
           code == ControlCode::IOCTL_INDEX_READ || code == ControlCode::IOCTL_INDEX_WRITE;
}
bool IsPositionRead(const RawRequest &request)
{
    return CodeOf(request) == ControlCode::IOCTL_REG_READ && WordOf(request, 4) == ReadCode(Register::COUNTER1);
}

bool Same(const RawRequest &a, const RawRequest &b)
{
    return a.code == b.code && a.out_size == b.out_size &&
           (CodeOf(a) == ControlCode::IOCTL_IRQ_LINK || a.in == b.in); // an event is another one each time
}

char LetterOf(std::string_view letters, std::size_t request)
{
    if (letters.ends_with('*') && request >= letters.size() - 1)
        return letters[letters.size() - 2];
    return request < letters.size() ? letters[request] : '.';
}
bool HasAny(std::string_view letters, const char *wanted)
{
    return letters.find_first_of(wanted) != letters.npos;
}

// Targets as the moves re-base them: once for each position that was read.
struct Rebased {
    std::int64_t target = target_before;
    std::int64_t pending = 0;
    std::int64_t shortfall = 3;

    Rebased(const std::vector<RawRequest> &trace, std::size_t end, std::uint32_t axis, std::size_t refused)
    {
        for (std::size_t i = 0; i < end; ++i)
            if (i != refused && IsPositionRead(trace[i]) && WordOf(trace[i], 0) == axis) {
                pending = 1;
                shortfall = static_cast<std::uint32_t>(target - position);
                target = position;
            }
    }
};

std::string Difference(const Outcome &expected, const Outcome &got)
{
    std::ostringstream text;
    for (const auto &[name, value] : expected.values)
        if (const std::int64_t other = got.values.at(name); other != value)
            text << name << " " << other << ", not " << value << "\n";
    const auto [mine, others] =
        std::mismatch(expected.trace.begin(), expected.trace.end(), got.trace.begin(), got.trace.end(), Same);
    if (mine != expected.trace.end() || others != got.trace.end())
        text << "other requests from number " << mine - expected.trace.begin() << " on\n";
    if (expected.file != got.file)
        text << "another file\n";
    return text.str();
}

struct Sweep {
    RecordingDriver driver{{{"A", 0, 0x1234, model_word_A, 0}, {"AC", 1, 0x5678, model_word_AC, 0}}};
    Card card;
    std::size_t refusals = 0;

    Sweep()
    {
        TrevikHost_clock_manual(1);
        REQUIRE(Quietly(TrevikA_initial) == TREVIK_OK);
        manager.StopPulserTicks();
        REQUIRE(manager.checked(0, card) == Result::Ok);
        for (std::uint32_t axis = 0; axis < axis_count; ++axis) {
            for (std::uint32_t code = 0x80; code <= 0xBC; ++code) // no value is 0, and none like another
                driver.reg(axis, static_cast<Register>(code)) = (code << 8 | axis) * 0x10001;
            driver.reg(axis, Register::COUNTER1) = position;
            driver.reg(axis, Register::COUNTER4) = 25 + axis;
            driver.reg(axis, Register::MAX_SPEED) = 40000 + axis;
            driver.reg(axis, Register::S_ACCEL_RANGE) = 400;
            driver.reg(axis, Register::S_DECEL_RANGE) = 500;
            driver.reg(axis, Register::MODE) = 0x1000008;
            driver.reg(axis, StatusRegister::REMAINING) = 77 + axis;
            driver.reg(axis, StatusRegister::EXT_STATUS) = 0xFFFFFFFF;
            driver.port(SubStatusPort(axis)) = 0x7F7F;
            for (std::uint32_t index = 0; index < 256; ++index)
                driver.index(axis, index) = static_cast<std::uint16_t>(index + 1);
        }
        driver.snapshot().fill(0x55);
        for (const Port port : {Port::Timer1High, Port::Timer1Low, Port::InterruptState})
            driver.port(static_cast<std::uint32_t>(port)) = 0x2345;
        REQUIRE(TrevikA_config_file_set(0, FileOf(1)) == TREVIK_OK);
    }
    ~Sweep()
    {
        card.state().Axes = {}; // as loaded: start-up does not reset all of it
        card.state().CompareStartAxis = std::uint8_t{0};
        std::filesystem::remove(FileOf(0));
        std::filesystem::remove(FileOf(1));
        TrevikHost_clock_manual(0);
    }
    Sweep(const Sweep &) = delete;
    Sweep &operator=(const Sweep &) = delete;

    // All axes stand idle, moved before, and away from their targets. Otherwise:
    //   b  they move     q  they move in continuous mode     n  axis 3 was not moved
    //   r  speed ranges fixed    s  S-curve    l  backlash correction    w  the last move was an arc
    //   e  axis 1 follows the handwheel of axis 3     U  but not yet
    void reset(std::string_view state)
    {
        const auto is = [&](char letter) { return state.find(letter) != state.npos; };
        for (std::uint8_t n = 0; n < axis_count; ++n) {
            AxisShadow &shadow = card.axis(n).shadow();
            shadow.start_up(n);
            shadow.LastTarget = target_before;
            shadow.ArcShortfall = 3;
            shadow.MoveIssued = std::uint8_t{n < 3 || !is('n')};
            shadow.RangeFixed = is('r');
            shadow.ContinuousFlag = std::uint8_t{is('q')};
            shadow.ModeWord = is('s') ? 0x1000441u : 0x1000041u;
            shadow.BacklashEnabled = std::uint8_t{is('l')};
            shadow.LastMoveWasArc = std::uint8_t{is('w')};
            shadow.PulserEnabled = std::uint8_t{is('e') && n == 1};
            shadow.PulserMap = std::uint8_t{3};
            shadow.PulserRatio = std::uint16_t{2};
            shadow.PulserBase = base_before;
            shadow.PulserDirection = 1;
            shadow.PulserHistory = {10, 20, 30, 40, 50};
            shadow.PulserTarget = 6000;
            shadow.PulserLastSpeed = 700;
            shadow.PulserUnsettled = is('U');
            driver.port(MainStatusPort(n)) = is('b') || is('q') ? 0x1300 : 0x1308;
        }
        card.state().IrqIdle = std::uint8_t{1};
        card.state().CompareStartAxis = std::uint8_t{2};
        card.state().IrqEvent = nullptr;
    }

    void remember(Outcome &outcome) const
    {
        for (std::uint32_t n = 0; n < axis_count; ++n) {
            const AxisShadow &shadow = card.state().Axes[n];
#define TREVIK_NOTE(field) outcome.of(n, #field) = std::int64_t{shadow.field};
            TREVIK_SHADOW_FIELDS(TREVIK_NOTE)
        }
        outcome["IrqIdle"] = card.state().IrqIdle;
        outcome["CompareStartAxis"] = card.state().CompareStartAxis;
    }

    // The call, from the state of its rule. `arrange` sets up what the driver is to do.
    template <class Arrange>
    Outcome run(const Call &call, Arrange arrange)
    {
        reset(call.rule.state);
        driver.forget();
        arrange();
        Outcome outcome;
        const std::size_t handles = host::OpenHandleCount();
        Outs outs;
        outcome["result"] = call.function->call(call.arguments, outs);
        for (int number = 0; number < 5; ++number)
            outcome[OutValue(number)] = outs.cell(static_cast<std::size_t>(number));
        remember(outcome);
        // What a link or an enabling leaves to the application, another one each time, is looked at and put away.
        JoinCallbacks(card);
        if (const os::HANDLE event = card.state().IrqEvent; event != nullptr) {
            outcome[OutValue(0)] = outcome[OutValue(0)] == HandleNumber(event);
            os::CloseHandle(event);
        }
        outcome[handles_left] = static_cast<std::int64_t>(host::OpenHandleCount() - handles);
        outcome.trace = driver.raw();
        outcome.log = driver.log();
        if (std::ifstream file(FileOf(0), std::ios::binary); file && call.rule.letters == "p*")
            outcome.file.assign(std::istreambuf_iterator<char>(file), {});
        return outcome;
    }

    // What counts in the place of a read.
    std::uint32_t value_instead(char letter, const Outcome &clean, std::size_t request)
    {
        switch (letter) {
        case 'c':
        case 'C':
        case 'x':
            return static_cast<std::uint32_t>(
                Rebased(clean.trace, request, WordOf(clean.trace[request], 0), request).target);
        case 't':
        case 'u':
            return target_before;
        case 'h':
        case 'g':
            return static_cast<std::uint32_t>(base_before * Outcome(clean).of(1, "PulserDirection"));
        case 'v':
            return 0x41; // a position move
        case 'p':
            return request == 0 ? 0 : driver.register_of(clean.trace[request - 1]);
        default:
            return 0;
        }
    }

    // What must come of the call when a request is refused.
    Outcome expect(const Call &call, const Outcome &clean, std::size_t refused)
    {
        const Rule &rule = call.rule;
        const char letter = LetterOf(rule.letters, refused);
        const RawRequest &request = clean.trace[refused];
        Outcome expected = clean;
        if (IsRead(request)) {
            const std::uint32_t instead = value_instead(letter, clean, refused);
            expected = run(call, [&] { driver.reply(refused, instead); });
        }

        std::int64_t &result = expected["result"];
        result = Reports(request) && refused + 1 == expected.trace.size() ? error : rule.result;
        switch (letter) {
        case 'a':
        case 'v':
        case 'm':
            expected.trace = clean.trace; // and not one request more
            expected.trace.resize(refused + 1);
            result = letter == 'a' ? TREVIK_ERR_BUSY : letter == 'v' ? TREVIK_ERR_NOT_MOVING : TREVIK_OK;
            break;
        case 'C':
            expected.trace = clean.trace;
            expected.trace.resize(rule.letters.rfind('C') + 1);
            reset(rule.state);
            remember(expected);
            for (std::uint32_t axis = 0; axis < 2; ++axis) {
                const Rebased rebased(expected.trace, expected.trace.size(), axis, refused);
                expected.of(axis, "LastTarget") = rebased.target;
                expected.of(axis, "ShortfallPending") = rebased.pending;
                expected.of(axis, "ArcShortfall") = rebased.shortfall;
            }
            result = error;
            break;
        case 'x':
            result = rule.result;
            [[fallthrough]];
        case 'c': {
            // A relative move uses what the last arc fell short by only if that was measured.
            const std::uint32_t axis = WordOf(request, 0);
            const Rebased rebased(expected.trace, expected.trace.size(), axis, refused);
            std::int64_t &pending = expected.of(axis, "ShortfallPending");
            pending = std::min(pending, rebased.pending);
            expected.of(axis, "ArcShortfall") = rebased.shortfall;
            if (rule.state.find('w') != rule.state.npos && rebased.pending == 0)
                expected.of(axis, "LastMoveWasArc") = 1;
            break;
        }
        case 'h':
        case 'u':
            expected.of(1, "PulserUnsettled") = 1;
            break;
        case 'd':
            expected.trace.push_back(clean.trace[1]); // the axis's status once more
            break;
        case 'f':
            expected.of(1, "PulserBase") = base_before;
            break;
        case 'r':
            result = error;
            break;
        case 's':
            result = TREVIK_ERR_HANDLE;
            break;
        default:
            if (letter >= '0' && letter <= '4')
                expected[OutValue(letter - '0')] = 77;
        }
        if (rule.result != 0)
            result = rule.result;
        expected[handles_left] = 0;
        return expected;
    }

    // With nothing to be had from the driver at all, whoever has to ask whether it may move does not.
    std::string difference_without_driver(const Call &call)
    {
        const Rule &rule = call.rule;
        driver.refuse_all(error);
        const Outcome got = run(call, [] {});
        driver.refuse_all(0);
        Outcome expected = got;
        const bool reported = !got.trace.empty() && Reports(got.trace.back());
        expected["result"] = rule.result != 0                        ? rule.result
                             : HasAny(rule.letters, "a")             ? TREVIK_ERR_BUSY
                             : HasAny(rule.letters, "v")             ? TREVIK_ERR_NOT_MOVING
                             : HasAny(rule.letters, "s")             ? TREVIK_ERR_HANDLE
                             : HasAny(rule.letters, "r") || reported ? error
                                                                     : TREVIK_OK;
        expected[handles_left] = 0;
        std::string text = Difference(expected, got);
        if (HasAny(rule.letters, "av") && !std::all_of(got.trace.begin(), got.trace.end(), IsRead))
            text += "something was sent to an axis that may not move\n";
        return text;
    }

    static std::string describe(const Call &call)
    {
        std::ostringstream text;
        text << call.function->name << "(";
        for (std::size_t i = 0; i < most_parameters && !call.function->parameters[i].empty(); ++i)
            text << (i != 0 ? ", " : "") << call.function->parameters[i] << " " << call.arguments[i];
        text << ")" << (call.rule.state.empty() ? "" : ", state ") << call.rule.state;
        return text.str();
    }

    void sweep(const Call &call)
    {
        const auto compare = [&](const std::string &what, const Outcome &expected, const Outcome &got) {
            if (const std::string difference = Difference(expected, got); !difference.empty())
                FAIL_CHECK(describe(call) << what << ":\n"
                                          << difference << got.log << "expected:\n"
                                          << expected.log);
        };
        const Outcome clean = run(call, [] {});
        Outcome good = clean;
        good["result"] = call.rule.result;
        good[handles_left] = 0;
        compare("", good, clean);
        Call other = call;
        other.function = std::find_if(std::begin(exported), std::end(exported), [&](const Exported &function) {
            return function.name == call.function->counterpart;
        });
        compare(", as " + std::string(other.function->name), run(other, [] {}), clean);
        for (std::size_t refused = 0; refused < clean.trace.size(); ++refused, ++refusals) {
            const Outcome expected = expect(call, clean, refused);
            compare(", request " + std::to_string(refused) + " refused", expected,
                    run(call, [&] { driver.refuse(refused, error); }));
        }
        if (const std::string difference = difference_without_driver(call); !difference.empty())
            FAIL_CHECK(describe(call) << ", everything refused:\n" << difference);
    }
};

} // namespace

TEST_CASE("every request of every function, refused")
{
    const std::size_t threads = ThreadCount();
    {
        Sweep sweep;
        const std::vector<Call> calls = Calls();
        std::set<std::string_view> called;
        for (const Call &call : calls) {
            called.insert(call.function->name);
            sweep.sweep(call);
        }
        MESSAGE((called.size() - 1) << " functions and the tick, " << calls.size() << " calls, " << sweep.refusals
                                    << " refusals");
    }
    CHECK(HappensSoon([=] { return ThreadCount() <= threads; }));
    CHECK(host::OpenHandleCount() == 0);
}
