#pragma once

#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

/// Runs beside a document of one joint.
class OutputFiles : public testing::Test {
  protected:
    OutputFiles() { folder.WriteFile("scene.qeli", OneJointDocument()); }

    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& words) const {
        const std::string scene = folder.ReadFile("scene.qeli");
        const ProgramResult run = folder.Rigbake(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(WithoutBanner(run.output),
                  "Error: 102 An error occurred while validating arguments; " + words +
                      "\nError: Tool encountered errors\n");
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(folder.ReadFile("scene.qeli"), scene);
    }

    std::string Bake(const std::string& name) const {
        EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", name}).status, 0);
        return folder.ReadFile(name);
    }

    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder.GetPath()),
                             std::filesystem::directory_iterator());
    }

    RunFolder folder;
};
