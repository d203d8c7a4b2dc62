// A program of the kind that existing machines run: compiled by another compiler than the library, against
// declarations of its own, so that two functions are asked for under their mangled C++ names and the rest under plain
// C names; no header and no run-time library of ours. It is linked with TrevikA.lib. Its exit code is the number of
// the first step that went wrong, 0 when all went well.

using u8 = unsigned char;
using u32 = unsigned long;

u32 __stdcall TrevikA_stop_emg(u8 card);
u32 __stdcall TrevikA_dll_Simu_mode(u8 mode);

extern "C" {
u32 __stdcall TrevikA_initial();
u32 __stdcall TrevikA_T_velocity_move(u8 card, u8 axis, u32 start, u32 speed, u32 accel_ms);
u32 __stdcall TrevikA_velocity_read(u8 card, u8 axis, double *speed);
u32 __stdcall TrevikA_close();
__declspec(noreturn) void __stdcall ExitProcess(unsigned code);
int _fltused = 0; // asked for by every program with floating point
}

namespace
{

unsigned FirstFault()
{
    double speed = -1.0;
    if (TrevikA_initial() != 0)
        return 1;
    if (TrevikA_T_velocity_move(0, 0, 5000, 5000, 0) != 0 || TrevikA_velocity_read(0, 0, &speed) != 0)
        return 2;
    if (speed < 4950.0 || speed > 5050.0) // as the chip can divide it
        return 3;
    if (TrevikA_stop_emg(0) != 0 || TrevikA_velocity_read(0, 0, &speed) != 0 || speed != 0.0)
        return 4;
    if (TrevikA_stop_emg(99) != 300) // no such card
        return 5;
    if (TrevikA_dll_Simu_mode(2) != 0 || TrevikA_stop_emg(99) != 300) // still off
        return 6;
    if (TrevikA_dll_Simu_mode(1) != 0 || TrevikA_stop_emg(99) != 0) // on: nothing is looked at
        return 7;
    return TrevikA_close() == 0 ? 0 : 8;
}

} // namespace

extern "C" void mainCRTStartup()
{
    ExitProcess(FirstFault());
}
