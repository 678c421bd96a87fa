#include <gtest/gtest.h>

#include "HashProxy/RunProxy.h"
#include "Support/NamedObjects_win32.h"

namespace {

constexpr char kPipe[] = R"(\\.\pipe\QelHashProxy_pipe)";

}  // namespace

TEST_F(RunProxy, TheMachinesPipeHasThisName) {
    EXPECT_FALSE(PipeIsThere(kPipe));
    Start();
    EXPECT_TRUE(Eventually([] { return PipeIsThere(kPipe); }));
}
