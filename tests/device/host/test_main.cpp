// The main of the device tests. It ends the process at once when the tests are done: devices live
// until the process ends, and Wine's driver threads sometimes race the exit handlers of the C
// library, which would turn a passed run into a crash.

#define WIN32_LEAN_AND_MEAN
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int status = RUN_ALL_TESTS();
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
    return status;
}
