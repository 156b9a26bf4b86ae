#include "interrupt.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <atomic>

namespace effect_render {
namespace {

std::atomic<bool> interrupted{false};

// Called on a thread of the system's own.
BOOL WINAPI OnControl(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    return interrupted.exchange(true) ? FALSE : TRUE;
}

}  // namespace

void CatchInterrupt() {
    SetConsoleCtrlHandler(OnControl, TRUE);
}

bool WasInterrupted() {
    return interrupted;
}

}  // namespace effect_render
