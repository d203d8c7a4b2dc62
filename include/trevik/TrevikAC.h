/* TrevikAC.h - functions of the AC model (names TrevikAC_...). Arguments, results and threads as in TrevikA.h. */
#ifndef TREVIK_AC_H
#define TREVIK_AC_H

#include "TrevikA.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Raw access to the 16-bit index registers of a card. index 0 to 255; index 38 of axis 0 holds the model word
 * (1: A, 0x101: AC). These two do not look at the card's model: they work on a card of any model.
 * Results: TREVIK_ERR_CARD, TREVIK_ERR_AXIS, TREVIK_ERR_HANDLE as in TrevikA.h; TREVIK_ERR_PARAM for a null
 * pointer; otherwise the Windows error when the driver refuses the request, with `value` not written. */
TREVIK_API uint32_t TREVIK_CALL TrevikAC_index_read(uint8_t card, uint8_t axis, uint8_t index, uint16_t *value);
TREVIK_API uint32_t TREVIK_CALL TrevikAC_index_write(uint8_t card, uint8_t axis, uint8_t index, uint16_t value);

#ifdef __cplusplus
}
#endif

#endif
