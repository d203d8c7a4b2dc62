/* Moves axis 0 of card 0 by 10,000 pulses and waits for it. Without a card in the machine this is a virtual card.
 */
#include <stdio.h>
#include <trevik/TrevikA.h>

int main(void)
{
    uint8_t idle = 0;
    uint32_t position = 0;
    if (TrevikA_initial() != TREVIK_OK)
        return 1;
    TrevikA_T_position_move(0, 0, 10000, 0, 500, 20000, 100, 100, 0);
    while (!idle)
        TrevikA_motion_status_read(0, 0, 0, &idle);
    TrevikA_current_position_read(0, 0, &position);
    printf("axis 0 stands at %d\n", (int)position);
    return (int)TrevikA_close();
}
