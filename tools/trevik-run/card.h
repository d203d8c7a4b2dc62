// The card as trevik-run uses it: the calls of TrevikA.h on the axes of one line set, and the first call that
// failed.
#pragma once

#include <cstdint>
#include <string>

#include "trevik-run/card_moves.h"

namespace trevik_run
{

struct CardError {
    const char *call = nullptr; // null: no error
    std::uint32_t code = 0;

    explicit operator bool() const { return call != nullptr; }
    std::string Message() const; // call, code and what the code means
};

class Card
{
  public:
    // axes: bits of the axes to drive, two to four.
    Card(std::uint8_t number, std::uint32_t axes);

    // Every axis in use queues its moves, with one speed range. Moves count from where the axes stand.
    void Prepare(double top_pps);
    void Release();

    // False when the card has no room for it yet, or refused it: see Error.
    bool Make(const CardMove &move);
    bool QueueFull();
    bool Idle();
    bool Stop(std::uint32_t decel_ms);
    void ReadPosition(Pulses &position); // leaves the axes that are not in use alone
    double LongestAxisSpeed();           // pulses/s

    std::uint8_t Number() const { return number_; }
    std::size_t FirstAxis() const { return axis_[0]; }
    const CardError &Error() const { return error_; }
    void Fail(const char *call, std::uint32_t code);

  private:
    bool Check(const char *call, std::uint32_t result);
    std::uint32_t Line2(const CardMove &move, const char *&call) const;
    std::uint32_t Line3(const CardMove &move, const char *&call) const;
    std::uint32_t Line4(const CardMove &move, const char *&call) const;
    std::uint32_t Line(const CardMove &move, const char *&call) const;
    std::uint32_t Arc(const CardMove &move, const char *&call) const;
    std::uint32_t Helix(const CardMove &move, const char *&call) const;

    std::uint8_t number_;
    std::uint8_t count_ = 0;
    std::uint8_t axis_set_ = 0; // selector of LINE2 and LINE3
    std::array<std::uint8_t, axis_count> axis_{};
    CardError error_;
};

// Starts the library, finds the card and reads where its axes stand.
CardError OpenCard(std::uint8_t number, Pulses &position);

} // namespace trevik_run
