#include "trevik-run/interpreter.h"

#include <algorithm>
#include <cmath>

#include "trevik-run/arc_words.h"
#include "trevik-run/gcodes.h"
#include "trevik-run/lexer.h"

namespace trevik_run
{
namespace
{

constexpr double mm_per_inch = 25.4;
constexpr double longest_dwell_s = 86400;

enum class Motion : std::uint8_t { none, rapid, feed, arc_clockwise, arc_counter };

bool IsArc(Motion motion)
{
    return motion == Motion::arc_clockwise || motion == Motion::arc_counter;
}

// What one block says, before anything of it is done.
struct Block {
    std::array<Word, axis_count> axis;
    std::array<bool, axis_count> has_axis{};
    bool any_axis = false;
    Word feed;                  // letter 0: none
    Word dwell;                 // P
    std::array<Word, 2> center; // I, J
    Word radius;                // R
    Word action;                // the G word of the motion group: G0 to G4, G28
    Word offset;                // G92, G92.1
    Word machine;               // G53
    GAction do_action = GAction::none;
    GAction do_offset = GAction::none;
    GAction units = GAction::none;
    GAction distance = GAction::none;
    GAction arc_distance = GAction::none;
    std::uint32_t groups = 0; // bits of the groups seen
    bool cancel = false;      // G80: no motion mode, unless the block gives one
    bool path_mode = false;   // G64, which may carry a P
    bool program_end = false;
    bool any_word = false;

    // Of an arc: letter 0 where there is none.
    const Word &FirstArcWord() const
    {
        return center[0].letter != 0 ? center[0] : center[1].letter != 0 ? center[1] : radius;
    }
};

class Interpreter
{
  public:
    Interpreter(std::string_view text, const ReaderOptions &options)
        : lexer_(text), options_(options), position_(options.start)
    {
        program_.start = options.start;
        // A line of CAM output is rarely shorter than this; one allocation instead of twenty.
        program_.moves.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 2);
    }

    Program Run();

  private:
    bool ReadLine();
    void ReadBlock(Block &block);
    void TakeWord(Block &block, const Word &word);
    void TakeAxis(Block &block, int axis, const Word &word) const;
    void TakeK(const Word &word) const;
    void TakeG(Block &block, const Word &word);
    void TakeM(Block &block, const Word &word) const;
    void TakeOnce(Word &slot, const Word &word, const char *repeated) const;
    void Apply(const Block &block);
    void ApplyModes(const Block &block);
    void ApplyFeed(const Word &feed);
    void ApplyOffset(const Block &block);
    void ApplyDwell(const Block &block);
    void ApplyHome(const Block &block);
    void ApplyMotion(const Block &block);
    void ApplyArc(const Block &block, const Word &word);
    ArcEnds EndsOf(const Block &block, const Vec4 &target) const;
    Motion MotionOf(const Block &block) const;
    void CheckAlone(const Block &block) const;
    void CheckFeed(const Word &word) const;
    void AddMove(const Vec4 &target, bool rapid, const Word &word);
    Vec4 Target(const Block &block, bool machine) const;
    double Scaled(int axis, double value) const { return axis == angular_axis ? value : value * unit_mm_; }

