#include "shared/result_text.h"

#include <trevik/TrevikA.h>

namespace trevik_tools
{

const char *ResultText(std::uint32_t code)
{
    switch (code) {
    case TREVIK_ERR_MODEL:
        return "the card's model is not supported";
    case TREVIK_ERR_HANDLE:
        return "there is no such card, or it is not open";
    case TREVIK_ERR_OPEN:
        return "no card could be opened";
    case TREVIK_ERR_CARD:
        return "the card number is above 15";
    case TREVIK_ERR_AXIS:
        return "the axis number is above 3";
    case TREVIK_ERR_PARAM:
        return "an argument is outside its range";
    case TREVIK_ERR_BUSY:
        return "an axis is still moving";
    case TREVIK_ERR_QUEUE_FULL:
        return "the next-move registers are occupied";
    case TREVIK_ERR_NOT_MOVING:
        return "no such motion is running";
    case TREVIK_ERR_CONTINUOUS_MIX:
        return "only some axes of the line are in continuous mode";
    default:
        return "the card's driver refused a request with this system error";
    }
}

} // namespace trevik_tools
