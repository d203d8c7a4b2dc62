// The functions of the AC model: one line an entry.
#include <trevik/TrevikAC.h>

#include "ac/index.h"
#include "api/entry.h"

using namespace trevik;

uint32_t TREVIK_CALL TrevikAC_index_read(uint8_t card, uint8_t axis, uint8_t index, uint16_t *value)
{
    return EarlierAxisEntry(card, axis, IndexRegisterRead, index, value);
}

uint32_t TREVIK_CALL TrevikAC_index_write(uint8_t card, uint8_t axis, uint8_t index, uint16_t value)
{
    return EarlierAxisEntry(card, axis, IndexRegisterWrite, index, value);
}
