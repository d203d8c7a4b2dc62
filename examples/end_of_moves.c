/* Five moves, each started when the card's interrupt tells that the one before has ended. The callback runs on a
 * thread of the library; here it only wakes the main thread. On Windows an event takes the semaphore's place. */
#include <semaphore.h>
#include <stdio.h>
#include <trevik/TrevikA.h>

#define MOVE_ENDED 0x1 /* virtual cards: the operation of the axis ended as planned */

static sem_t ended;

static void TREVIK_CALL on_interrupt(uint32_t card)
{
    uint32_t events = 0;
    TrevikA_event_flag_read((uint8_t)card, 0, &events); /* and clears them */
    if ((events & MOVE_ENDED) != 0)
        sem_post(&ended);
}

int main(void)
{
    uint32_t position = 0;
    int i;
    sem_init(&ended, 0, 0);
    if (TrevikA_initial() != TREVIK_OK || TrevikA_init_card(0) != TREVIK_OK)
        return 1;
    TrevikA_event_factor_set(0, 0, MOVE_ENDED);
    TrevikA_IRQ_mask_set(0, 0, 1); /* axis 0 may interrupt */
    TrevikA_IRQ_enable(0);
    TrevikA_IRQ_process_link(0, on_interrupt);
    for (i = 0; i < 5; ++i) {
        TrevikA_T_position_move(0, 0, 2000, 0, 500, 50000, 20, 20, 0);
        sem_wait(&ended);
        TrevikA_current_position_read(0, 0, &position);
        printf("move %d ended at %d\n", i + 1, (int)position);
    }
    return (int)TrevikA_close();
}
