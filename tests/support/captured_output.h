// Standard output between construction and text().
#pragma once

#include <cstdio>
#include <string>
#include <unistd.h>

namespace trevik::test
{

class CapturedOutput
{
  public:
    CapturedOutput() : file_(std::tmpfile())
    {
        std::fflush(stdout);
        saved_ = dup(STDOUT_FILENO);
        dup2(fileno(file_), STDOUT_FILENO);
    }
    ~CapturedOutput() { restore(); }
    CapturedOutput(const CapturedOutput &) = delete;
    CapturedOutput &operator=(const CapturedOutput &) = delete;

    std::string text()
    {
        restore();
        std::string all;
        std::rewind(file_);
        for (int c = std::fgetc(file_); c != EOF; c = std::fgetc(file_))
            all += static_cast<char>(c);
        return all;
    }

  private:
    void restore()
    {
        if (saved_ < 0)
            return;
        std::fflush(stdout);
        dup2(saved_, STDOUT_FILENO);
        ::close(saved_);
        saved_ = -1;
    }

    std::FILE *file_;
    int saved_;
};

} // namespace trevik::test
