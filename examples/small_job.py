#!/usr/bin/env python3
"""A small job: a line and a quarter of a circle, each waited for by interrupt; then where the axes stand. The same in
C, C++ and C# beside this file. Without a card in the machine this is a virtual card."""
import sys
import threading
from ctypes import byref, c_int32, c_uint32

import trevika  # comes with the library, generated from its headers

MOVE_ENDED = 0x1  # virtual cards: the operation of the axis ended as planned

api = trevika.load()
ended = threading.Semaphore(0)


@trevika.TrevikA_callback
def on_interrupt(card):
    """Runs on a thread of the library and wakes the main thread."""
    events = c_uint32()
    api.TrevikA_event_flag_read(card, 0, byref(events))  # and clears them
    if events.value & MOVE_ENDED:
        ended.release()


def check(result):
    if result != trevika.TREVIK_OK:
        raise RuntimeError(f"result {result}: {trevika.result_name(result)}")


def print_positions():
    positions = []
    for axis in (0, 1):
        position = c_uint32()
        check(api.TrevikA_current_position_read(0, axis, byref(position)))
        positions.append(c_int32(position.value).value)  # a signed number in an unsigned one
    print(f"the axes stand at {positions[0]}, {positions[1]}")


def run():
    relative = bytes(4)
    check(api.TrevikA_initial())
    check(api.TrevikA_init_card(0))
    check(api.TrevikA_event_factor_set(0, 0, MOVE_ENDED))
    check(api.TrevikA_IRQ_mask_set(0, 0, 1))  # axis 0 may interrupt
    check(api.TrevikA_IRQ_enable(0))
    check(api.TrevikA_IRQ_process_link(0, on_interrupt))

    check(api.TrevikA_T_LINE2_move(0, 0, -30000, 40000, relative, 500, 200000, 20, 20, 0))
    ended.acquire()
    print_positions()
    # Clockwise about a center 20000 to the right, from its left to its top.
    check(api.TrevikA_T_ARC_center_move(0, 0, 20000, 0, 20000, 20000, relative, 500, 200000, 20, 0, 0))
    ended.acquire()
    print_positions()

    refused = api.TrevikA_T_position_move(0, 4, 1, 0, 500, 50000, 20, 20, 0)
    print("a move of axis 4:", trevika.result_name(refused))


try:
    run()
except RuntimeError as error:
    sys.exit(str(error))
finally:
    api.TrevikA_close()
