// Finding and opening the cards of the machine.
#pragma once

#include "driver/card_state.h"
#include "platform/os.h"

namespace trevik
{

// Opens every device interface of the cards' driver and enters each card found under the number it reports. Says on
// standard output what went wrong. Returns the handle of the last interface of the list; InvalidHandle when there
// is no card, a system call failed (cards entered by then stay), or that last interface could not be opened.
//
// An interface that is already held is closed before it is opened again, so `cards` never holds two handles of one
// device path. Not thread-safe.
os::HANDLE EnumerateCards(CardTable &cards);

// Closes a card's driver handle, if it is open, and marks it invalid.
void CloseCard(CardState &card);

} // namespace trevik
