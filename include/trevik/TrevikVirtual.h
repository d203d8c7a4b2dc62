/* TrevikVirtual.h - the machine around a virtual card, and the card seen from behind.
 *
 * In host builds, and through trevikv_client beside the driver trevikv.sys, which has its cards by itself
 * (docs/virtual-driver.md). Virtual cards stand in the machine as the environment variable TREVIK_CARDS says when they are
 * first needed: a comma-separated list of NUMBER:MODEL with model A or AC, for example "0:A,5:AC". Unset: one A
 * card, number 0. Empty: none. With TREVIK_REQUEST_LOG=FILE every driver request is written to FILE, one line each.
 *
 * What a program of the machine cannot do through TrevikA.h is done here: turn an input on, move an axis by hand,
 * read the true position behind the command counter, make the driver refuse a request.
 *
 * Results: 0; TREVIK_ERR_HANDLE (100) no virtual card of that number; TREVIK_ERR_AXIS (301) axis above 3;
 * TREVIK_ERR_PARAM (302) another argument outside its range, or a null pointer.
 * Threads: every function may be called from any thread at any time, except TrevikVirtual_cards_set, which must not
 * run beside other calls.
 */
#ifndef TREVIK_VIRTUAL_H
#define TREVIK_VIRTUAL_H

#include "TrevikA.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Inputs of an axis. 1 is active, whatever logic the card is configured for. */
enum TrevikVirtualInput {
    TREVIK_VIRTUAL_PLUS_LIMIT = 0,
    TREVIK_VIRTUAL_MINUS_LIMIT = 1,
    TREVIK_VIRTUAL_HOME = 2,
    TREVIK_VIRTUAL_INDEX = 3,
    TREVIK_VIRTUAL_SLOW_DOWN = 4,
    TREVIK_VIRTUAL_ALARM = 5,
    TREVIK_VIRTUAL_IN_POSITION = 6,
    TREVIK_VIRTUAL_LATCH = 7,
    TREVIK_VIRTUAL_POSITION_CHANGE = 8,
    TREVIK_VIRTUAL_PORT3 = 9,  /* general ports 3 to 6 (points 17 to 20 of axis 1, 21 to 24 of axis 2), */
    TREVIK_VIRTUAL_PORT4 = 10, /* as long as they are inputs */
    TREVIK_VIRTUAL_PORT5 = 11,
    TREVIK_VIRTUAL_PORT6 = 12,
    TREVIK_VIRTUAL_POINT4 = 13, /* what TrevikA_point_read reads by these numbers */
    TREVIK_VIRTUAL_POINT9 = 14,
    TREVIK_VIRTUAL_POINT15 = 15,
    TREVIK_VIRTUAL_POINT16 = 16,
    TREVIK_VIRTUAL_INPUT_COUNT = 17
};

/* Outputs of an axis. 1 is on. */
enum TrevikVirtualOutput {
    TREVIK_VIRTUAL_OUTPUT0 = 0, /* what TrevikA_point_set sets as points 0 to 3 */
    TREVIK_VIRTUAL_OUTPUT1 = 1,
    TREVIK_VIRTUAL_OUTPUT2 = 2,
    TREVIK_VIRTUAL_OUTPUT3 = 3,
    TREVIK_VIRTUAL_OUTPUT_PORT3 = 4, /* general ports 3 to 6 (points 4 to 7 on axis 1, 8 to 11 on axis 2), */
    TREVIK_VIRTUAL_OUTPUT_PORT4 = 5, /* 0 as long as they are inputs */
    TREVIK_VIRTUAL_OUTPUT_PORT5 = 6,
    TREVIK_VIRTUAL_OUTPUT_PORT6 = 7,
    TREVIK_VIRTUAL_OUTPUT_COUNT = 8
};

/* Replaces all virtual cards by new ones in their power-up state. `cards` is written as TREVIK_CARDS is. A program
 * that has the old ones open calls TrevikA_initial again; until then its requests are refused with 1167 (device not
 * connected).
 *   TREVIK_ERR_PARAM  the text cannot be read, a number is above 15 or stands twice, trevikv.sys has fewer devices;
 *                     nothing has changed */
TREVIK_API uint32_t TrevikVirtual_cards_set(const char *cards);

/* Reads or sets one of the four counters of an axis as the chip holds it. counter: 1 command position, 2 feedback,
 * 3 deviation, 4 handwheel (comparators call them 0 to 3). */
