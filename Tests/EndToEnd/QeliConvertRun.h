#pragma once

#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

/// Conversions in a folder of their own.
class QeliConvert : public testing::Test {
  protected:
    ProgramResult Run(const std::string& in, const std::string& out,
                      const std::string& redirections = {}) const {
        return folder.Run("qeli", {"convert", in, out}, {}, redirections);
    }

    void ExpectConverted(const std::string& in, const std::string& out) const {
        const ProgramResult run = Run(in, out);
        EXPECT_EQ(run.status, 0) << in;
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "");
    }

    void ExpectFailure(const std::string& in, const std::string& out,
                       const std::string& words) const {
        const ProgramResult run = Run(in, out);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, words + "\n");
    }

    std::vector<std::string> FileNames(const std::string& subfolder = ".") const {
        std::vector<std::string> names;
        for (const std::filesystem::directory_entry& entry :
             std::filesystem::directory_iterator(folder.GetPath() / subfolder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    RunFolder folder;
};
