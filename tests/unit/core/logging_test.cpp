#include "DirectXEffectMgr/Source/logging/logging.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "log_capture.h"

namespace {

struct Received {
    int calls = 0;
    int32_t level = 0;
    const char* format = nullptr;
    int number = 0;
};
Received received;

void keep_last(int32_t level, const char* format, va_list args) {
    ++received.calls;
    received.level = level;
    received.format = format;
    received.number = std::strchr(format, '%') == nullptr ? 0 : va_arg(args, int);
}

class LoggingTest : public testing::Test {
protected:
    LoggingTest() { received = Received(); }
    ~LoggingTest() override { set_log_callback(print_to_stderr); }
};

TEST_F(LoggingTest, BeforeAnyCallbackMessagesGoToStandardErrorWithNoNewlineAdded) {
    testing::internal::CaptureStderr();
    log_error("x");
    log_info("%d-%s\n", 7, "y");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "x7-y\n");
}

TEST_F(LoggingTest, EachOperationHasItsLevel) {
    set_log_callback(keep_last);
    log_info("a");
    EXPECT_EQ(received.level, 2);
    log_warning("a");
    EXPECT_EQ(received.level, 3);
    log_error("a");
    EXPECT_EQ(received.level, 4);
    EXPECT_EQ(received.calls, 3);
}

TEST_F(LoggingTest, FormatAndArgumentsArriveUntouched) {
    set_log_callback(keep_last);
    static const char* const kFormat = "number %d, no newline";
    log_error("%s", "first");
    log_warning(kFormat, 1234567);
    EXPECT_EQ(received.format, kFormat);
    EXPECT_EQ(received.number, 1234567);
}

TEST_F(LoggingTest, NullSilencesEveryOperation) {
    set_log_callback(nullptr);
    testing::internal::CaptureStderr();
    log_info("a");
    log_warning("%d", 1);
    log_error("%s", "b");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LoggingTest, ALaterCallbackReplacesTheEarlier) {
    set_log_callback(keep_last);
    LogCapture capture;
    log_info("%s", "text");
    EXPECT_EQ(received.calls, 0);
    EXPECT_EQ(capture.take(), (Lines{"2|text"}));
}

TEST_F(LoggingTest, LongMessagesAreNotCut) {
    LogCapture capture;
    const std::string text(100000, 'q');
    log_error("%s", text.c_str());
    EXPECT_EQ(capture.take(), (Lines{"4|" + text}));
}

TEST_F(LoggingTest, CallbackMayChangeWhileOthersLog) {
    LogCapture capture;
    std::atomic<bool> stop{false};
    std::thread other([&stop] {
        while (!stop.load()) {
            log_info("%d", 1);
        }
    });
    for (int i = 0; i < 1000; ++i) {
        set_log_callback(i % 2 == 0 ? nullptr : keep_last);
    }
    set_log_callback(nullptr);
    stop.store(true);
    other.join();
}

struct ErrorNameCase {
    uint32_t code;
    const char* name;
};

TEST_F(LoggingTest, DeviceErrorsHaveNames) {
    const ErrorNameCase cases[] = {
        {0x887A0001u, "DXGI_ERROR_INVALID_CALL"},
        {0x887A0005u, "DXGI_ERROR_DEVICE_REMOVED"},
        {0x887A0006u, "DXGI_ERROR_DEVICE_HUNG"},
        {0x887A0007u, "DXGI_ERROR_DEVICE_RESET"},
        {0x887A0020u, "DXGI_ERROR_DRIVER_INTERNAL_ERROR"},
        {0x80004005u, "SOMETHING_WRONG"},
        {0, "SOMETHING_WRONG"},
        {0x887A0002u, "SOMETHING_WRONG"},
    };
    for (const ErrorNameCase& row : cases) {
        EXPECT_STREQ(dx_error_name(static_cast<int32_t>(row.code)), row.name) << row.code;
    }
}

}  // namespace
