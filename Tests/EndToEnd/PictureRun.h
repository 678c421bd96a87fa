#pragma once

#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "Support/MemoryLimit.h"
#include "Support/ThisSystem.h"

/// How often `part` stands in `text`.
inline std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// A sample skeleton file.
inline std::string Seed(const std::string& name) {
    return RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/" + name;
}

/// Draws skeletons, and looks at their pages in a browser.
class PictureRun : public testing::Test {
  protected:
    std::string Draw(const std::string& file, const std::string& out,
                     const std::string& names = {}) const {
        std::vector<std::string> arguments = {"picture", file, out};
        if (!names.empty()) arguments.insert(arguments.end(), {"--names", names});
        const ProgramResult run = folder.Run("skel", arguments);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.output, "");
        return folder.ReadFile(out);
    }
    /// What the pictures of a sample file are called when that has this name.
    std::string TitleOfPicture(const std::string& name) const {
        folder.WriteFile(name, folder.ReadFile(Seed("biped")));
        const std::string page = Draw(name, "a.html");
        EXPECT_NE(Draw(name, "a.svg").find(">" + page.substr(page.find("<h1>") + 4, 4)),
                  std::string::npos);
        return page.substr(page.find("<h1>") + 4, page.find("</h1>") - page.find("<h1>") - 4);
    }
    int Shell(const std::string& command) const {
        return std::system(
            (kShellWithoutLimit + ("cd '" + folder.Path() + "' && ") + command).c_str());
    }
    /// What a browser makes of the page when `script` has run behind the page's own: the text that
    /// the script leaves in the title.
    std::string Browse(std::string page, const std::string& script, const std::string& flags = "") {
        page.replace(page.rfind("</body>"), 0, "<script>" + script + "</script>");
        folder.WriteFile("test.html", page);
        EXPECT_EQ(Shell("HOME=\"$PWD\" timeout 120 chromium --headless --no-sandbox --disable-gpu "
                        "--window-size=1300,800 --virtual-time-budget=3000 " +
                        flags + " --dump-dom test.html >dom 2>log"),
                  0)
            << folder.ReadFile("log");
        const std::string dom = folder.ReadFile("dom");
        const std::size_t begin = dom.find("<title>") + 7;
        return dom.substr(begin, dom.find("</title>") - begin);
    }
    bool HasBrowser() const {
        return !kIsWindows && Shell("chromium --version >browser 2>&1") == 0;
    }

    RunFolder folder;
};

inline constexpr const char* kNoBrowser = "left out: there is no chromium here to show the page in";

/// Helpers of the scripts that tests run in a page.
inline const std::string kTools = R"(
const key = (name, options) => figure.dispatchEvent(new KeyboardEvent("keydown", {key: name, bubbles: true, ...options}));
const shown = () => dots.filter(dot => dot.style.display !== "none").length;
const say = (...parts) => { document.title = parts.join(" | "); };
)";