    Lexer lexer_;
    ReaderOptions options_;
    Program program_;
    Vec4 position_; // machine coordinates, mm and degrees
    Vec4 offset_{}; // machine minus program coordinates (G92)
    double unit_mm_ = 1;
    double feed_mm_ = 0;      // mm/min
    double feed_degrees_ = 0; // the same word, for moves of A alone
    Motion motion_ = Motion::none;
    bool relative_ = false;
    bool arc_relative_ = true; // I and J count from the arc's beginning (G91.1)
    bool first_block_seen_ = false;
    bool ended_ = false;
};

Program Interpreter::Run()
{
    while (!ended_ && lexer_.NextLine()) {
        ended_ = !ReadLine();
    }
    program_.lines = lexer_.Line();
    return std::move(program_);
}

// False when the program ends on this line.
bool Interpreter::ReadLine()
{
    if (lexer_.TakeLeading('%')) { // the first one opens the program, a later one ends it
        const bool opens = !first_block_seen_;
        first_block_seen_ = true;
        lexer_.SkipLine();
        return opens;
    }
    if (lexer_.TakeLeading('/') && options_.block_delete) {
        lexer_.SkipLine();
        return true;
    }
    Block block;
    ReadBlock(block);
    if (!block.any_word) {
        return true;
    }
    first_block_seen_ = true;
    Apply(block);
    return !block.program_end;
}

void Interpreter::ReadBlock(Block &block)
{
    Word word;
    while (lexer_.NextWord(word)) {
        block.any_word = true;
        TakeWord(block, word);
    }
}

void Interpreter::TakeWord(Block &block, const Word &word)
{
    switch (word.letter) {
    case 'X':
        return TakeAxis(block, 0, word);
    case 'Y':
        return TakeAxis(block, 1, word);
    case 'Z':
        return TakeAxis(block, 2, word);
    case 'A':
        return TakeAxis(block, 3, word);
    case 'G':
        return TakeG(block, word);
    case 'M':
        return TakeM(block, word);
    case 'F':
        return TakeOnce(block.feed, word, "a second F word in this block; keep one");
    case 'P':
        return TakeOnce(block.dwell, word, "a second P word in this block; keep one");
    case 'H': // tool length, of which there is no table
    case 'N': // block number
    case 'O': // program number
    case 'S': // spindle speed
    case 'T': // tool
        return;
    case 'B':
    case 'C':
    case 'U':
    case 'V':
    case 'W':
        lexer_.Fail(word, "there is no such axis; the axes are X, Y, Z and A");
    case 'I':
        return TakeOnce(block.center[0], word, "a second I word in this block; keep one");
    case 'J':
        return TakeOnce(block.center[1], word, "a second J word in this block; keep one");
    case 'K':
        return TakeK(word);
    case 'R':
        return TakeOnce(block.radius, word, "a second R word in this block; keep one");
    case 'D':
        lexer_.Fail(word, "belongs to tool compensation, which is not supported; remove it");
    default:
        lexer_.Fail(word, "unknown word; remove it");
    }
}

void Interpreter::TakeAxis(Block &block, int axis, const Word &word) const
{
    const auto index = static_cast<std::size_t>(axis);
    if (block.has_axis[index]) {
        lexer_.Fail(word, "this axis stands twice in the block; keep one");
    }
    block.has_axis[index] = true;
    block.axis[index] = word;
    block.any_axis = true;
}

void Interpreter::TakeOnce(Word &slot, const Word &word, const char *repeated) const
{
    if (slot.letter != 0) {
        lexer_.Fail(word, repeated);
    }
    slot = word;
}

// Some post-processors write a K of 0 in the XY plane, where it has no meaning.
void Interpreter::TakeK(const Word &word) const
{
    if (word.value != 0) {
        lexer_.Fail(word, "belongs to arcs of other planes; only the XY plane is supported (G17)");
    }
}

void Interpreter::TakeG(Block &block, const Word &word)
{
    const double tenths = word.value * 10;
    const int number = tenths >= 0 && tenths < 10000 ? static_cast<int>(std::lround(tenths)) : -1;
    const GCode *code = std::abs(number - tenths) < 1e-6 ? FindGCode(number) : nullptr;
    if (code == nullptr) {
        lexer_.Fail(word, "this G word is not supported; remove it or choose another post-processor");
    }
    if (code->action == GAction::refuse) {
        lexer_.Fail(word, code->reason);
    }
    const std::uint32_t group_bit = code->group == GGroup::none ? 0U : 1U << static_cast<unsigned>(code->group);
    if ((block.groups & group_bit) != 0) {
        lexer_.Fail(word, code->group == GGroup::motion
                              ? "a second motion word in this block; put it on its own line"
                              : "contradicts an earlier G word of this block; keep one");
    }
    block.groups |= group_bit;
    switch (code->group) {
    case GGroup::motion:
        block.action = word;
        block.do_action = code->action;
        break;
    case GGroup::offset:
        block.offset = word;
        block.do_offset = code->action;
        break;
    case GGroup::units:
        block.units = code->action;
        break;
    case GGroup::distance:
        block.distance = code->action;
        break;
    case GGroup::arc_distance:
        block.arc_distance = code->action;
        break;
    case GGroup::path_mode:
        block.path_mode = true;
        break;
    default:
        if (code->action == GAction::machine_coordinates) {
            block.machine = word;
        }
        block.cancel = block.cancel || code->action == GAction::motion_cancel;
    }
}

void Interpreter::TakeM(Block &block, const Word &word) const
{
    if (word.value == 98 || word.value == 99) {
        lexer_.Fail(word, "subprograms are not supported; have the program written out in one piece");
    }
    if (word.value == 2 || word.value == 30) {
        block.program_end = true;
    }
}

void Interpreter::Apply(const Block &block)
{
    ApplyModes(block);
    CheckAlone(block);
    if (block.do_offset != GAction::none) {
        ApplyOffset(block);
        return;
    }
    switch (block.do_action) {
    case GAction::dwell:
        return ApplyDwell(block);
    case GAction::home:
        return ApplyHome(block);
    default:
        motion_ = MotionOf(block);
        return ApplyMotion(block);
    }
}

// The motion mode of a block without G4 and G28.
Motion Interpreter::MotionOf(const Block &block) const
{
    switch (block.do_action) {
    case GAction::motion_rapid:
        return Motion::rapid;
    case GAction::motion_feed:
        return Motion::feed;
    case GAction::motion_arc_clockwise:
        return Motion::arc_clockwise;
    case GAction::motion_arc_counter:
        return Motion::arc_counter;
    default:
        return block.cancel ? Motion::none : motion_;
    }
}

// Words that need another word, or exclude one.
void Interpreter::CheckAlone(const Block &block) const
{
    if (block.dwell.letter != 0 && block.do_action != GAction::dwell && !block.path_mode) {
        lexer_.Fail(block.dwell, "belongs to G4 or G64, and neither stands in this block");
    }
    if (block.do_offset != GAction::none && block.action.letter != 0) {
        lexer_.Fail(block.offset, "shares its axis words with a motion word; put it on its own line");
    }
    const bool other =
        block.do_action == GAction::dwell || block.do_action == GAction::home || block.do_offset != GAction::none;
    const Motion motion = other ? Motion::none : MotionOf(block);
    if (block.machine.letter != 0 && motion != Motion::rapid && motion != Motion::feed) {
        lexer_.Fail(block.machine, "goes only with G0 or G1; write one of them on this line");
    }
    if (const Word &word = block.FirstArcWord(); word.letter != 0 && !IsArc(motion)) {
        lexer_.Fail(word, "belongs to an arc; write G2 or G3 before it");
    }
}

void Interpreter::ApplyModes(const Block &block)
{
    if (block.units != GAction::none) {
        unit_mm_ = block.units == GAction::inches ? mm_per_inch : 1;
    }
    if (block.distance != GAction::none) {
        relative_ = block.distance == GAction::relative;
    }
    if (block.arc_distance != GAction::none) {
        arc_relative_ = block.arc_distance == GAction::arc_relative;
    }
    if (block.feed.letter != 0) {
        ApplyFeed(block.feed);
    }
}

void Interpreter::ApplyFeed(const Word &feed)
{
    if (!(feed.value > 0)) {
        lexer_.Fail(feed, "the feed must be above 0");
    }
    feed_mm_ = feed.value * unit_mm_;
    feed_degrees_ = feed.value;
}

void Interpreter::ApplyOffset(const Block &block)
{
    if (block.do_offset == GAction::offset_clear) {
        offset_ = {};
        return;
    }
    if (!block.any_axis) {
        lexer_.Fail(block.offset, "needs at least one axis word: what the position shall be called");
    }
    for (int axis = 0; axis < axis_count; ++axis) {
        const auto i = static_cast<std::size_t>(axis);
        if (block.has_axis[i]) {
            offset_[i] = position_[i] - Scaled(axis, block.axis[i].value);
        }
    }
}

void Interpreter::ApplyDwell(const Block &block)
{
    if (block.any_axis) {
        lexer_.Fail(block.action, "takes P and no axis words; put the move on its own line");
    }
    if (block.dwell.letter == 0) {
        lexer_.Fail(block.action, "needs a P word: the seconds to wait");
    }
    if (block.dwell.value < 0) {
        lexer_.Fail(block.dwell, "a time below 0; write the seconds to wait");
    }
    if (block.dwell.value > longest_dwell_s) {
        lexer_.Fail(block.dwell, "more than a day; P counts seconds, not milliseconds");
    }
    Move move;
    move.target = position_;
    move.kind = MoveKind::dwell;
    move.rate = static_cast<float>(block.dwell.value);
    move.line = lexer_.Line();
    program_.moves.push_back(move);
}

// With axis words these axes go through the given point to machine zero, and the others stay: a program that lifts
// the tool with G91 G28 Z0 must not move X and Y. Without axis words all axes go.
void Interpreter::ApplyHome(const Block &block)
{
    Vec4 home = position_;
    if (block.any_axis) {
        AddMove(Target(block, false), true, block.action);
    }
    for (std::size_t axis = 0; axis < axis_count; ++axis) {
        if (block.has_axis[axis] || !block.any_axis) {
            home[axis] = 0;
        }
    }
    AddMove(home, true, block.action);
}

void Interpreter::ApplyMotion(const Block &block)
{
    const Word &arc_word = block.FirstArcWord();
    if (!block.any_axis && arc_word.letter == 0) {
        return;
    }
    const auto first = std::find(block.has_axis.begin(), block.has_axis.end(), true) - block.has_axis.begin();
    const Word &word = block.action.letter != 0 ? block.action
                       : block.any_axis         ? block.axis[static_cast<std::size_t>(first)]
                                                : arc_word;
    if (motion_ == Motion::none) {
        lexer_.Fail(word, "an axis word without a motion mode; write G0 or G1 before it");
    }
    if (IsArc(motion_)) {
        return ApplyArc(block, word);
    }
    AddMove(Target(block, block.machine.letter != 0), motion_ == Motion::rapid, word);
}

void Interpreter::ApplyArc(const Block &block, const Word &word)
{
    if (block.has_axis[angular_axis]) {
        lexer_.Fail(block.axis[angular_axis], "A cannot turn along an arc; turn it in a block of its own");
    }
    if (block.FirstArcWord().letter == 0) {
        lexer_.Fail(word, "an arc needs its center (I, J) or its radius (R)");
    }
    CheckFeed(word);
    const Vec4 target = Target(block, false);
    Arc arc;
    if (const std::string wrong = MakeArc(EndsOf(block, target), options_.arc_tolerance_mm, arc); !wrong.empty()) {
        lexer_.Fail(block.FirstArcWord(), wrong.c_str());
    }
    const auto index = static_cast<std::uint32_t>(program_.arcs.size());
    program_.arcs.push_back(arc);
    AddMove(target, false, word);
    program_.moves.back().arc = index;
    program_.moves.back().rate = static_cast<float>(feed_mm_);
}

ArcEnds Interpreter::EndsOf(const Block &block, const Vec4 &target) const
{
    ArcEnds ends;
    ends.clockwise = motion_ == Motion::arc_clockwise;
    for (std::size_t i = 0; i < 2; ++i) {
        const Word &word = block.center[i];
        ends.from[i] = position_[i];
        ends.to[i] = target[i];
        ends.center[i] = word.value * unit_mm_ + (arc_relative_ ? position_[i] : offset_[i]);
    }
    if (block.radius.letter != 0) {
        if (block.center[0].letter != 0 || block.center[1].letter != 0) {
            lexer_.Fail(block.radius, "a radius and a center in one block; keep one of them");
        }
        ends.radius = block.radius.value * unit_mm_;
        ends.by_radius = true;
    } else if (!arc_relative_ && (block.center[0].letter == 0 || block.center[1].letter == 0)) {
        lexer_.Fail(block.FirstArcWord(), "with absolute centers (G90.1) an arc needs both I and J");
    }
    return ends;
}

void Interpreter::CheckFeed(const Word &word) const
{
    if (feed_mm_ == 0) {
        lexer_.Fail(word, "a feed move without a feed; write an F word on this line or before it");
    }
}

Vec4 Interpreter::Target(const Block &block, bool machine) const
{
    Vec4 target = position_;
    for (int axis = 0; axis < axis_count; ++axis) {
        const auto i = static_cast<std::size_t>(axis);
        if (block.has_axis[i]) {
            const double value = Scaled(axis, block.axis[i].value);
            target[i] = machine ? value : value + (relative_ ? position_[i] : offset_[i]);
        }
    }
    return target;
}

void Interpreter::AddMove(const Vec4 &target, bool rapid, const Word &word)
{
    Move move;
    move.target = target;
    move.line = lexer_.Line();
    if (!rapid) {
        const bool linear = target[0] != position_[0] || target[1] != position_[1] || target[2] != position_[2];
        CheckFeed(word);
        move.kind = MoveKind::feed;
        move.rate = static_cast<float>(linear ? feed_mm_ : feed_degrees_);
    }
    position_ = target;
    program_.moves.push_back(move);
}

} // namespace

Program ReadProgram(std::string_view text, const ReaderOptions &options)
{
    return Interpreter(text, options).Run();
}

} // namespace trevik_run
