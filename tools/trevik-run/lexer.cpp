#include "trevik-run/lexer.h"

#include <array>

namespace trevik_run
{
namespace
{

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr int max_digits = 18; // what an unsigned 64-bit mantissa holds
constexpr std::array<double, max_digits + 1> powers_of_ten = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};

} // namespace

Lexer::Lexer(std::string_view text)
{
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.substr(0, byte_order_mark.size()) == byte_order_mark) {
        text.remove_prefix(byte_order_mark.size());
    }
    at_ = text.data();
    end_ = text.data() + text.size();
}

bool Lexer::NextLine()
{
    if (line_ > 0) {
        SkipLine();
        if (at_ < end_) {
            ++at_; // the line feed
        }
    }
    if (at_ == end_) {
        return false;
    }
    ++line_;
    line_begin_ = at_;
    return true;
}

void Lexer::SkipLine()
{
    while (at_ < end_ && *at_ != '\n') {
        ++at_;
    }
}

void Lexer::SkipBlanks()
{
    while (at_ < end_ && IsBlank(*at_)) {
        ++at_;
    }
}

bool Lexer::TakeLeading(char character)
{
    SkipBlanks();
    if (at_ == end_ || *at_ != character) {
        return false;
    }
    ++at_;
    return true;
}

void Lexer::SkipComment()
{
    const char *const begin = at_;
    do {
        ++at_;
    } while (at_ < end_ && *at_ != ')' && *at_ != '(' && *at_ != '\n');
    if (at_ < end_ && *at_ == '(') {
        Fail({.column = Column(at_), .text = {at_, 1}}, "a comment within a comment; remove the inner parentheses");
    }
    if (at_ == end_ || *at_ == '\n') {
        Fail({.column = Column(begin), .text = Trimmed(begin, at_)}, "the comment is not closed; end it with )");
    }
    ++at_;
}

bool Lexer::NextWord(Word &word)
{
    for (;;) {
        SkipBlanks();
        if (at_ == end_ || *at_ == '\n') {
            return false;
        }
        if (*at_ == ';') {
            SkipLine();
            return false;
        }
        if (*at_ != '(') {
            break;
        }
        SkipComment();
    }
    const char *const begin = at_;
    word.letter = Upper(*at_++);
    word.column = Column(begin);
    word.text = {begin, 1};
    if (word.letter == '#' || word.letter == '[') {
        Fail(word, "parameters and expressions are not supported; write the number itself");
    }
    if (word.letter < 'A' || word.letter > 'Z') {
        Fail(word, "a word begins with a letter; remove this character or put it into a comment");
    }
    word.value = ReadNumber(word);
    word.text = Trimmed(begin, at_);
    return true;
}

// Up to 18 digits are read exactly; further decimals are below every resolution and are passed over.
double Lexer::ReadNumber(Word &word)
{
    const char *const begin = at_ - 1;
    SkipBlanks();
    bool negative = false;
    if (at_ < end_ && (*at_ == '-' || *at_ == '+')) {
        negative = *at_++ == '-';
    }
    std::uint64_t mantissa = 0;
    int digits = 0;
    int decimals = 0;
    bool any = false;
    bool point = false;
    for (; at_ < end_; ++at_) {
        if (IsDigit(*at_)) {
            any = true;
            if (digits < max_digits) {
                mantissa = mantissa * 10 + static_cast<unsigned>(*at_ - '0');
                digits += mantissa != 0 ? 1 : 0;
                decimals += point && decimals < max_digits ? 1 : 0;
            } else if (!point) {
                Fail(word, "the number has too many digits");
            }
        } else if (*at_ == '.' && !point) {
            point = true;
        } else if (!IsBlank(*at_)) {
            break;
        }
    }
    if (any) {
        const double value = static_cast<double>(mantissa) / powers_of_ten[static_cast<std::size_t>(decimals)];
        return negative ? -value : value;
    }
    if (at_ < end_ && (*at_ == '#' || *at_ == '[')) {
        Fail(word, "parameters and expressions are not supported; write the number itself");
    }
    word.text = Trimmed(begin, at_);
    Fail(word, "the number after this letter cannot be read; write it like 12.5");
}

std::uint32_t Lexer::Column(const char *position) const
{
    return static_cast<std::uint32_t>(position - line_begin_) + 1;
}

std::string_view Lexer::Trimmed(const char *begin, const char *end)
{
    while (end > begin && IsBlank(end[-1])) {
        --end;
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

void LocateWord(std::string_view text, PartError &error)
{
    const char letter = error.word.empty() ? '\0' : error.word.front();
    Lexer lexer(text);
    while (lexer.Line() < error.line) {
        if (!lexer.NextLine()) {
            return;
        }
    }
    lexer.TakeLeading('/');
    Word first;
    for (Word word; lexer.NextWord(word);) {
        first = first.letter == 0 ? word : first;
        if (word.letter == letter) {
            first = word;
            break;
        }
    }
    error.column = first.column;
    error.word = first.text;
}

void Lexer::Fail(const Word &word, const char *what) const
{
    throw PartError{line_, word.column, std::string(word.text), what};
}

} // namespace trevik_run
