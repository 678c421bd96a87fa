#pragma once

#include <Platform/OutputCapture.h>

#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

/// What is said of the log "log" in `folder` that `disturb` does something to between two lines.
template <class Disturb>
std::string FaultOfLog(const TemporaryFolder& folder, Disturb disturb) {
    const int file = OpenForWriting(folder.Path("out"));
    Platform::OutputCapture capture;
    {
        const StandardOutput output(file);
        EXPECT_EQ(capture.Start(folder.Path("log")),
                  Platform::OutputCapture::StartResult::kStarted);
        std::cout << "a line" << std::endl;
        for (int i = 0; i < 5000 && folder.ReadFile("log").empty(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        disturb();
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(file);
    EXPECT_EQ(folder.ReadFile("out"), "a line\nanother\n");
    return capture.GetLogFault();
}