TREVIK_API uint32_t TrevikVirtual_counter_read(uint8_t card, uint8_t axis, uint8_t counter, int32_t *value);
TREVIK_API uint32_t TrevikVirtual_counter_set(uint8_t card, uint8_t axis, uint8_t counter, int32_t value);

/* Reads or sets where the machine's axis really stands, in pulses from where it stood at power-up. A program that
 * sets its command position does not move the machine: this position stays. Setting it moves the axis by hand.
 *   TREVIK_ERR_BUSY  it is moving by itself */
TREVIK_API uint32_t TrevikVirtual_position_read(uint8_t card, uint8_t axis, int32_t *pulses);
TREVIK_API uint32_t TrevikVirtual_position_set(uint8_t card, uint8_t axis, int32_t pulses);

/* Reads the signed speed of an axis now, in pulses/s; for an axis of a line, its own share of it. */
TREVIK_API uint32_t TrevikVirtual_speed_read(uint8_t card, uint8_t axis, double *pulses_per_s);

/* Reads or sets an input of an axis (enum TrevikVirtualInput), 0 or 1. An input is active when it was set active
 * here or its switch is. What it does to a running operation it does at once. */
TREVIK_API uint32_t TrevikVirtual_input_read(uint8_t card, uint8_t axis, uint8_t input, uint8_t *active);
TREVIK_API uint32_t TrevikVirtual_input_set(uint8_t card, uint8_t axis, uint8_t input, uint8_t active);

/* Reads an output of an axis (enum TrevikVirtualOutput), 0 or 1. */
TREVIK_API uint32_t TrevikVirtual_output_read(uint8_t card, uint8_t axis, uint8_t output, uint8_t *on);

/* Puts a switch beside an axis, or takes it away: the input is active while the machine's axis stands from `first`
 * to `last`, both inclusive, in pulses as TrevikVirtual_position_read counts them. INT32_MIN as `first` and
 * INT32_MAX as `last` stand for no end. A later switch for the same input takes the place of the earlier one. A
 * moving axis meets a switch on its very pulse, however coarse the steps of the clock are.
 *   TREVIK_ERR_PARAM  no such input; first above last */
TREVIK_API uint32_t TrevikVirtual_switch_set(uint8_t card, uint8_t axis, uint8_t input, int32_t first,
                                             int32_t last);
TREVIK_API uint32_t TrevikVirtual_switch_clear(uint8_t card, uint8_t axis, uint8_t input);

/* Gives the axis an encoder index: the index input is active on one pulse in every `period`, and at `first`. period
 * 0 takes it away. */
TREVIK_API uint32_t TrevikVirtual_index_set(uint8_t card, uint8_t axis, int32_t first, uint32_t period);

/* Turns the handwheel at the pulser input of an axis: counter 4 changes by `counts`, spread evenly over `seconds`
 * from now, 0: at once. A new turn takes the place of what is left of the earlier one.
 *   TREVIK_ERR_PARAM  seconds negative or not finite */
TREVIK_API uint32_t TrevikVirtual_handwheel_turn(uint8_t card, uint8_t axis, int32_t counts, double seconds);

/* AC cards only, TREVIK_ERR_MODEL (6) otherwise: reads what the analogue output of an axis puts out, -65535 to
 * 65535; sets the word that TrevikAC_encoder_status_read reads, 0 at power-up. */
TREVIK_API uint32_t TrevikVirtual_analog_output_read(uint8_t card, uint8_t axis, int32_t *value);
TREVIK_API uint32_t TrevikVirtual_encoder_status_set(uint8_t card, uint8_t axis, uint16_t status);

/* Tells how long it takes from now until something happens on the card by itself: an operation ends, a queued or
 * waiting one starts, an axis comes to a switch or a limit, a comparator changes, a timer of the card expires.
 * Infinite when nothing will. With the manual clock, TrevikHost_advance of this value gets just there. */
TREVIK_API uint32_t TrevikVirtual_next_event_read(uint8_t card, double *seconds);

/* Makes the card's driver refuse requests: after `skip` more requests, `count` requests are refused with `error`, a
 * Windows error number (for example 31, a device that does not work). count 0 ends it.
 *   TREVIK_ERR_PARAM  error 0, unless count is 0 */
TREVIK_API uint32_t TrevikVirtual_refuse(uint8_t card, uint32_t skip, uint32_t count, uint32_t error);

#ifdef __cplusplus
}
#endif

#endif
