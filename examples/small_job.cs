// A small job: a line and a quarter of a circle, each waited for by interrupt; then where the axes stand. The same in
// C, C++ and Python beside this file. Without a card in the machine this is a virtual card.
using System;
using System.Threading;
using Trevik;
using static Trevik.Api; // TrevikA.cs comes with the library, generated from its headers

static class SmallJob
{
    const int MoveEnded = 0x1; // virtual cards: the operation of the axis ended as planned

    static readonly SemaphoreSlim ended = new SemaphoreSlim(0);

    // Kept in a field: the library goes on calling it.
    static readonly TrevikA_callback onInterrupt = OnInterrupt;

    // Runs on a thread of the library and wakes the main thread.
    static void OnInterrupt(uint card)
    {
        TrevikA_event_flag_read((byte)card, 0, out uint events); // and clears them
        if ((events & MoveEnded) != 0)
            ended.Release();
    }

    static void Check(uint result)
    {
        if (result != TREVIK_OK)
            throw new InvalidOperationException("result " + result + ": " + ResultName(result));
    }

    static void PrintPositions()
    {
        Check(TrevikA_current_position_read(0, 0, out uint x)); // signed numbers in unsigned ones
        Check(TrevikA_current_position_read(0, 1, out uint y));
        Console.WriteLine("the axes stand at {0}, {1}", (int)x, (int)y);
    }

    static void Run()
    {
        byte[] relative = new byte[4];
        Check(TrevikA_initial());
        Check(TrevikA_init_card(0));
        Check(TrevikA_event_factor_set(0, 0, MoveEnded));
        Check(TrevikA_IRQ_mask_set(0, 0, 1)); // axis 0 may interrupt
        Check(TrevikA_IRQ_enable(0));
        Check(TrevikA_IRQ_process_link(0, onInterrupt));

        Check(TrevikA_T_LINE2_move(0, 0, -30000, 40000, relative, 500, 200000, 20, 20, 0));
        ended.Wait();
        PrintPositions();
        // Clockwise about a center 20000 to the right, from its left to its top.
        Check(TrevikA_T_ARC_center_move(0, 0, 20000, 0, 20000, 20000, relative, 500, 200000, 20, 0, 0));
        ended.Wait();
        PrintPositions();

        uint refused = TrevikA_T_position_move(0, 4, 1, 0, 500, 50000, 20, 20, 0);
        Console.WriteLine("a move of axis 4: {0}", ResultName(refused));
    }

    static int Main()
    {
        try {
            Run();
            return 0;
        } catch (InvalidOperationException error) {
            Console.Error.WriteLine(error.Message);
            return 1;
        } finally {
            TrevikA_close();
        }
    }
}
