/* A small job: a line and a quarter of a circle, each waited for by interrupt; then where the axes stand. The same in
 * C++, Python and C# beside this file. Without a card in the machine this is a virtual card. */
#include <stdio.h>
#include <stdlib.h>
#include <trevik/TrevikA.h>

#define MOVE_ENDED 0x1 /* virtual cards: the operation of the axis ended as planned */

/* The callback runs on a thread of the library and wakes the main thread. */
#if defined(_WIN32)
#include <windows.h>
static HANDLE ended;
#define PREPARE_TO_WAIT() (ended = CreateEventA(NULL, FALSE, FALSE, NULL))
#define TELL() SetEvent(ended)
#define WAIT_FOR_END() WaitForSingleObject(ended, INFINITE)
#else
#include <semaphore.h>
static sem_t ended;
#define PREPARE_TO_WAIT() sem_init(&ended, 0, 0)
#define TELL() sem_post(&ended)
#define WAIT_FOR_END() sem_wait(&ended)
#endif

static void TREVIK_CALL on_interrupt(uint32_t card)
{
    uint32_t events = 0;
    TrevikA_event_flag_read((uint8_t)card, 0, &events); /* and clears them */
    if ((events & MOVE_ENDED) != 0)
        TELL();
}

static const char *result_name(uint32_t result)
{
    switch (result) {
    case TREVIK_ERR_OPEN:
        return "TREVIK_ERR_OPEN";
    case TREVIK_ERR_AXIS:
        return "TREVIK_ERR_AXIS";
    case TREVIK_ERR_PARAM:
        return "TREVIK_ERR_PARAM";
    case TREVIK_ERR_BUSY:
        return "TREVIK_ERR_BUSY";
    default:
        return "see TrevikA.h";
    }
}

static void check(uint32_t result)
{
    if (result == TREVIK_OK)
        return;
    fprintf(stderr, "result %u: %s\n", (unsigned)result, result_name(result));
    TrevikA_close();
    exit(1);
}

static void print_positions(void)
{
    uint32_t x = 0, y = 0; /* signed numbers in unsigned ones */
    check(TrevikA_current_position_read(0, 0, &x));
    check(TrevikA_current_position_read(0, 1, &y));
    printf("the axes stand at %d, %d\n", (int)x, (int)y);
}

int main(void)
{
    const uint8_t relative[4] = {0, 0, 0, 0};
    PREPARE_TO_WAIT();
    check(TrevikA_initial());
    check(TrevikA_init_card(0));
    check(TrevikA_event_factor_set(0, 0, MOVE_ENDED));
    check(TrevikA_IRQ_mask_set(0, 0, 1)); /* axis 0 may interrupt */
    check(TrevikA_IRQ_enable(0));
    check(TrevikA_IRQ_process_link(0, on_interrupt));

    check(TrevikA_T_LINE2_move(0, 0, -30000, 40000, relative, 500, 200000, 20, 20, 0));
    WAIT_FOR_END();
    print_positions();
    /* Clockwise about a center 20000 to the right, from its left to its top. */
    check(TrevikA_T_ARC_center_move(0, 0, 20000, 0, 20000, 20000, relative, 500, 200000, 20, 0, 0));
    WAIT_FOR_END();
    print_positions();

    printf("a move of axis 4: %s\n", result_name(TrevikA_T_position_move(0, 4, 1, 0, 500, 200000, 20, 20, 0)));
    check(TrevikA_close());
    return 0;
}
