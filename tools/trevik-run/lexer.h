// Text of a part program to words. A word is a letter and a number; blanks may stand anywhere, also inside numbers.
#pragma once

#include <cstdint>
#include <string_view>

#include "trevik-run/program.h"

namespace trevik_run
{

struct Word {
    char letter = 0; // upper case
    double value = 0;
    std::uint32_t column = 0;
    std::string_view text; // as it stands in the file
};

// Walks through the text line by line, and through a line word by word.
class Lexer
{
  public:
    explicit Lexer(std::string_view text);

    // Goes to the next line; false at the end of the text.
    bool NextLine();

    // Reads the next word of this line; false at its end. Comments are passed over. Throws PartError.
    bool NextWord(Word &word);

    // True once when the line begins with the character (blanks before it do not count), which is then consumed.
    bool TakeLeading(char character);

    void SkipLine();
    std::uint32_t Line() const { return line_; }
    [[noreturn]] void Fail(const Word &word, const char *what) const;

  private:
    void SkipBlanks();
    void SkipComment();
    double ReadNumber(Word &word);
    std::uint32_t Column(const char *position) const;
    static std::string_view Trimmed(const char *begin, const char *end);

    const char *at_ = nullptr;
    const char *end_ = nullptr;
    const char *line_begin_ = nullptr;
    std::uint32_t line_ = 0;
};

// Completes an error that was found after reading and knows its line and a letter: the column and the text of that
// line's first word with the letter. Where there is none, a modal word of an earlier line is meant: the line's
// first.
void LocateWord(std::string_view text, PartError &error);

} // namespace trevik_run
