// The registers and commands that the library wrote, read back from the host layer's request log.
#pragma once

#include <string>
#include <vector>

namespace trevik_scope
{

struct Write {
    std::string name;  // of the register; of the command, when value is empty
    std::string value; // as the log shows it
};

class RequestLog
{
  public:
    // Switches the log on: before the first call of the library. A log that the user asked for is read instead.
    RequestLog();
    ~RequestLog();
    RequestLog(const RequestLog &) = delete;
    RequestLog &operator=(const RequestLog &) = delete;

    // What was written since the last time.
    std::vector<Write> Take();

  private:
    std::string name_;
    bool own_ = false; // the file is deleted in the end
    long read_to_ = 0;
};

} // namespace trevik_scope
